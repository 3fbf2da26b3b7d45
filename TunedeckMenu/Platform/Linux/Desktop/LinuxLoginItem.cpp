#include "TunedeckMenu/Platform/Linux/Desktop/LinuxLoginItem.h"

#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckMenu/Platform/Linux/Desktop/DesktopEntry.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <unistd.h>

#include <cerrno>

namespace tunedeck {

using namespace Qt::StringLiterals;

LinuxLoginItem::LinuxLoginItem(QString entryPath, QString programPath, QString icon)
    : m_entryPath(std::move(entryPath)), m_programPath(std::move(programPath)), m_icon(std::move(icon)) {}

bool LinuxLoginItem::isEnabled() const {
    const auto bytes = readFile(m_entryPath, 64 * 1024);
    if (!bytes) {
        return false;
    }
    const auto keys = desktopEntryKeys(QString::fromUtf8(*bytes));
    const auto isSet = [&keys](const QString& key, QStringView value) {
        return keys.value(key).compare(value, Qt::CaseInsensitive) == 0;
    };
    if (isSet(u"Hidden"_s, u"true") || isSet(u"X-GNOME-Autostart-enabled"_s, u"false") ||
        keys.value(u"Exec"_s).isEmpty()) {
        return false;
    }
    const auto program = unescapedValue(keys.value(u"TryExec"_s));
    return program.isEmpty() || !QStandardPaths::findExecutable(program).isEmpty();
}

std::expected<void, QString> LinuxLoginItem::setEnabled(bool enabled) {
    if (enabled) {
        const auto folder = createFolder(QFileInfo(m_entryPath).path());
        return folder ? writeFileAtomically(m_entryPath, content()) : folder;
    }
    if (::unlink(QFile::encodeName(m_entryPath).constData()) != 0 && errno != ENOENT && errno != ENOTDIR) {
        return std::unexpected(qt_error_string(errno));
    }
    return {};
}

QString LinuxLoginItem::defaultEntryPath(const QString& home) {
    auto folder = QFile::decodeName(qgetenv("XDG_CONFIG_HOME"));
    if (!folder.startsWith(u'/')) {
        folder = home + u"/.config"_s;
    }
    return folder + u"/autostart/com.brightfold.tunedeck.menu.desktop"_s;
}

QByteArray LinuxLoginItem::content() const {
    return QString(u"[Desktop Entry]\n"
                   "Type=Application\n"
                   "Name=Tunedeck\n"
                   "Comment=Follows the Tunedeck background service\n"
                   "Exec=%1\n"
                   "TryExec=%2\n"
                   "Icon=%3\n"
                   "Terminal=false\n"
                   "X-GNOME-Autostart-enabled=true\n"_s)
        .arg(execValue(m_programPath), escapedValue(m_programPath), escapedValue(m_icon))
        .toUtf8();
}

} // namespace tunedeck
