#pragma once

#include "TunedeckMenu/Panel/PanelContent.h"
#include "TunedeckMenu/Panel/PanelState.h"

#include <QMetaEnum>
#include <QMetaProperty>
#include <QTimeZone>

#include <string>

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

inline QStringList members(const QMetaObject& type, const void* view) {
    QStringList all;
    for (int i = 0; i < type.propertyCount(); ++i) {
        const QMetaProperty property = type.property(i);
        const QVariant value = property.readOnGadget(view);
        const QString name = QString::fromLatin1(property.name()) + u": "_s;
        if (property.isEnumType()) {
            all << name + QString::fromLatin1(property.enumerator().valueToKey(value.toInt()));
        } else if (const QMetaObject* const part = value.metaType().metaObject()) {
            all << members(*part, value.constData());
        } else {
            const bool isList = value.metaType() == QMetaType::fromType<QStringList>();
            const QString text = isList ? value.toStringList().join(u' ') : value.toString();
            all << (text.isEmpty() || text == u"false" ? QStringList() : QStringList(name + text));
        }
    }
    return all;
}

/// The members of a view value, joined with bars, without those that are empty or false: "title: About | …".
template<class View>
std::string textOf(const View& view) {
    return members(View::staticMetaObject, &view).join(u" | "_s).toStdString();
}

} // namespace tunedeck::test
