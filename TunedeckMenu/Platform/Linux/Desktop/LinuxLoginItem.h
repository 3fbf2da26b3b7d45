#pragma once

#include "TunedeckMenu/Platform/LoginItem.h"

namespace tunedeck {

/// Open at Login as an entry in the desktop's autostart folder.
///
/// It is enabled when a session would start what the entry names: neither hidden nor switched off by the desktop's own
/// settings, and the program is there. Another place of the same application counts.
class LinuxLoginItem final : public LoginItem {
public:
    /// `entry`: path of the entry's file; `program`: what it starts; `icon`: a path or name.
    LinuxLoginItem(QString entry, QString program, QString icon);

    [[nodiscard]] bool isEnabled() const override;
    std::expected<void, QString> setEnabled(bool enabled) override;

    /// The entry's path for this user, by XDG_CONFIG_HOME or the home folder.
    static QString defaultEntry(const QString& home);

private:
    [[nodiscard]] QByteArray content() const;

    QString m_entry;
    QString m_program;
    QString m_icon;
};

} // namespace tunedeck
