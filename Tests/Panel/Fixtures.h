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
    ServiceStatus status;
    status.version = u"2.3.4"_s;
    status.downloadDir = u"/srv/music/Tunedeck"_s;
    status.downloadDirSource = u"default"_s;
    status.downloadDirWritable = true;
    status.importXml = u"/srv/music/tunedeck.xml"_s;
    status.cloud.enabled = true;
    status.cloud.connected = true;
    return status;
}

inline ServiceStatus::Library::Backup backup(const char* version, const QString& createdAt) {
    return {QString::fromLatin1(version), createdAt, u"Before a change"_s, 1};
}

inline AssistantLink link(const char* id, const char* kind) {
    AssistantLink made;
    made.id = QString::fromLatin1(id);
    made.kind = QString::fromLatin1(kind);
    return made;
}

} // namespace tunedeck::test
