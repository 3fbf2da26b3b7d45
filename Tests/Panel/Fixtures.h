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

/// The texts of the members that differ from `usual`, a value of the same type.
inline QStringList members(const QMetaObject& type, const void* view, const void* usual) {
    QStringList all;
    for (int i = 0; i < type.propertyCount(); ++i) {
        const QMetaProperty property = type.property(i);
        const QVariant value = property.readOnGadget(view);
        const QVariant usualValue = property.readOnGadget(usual);
        const QString name = QString::fromLatin1(property.name()) + u": "_s;
        if (const QMetaObject* const part = value.metaType().metaObject(); part && !property.isEnumType()) {
            all << members(*part, value.constData(), usualValue.constData());
        } else if (value != usualValue) {
            const bool isList = value.metaType() == QMetaType::fromType<QStringList>();
            all << name + (property.isEnumType() ? QString::fromLatin1(property.enumerator().valueToKey(value.toInt()))
                           : isList              ? value.toStringList().join(u' ')
                                                 : value.toString());
        }
    }
    return all;
}

/// The members of a view value that the card's function has set, joined with bars: "version: 1.0 | busy: true".
template<class View>
std::string textOf(const View& view) {
    const View usual;
    return members(View::staticMetaObject, &view, &usual).join(u" | "_s).toStdString();
}

} // namespace tunedeck::test
