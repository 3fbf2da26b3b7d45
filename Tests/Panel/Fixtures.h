#pragma once

#include "TunedeckMenu/Panel/HeaderView.h"
#include "TunedeckMenu/Panel/PanelContent.h"
#include "TunedeckMenu/Panel/PanelState.h"

#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace tunedeck::test {

/// The present time in all panel tests.
inline QDateTime moment() {
    return QDateTime(QDate(2026, 3, 14), QTime(15, 9, 26), Qt::UTC);
}

/// The time stamp of a time before moment().
inline QString ago(qint64 seconds) {
    return moment().addSecs(-seconds).toString(Qt::ISODate);
}

/// The status of an idle service.
inline ServiceStatus goodStatus() {
    return {.version = u"2.3.4"_s,
            .downloadDir = u"/srv/music/Tunedeck"_s,
            .downloadDirSource = u"default"_s,
            .downloadDirWritable = true,
            .importXml = u"/srv/music/tunedeck.xml"_s,
            .cloud = {.enabled = true, .connected = true}};
}

inline AssistantLink link(const char* id, const char* kind) {
    return {.id = QString::fromLatin1(id), .kind = QString::fromLatin1(kind)};
}

} // namespace tunedeck::test
