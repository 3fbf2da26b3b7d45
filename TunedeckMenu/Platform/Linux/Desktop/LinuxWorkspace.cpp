#include "TunedeckMenu/Platform/Linux/Desktop/LinuxWorkspace.h"

#include "TunedeckCore/Support/Async/Process.h"
#include "TunedeckMenu/Platform/Linux/Desktop/SessionBus.h"

#include <QApplication>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>
#include <QStyle>

namespace tunedeck {

using namespace std::chrono_literals;

namespace {

// What desktops have to open things with; the first is the one that knows them all.
const QList<QStringList>& openers() {
    static const QList<QStringList> commands{{QStringLiteral("xdg-open")},
                                             {QStringLiteral("gio"), QStringLiteral("open")},
                                             {QStringLiteral("kde-open")},
                                             {QStringLiteral("exo-open")}};
    return commands;
}

// Names of the icon naming standard, the most fitting first.
QStringList iconNames(const QFileInfo& file) {
    if (file.isDir() && file.suffix() != u"app") {
        return {QStringLiteral("folder"), QStringLiteral("inode-directory")};
    }
    const auto suffix = file.suffix().toLower();
    static const QStringList audio{QStringLiteral("mp3"), QStringLiteral("m4a"), QStringLiteral("wav"),
                                   QStringLiteral("aiff"), QStringLiteral("flac")};
    if (suffix == u"xml") {
        return {QStringLiteral("text-xml"), QStringLiteral("application-xml"), QStringLiteral("text-x-generic")};
    }
    if (audio.contains(suffix)) {
        return {QStringLiteral("audio-x-generic")};
    }
    if (suffix == u"app" || (file.isFile() && file.isExecutable())) {
        return {QStringLiteral("application-x-executable")};
    }
    return {QStringLiteral("text-x-generic")};
}

} // namespace

LinuxWorkspace::LinuxWorkspace(SessionBus& bus, QObject* parent) : QObject(parent), m_bus(bus) {}

bool LinuxWorkspace::open(const QUrl& url) {
    if (!url.isValid() || url.isRelative()) {
        return false;
    }
    // A plain path says the same as its file URL and needs no decoding by whoever gets it.
    const auto target = url.isLocalFile() ? url.toLocalFile() : url.toString(QUrl::FullyEncoded);
    for (const auto& command : openers()) {
        const auto program = QStandardPaths::findExecutable(command.first());
        if (!program.isEmpty() && startDetached(program, command.mid(1) + QStringList{target})) {
            return true;
        }
    }
    return false;
}

void LinuxWorkspace::reveal(const QString& path) {
    auto call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call.setArguments({QStringList{QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)}, QString()});
    m_bus.call(call, 5s, this, [this, path](const QDBusMessage& reply) {
        if (reply.type() == QDBusMessage::ErrorMessage) {
            open(QUrl::fromLocalFile(QFileInfo(path).path()));
        }
    });
}

QIcon LinuxWorkspace::icon(const QString& path) {
    if (QIcon::fallbackThemeName().isEmpty()) {
        QIcon::setFallbackThemeName(QStringLiteral("Adwaita")); // for desktops that name no theme
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
