#include "TunedeckMenu/Platform/Linux/Desktop/LinuxWorkspace.h"

#include "TunedeckCore/Support/Async/Process.h"
#include "TunedeckMenu/Platform/Linux/Desktop/SessionBus.h"

#include <QApplication>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>
#include <QStyle>

namespace tunedeck {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// xdg-open first: it knows all desktops.
const QList<QStringList>& openers() {
    static const QList<QStringList> commands{{u"xdg-open"_s}, {u"gio"_s, u"open"_s}, {u"kde-open"_s}, {u"exo-open"_s}};
    return commands;
}

// Names of the icon naming standard, the most specific first.
QStringList iconNames(const QFileInfo& file) {
    if (file.isDir() && file.suffix() != u"app") {
        return {u"folder"_s, u"inode-directory"_s};
    }
    const auto suffix = file.suffix().toLower();
    static const QStringList audio{u"mp3"_s, u"m4a"_s, u"wav"_s, u"aiff"_s, u"flac"_s};
    if (suffix == u"xml") {
        return {u"text-xml"_s, u"application-xml"_s, u"text-x-generic"_s};
    }
    if (audio.contains(suffix)) {
        return {u"audio-x-generic"_s};
    }
    if (suffix == u"app" || (file.isFile() && file.isExecutable())) {
        return {u"application-x-executable"_s};
    }
    return {u"text-x-generic"_s};
}

} // namespace

LinuxWorkspace::LinuxWorkspace(SessionBus& bus, QObject* parent) : QObject(parent), m_bus(bus) {}

bool LinuxWorkspace::open(const QUrl& url) {
    if (!url.isValid() || url.isRelative()) {
        return false;
    }
    // Some programs don't decode file URLs.
    const auto target = url.isLocalFile() ? url.toLocalFile() : url.toString(QUrl::FullyEncoded);
    if (target.startsWith(u'-')) { // "file:--help" would be an option
        return false;
    }
    for (const auto& command : openers()) {
        const auto program = QStandardPaths::findExecutable(command.first());
        if (!program.isEmpty() && startDetached(program, command.mid(1) + QStringList{target})) {
            return true;
        }
    }
    return false;
}

void LinuxWorkspace::reveal(const QString& path) {
    auto call = QDBusMessage::createMethodCall(u"org.freedesktop.FileManager1"_s, u"/org/freedesktop/FileManager1"_s,
                                               u"org.freedesktop.FileManager1"_s, u"ShowItems"_s);
    call.setArguments({QStringList{QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)}, QString()});
    m_bus.call(call, 5s, this, [this, path](const QDBusMessage& reply) {
        const QFileInfo folder(QFileInfo(path).path());
        if (reply.type() == QDBusMessage::ErrorMessage && folder.isDir()) {
            open(QUrl::fromLocalFile(folder.filePath()));
        }
    });
}

QIcon LinuxWorkspace::icon(const QString& path) {
    if (QIcon::fallbackThemeName().isEmpty()) {
        QIcon::setFallbackThemeName(u"Adwaita"_s); // where the desktop sets no theme
    }
    const QFileInfo file(path);
    for (const auto& name : iconNames(file)) {
        if (QIcon::hasThemeIcon(name)) {
            return QIcon::fromTheme(name);
        }
    }
    return QApplication::style()->standardIcon(file.isDir() ? QStyle::SP_DirIcon : QStyle::SP_FileIcon);
}

} // namespace tunedeck
