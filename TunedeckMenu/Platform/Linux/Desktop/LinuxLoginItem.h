#pragma once

#include "TunedeckMenu/Platform/LoginItem.h"

namespace tunedeck {

/// An entry in the desktop's autostart folder. It counts as enabled when a session would start its program: it isn't
/// hidden or disabled by the desktop's settings, and the program exists, wherever it is installed.
class LinuxLoginItem final : public LoginItem {
public:
    /// `icon` is a path or a name in the icon theme.
    LinuxLoginItem(QString entryPath, QString programPath, QString icon);

    [[nodiscard]] bool isEnabled() const override;
    std::expected<void, QString> setEnabled(bool enabled) override;

    /// In XDG_CONFIG_HOME, else in ~/.config.
    static QString defaultEntryPath(const QString& home);

private:
    [[nodiscard]] QByteArray content() const;

    QString m_entryPath;
    QString m_programPath;
    QString m_icon;
};

} // namespace tunedeck
