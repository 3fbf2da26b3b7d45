#pragma once

#include <QString>
#include <QStringBuilder>

namespace tunedeck::demo {

/// Paths of the files that the service reads or writes in a home folder.
struct HomePaths {
    QString home;

    QString runtimeFile() const { return home % u"/.tunedeck/runtime.json"; }
    QString settingsFile() const { return home % u"/.tunedeck/settings.json"; }
    QString stateFile() const { return home % u"/.tunedeck/demo-state.json"; }
    QString importXml() const { return home % u"/.tunedeck/rekordbox.xml"; }
    QString rekordboxDb() const { return home % u"/Library/Pioneer/rekordbox/master.db"; }
    QString defaultDownloads() const { return home % u"/Music/Tunedeck"; }
};

} // namespace tunedeck::demo
