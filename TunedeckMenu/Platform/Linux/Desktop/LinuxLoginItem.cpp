#include "TunedeckMenu/Platform/Linux/Desktop/LinuxLoginItem.h"

#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckMenu/Platform/Linux/Desktop/DesktopEntry.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <unistd.h>

#include <cerrno>

namespace tunedeck {

LinuxLoginItem::LinuxLoginItem(QString entry, QString program, QString icon)
    : m_entry(std::move(entry)), m_program(std::move(program)), m_icon(std::move(icon)) {}

bool LinuxLoginItem::isEnabled() const {
    const auto bytes = readFile(m_entry, 64 * 1024);
    if (!bytes) {
        return false;
    }
    const auto keys = desktopEntryKeys(QString::fromUtf8(*bytes));
    const auto isSet = [&keys](const QString& key, QStringView value) {
        return keys.value(key).compare(value, Qt::CaseInsensitive) == 0;
    };
    if (isSet(QStringLiteral("Hidden"), u"true") || isSet(QStringLiteral("X-GNOME-Autostart-enabled"), u"false") ||
        keys.value(QStringLiteral("Exec")).isEmpty()) {
        return false;
    }
    const auto program = unescapedValue(keys.value(QStringLiteral("TryExec")));
    return program.isEmpty() || !QStandardPaths::findExecutable(program).isEmpty();
}

std::expected<void, QString> LinuxLoginItem::setEnabled(bool enabled) {
    if (enabled) {
        const auto folder = createFolder(QFileInfo(m_entry).path());
        return folder ? writeFileAtomically(m_entry, content()) : folder;
    }
    if (::unlink(QFile::encodeName(m_entry).constData()) != 0 && errno != ENOENT && errno != ENOTDIR) {
        return std::unexpected(qt_error_string(errno));
    }
    return {};
}

QString LinuxLoginItem::defaultEntry(const QString& home) {
    auto folder = QFile::decodeName(qgetenv("XDG_CONFIG_HOME"));
    if (!folder.startsWith(u'/')) {
        folder = home + QStringLiteral("/.config");
    }
    return folder + QStringLiteral("/autostart/com.brightfold.tunedeck.menu.desktop");
}

QByteArray LinuxLoginItem::content() const {
    return QStringLiteral("[Desktop Entry]\n"
                          "Type=Application\n"
                          "Name=Tunedeck\n"
                          "Comment=Follows the Tunedeck background service\n"
                          "Exec=%1\n"
                          "TryExec=%2\n"
                          "Icon=%3\n"
                          "Terminal=false\n"
                          "X-GNOME-Autostart-enabled=true\n")
        .arg(execValue(m_program), escapedValue(m_program), escapedValue(m_icon))
        .toUtf8();
}

} // namespace tunedeck
