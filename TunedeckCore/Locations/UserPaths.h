#pragma once

#include <QString>

namespace tunedeck {

/// Where Tunedeck and its service keep their files in a user's home folder.
class UserPaths {
public:
    /// `home`: absolute; one trailing "/" is dropped.
    explicit UserPaths(QString home);

    /// The home folder of the user who runs this process: HOME when it is absolute, else the account's.
    static UserPaths current();

    [[nodiscard]] const QString& home() const { return m_home; }

    // Shared with the service.
    [[nodiscard]] QString dataFolder() const { return below(".tunedeck"); }
    [[nodiscard]] QString settings() const { return below(".tunedeck/settings.json"); }
    [[nodiscard]] QString runtimeFile() const { return below(".tunedeck/runtime.json"); }
    [[nodiscard]] QString service() const { return below(".tunedeck/bin/tunedeck"); }
    [[nodiscard]] QString agentPlist() const { return below("Library/LaunchAgents/com.brightfold.tunedeck.plist"); }
    [[nodiscard]] QString serviceLog() const { return below("Library/Logs/tunedeck.log"); }
    [[nodiscard]] QString serviceOutput() const { return below("Library/Logs/tunedeck.out.log"); }

    // The application's own.
    [[nodiscard]] QString notificationLog() const { return below(".tunedeck/notifications.log"); }
    [[nodiscard]] QString menuBarReport() const { return below(".tunedeck/menu-bar.json"); }

    // Of other programs.
    [[nodiscard]] QString tunnelConfig() const { return below(".cloudflared/config.yml"); }
    [[nodiscard]] QString localPrograms() const { return below(".local/bin"); }

private:
    [[nodiscard]] QString below(const char* relative) const;

    QString m_home;
};

} // namespace tunedeck
