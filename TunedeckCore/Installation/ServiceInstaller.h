#pragma once

#include "TunedeckCore/Installation/Launchctl.h"
#include "TunedeckCore/Locations/UserPaths.h"
#include "TunedeckCore/Support/Async/Clock.h"
#include "TunedeckCore/Support/Files/PropertyList.h"

#include <QCoroTask>
#include <QString>

#include <cstdint>
#include <expected>
#include <optional>
#include <stop_token>

namespace tunedeck {

/// Sees to it that the service is installed for the user and running.
class ServiceInstaller {
public:
    /// What came of it.
    struct Outcome {
        enum class Kind { installed, failed, notBundled, upToDate };
        Kind kind = Kind::upToDate;
        bool serviceChanged = false;
        bool plistChanged = false;
        QString message = {}; ///< of a failure, for the user

        /// The case's name with its payload, for the log.
        [[nodiscard]] QString description() const;
        bool operator==(const Outcome&) const = default;
    };

    static constexpr const char* label = "com.brightfold.tunedeck";

    /// `home`: the user's home folder; `bundledService`: the program in the bundle; `uid`: names the launchd domain;
    /// `clock`: of the waits between tries, lives longer than what runs.
    ServiceInstaller(QString home, std::optional<QString> bundledService, std::uint32_t uid, Launchctl launchctl,
                     Clock& clock);

    /// Copies the program, writes the property list and loads, reloads or restarts the agent, doing as little as the
    /// present state allows. Every error becomes a failed outcome; so does a stop, whose outcome nobody should show.
    [[nodiscard]] QCoro::Task<Outcome> ensureInstalled(std::stop_token stop) const;

    /// The agent's property list.
    [[nodiscard]] PropertyDictionary plist() const;
    /// Where the program is installed.
    [[nodiscard]] QString installed() const { return m_paths.service(); }
    /// Where the property list is.
    [[nodiscard]] QString plistURL() const { return m_paths.agentPlist(); }

    /// "gui/" and the user's id.
    static QString domainTarget(std::uint32_t uid);
    /// "gui/", the user's id, "/" and the label.
    static QString serviceTarget(std::uint32_t uid);

private:
    static QCoro::Task<Outcome> run(ServiceInstaller installer, std::stop_token stop);
    static QCoro::Task<Outcome> load(ServiceInstaller installer, Outcome done, std::stop_token stop);
    [[nodiscard]] std::expected<bool, QString> updateProgram(const QString& bundled) const;
    [[nodiscard]] std::expected<bool, QString> updatePlist() const;

    UserPaths m_paths;
    std::optional<QString> m_bundledService;
    std::uint32_t m_uid;
    Launchctl m_launchctl;
    Clock* m_clock;
};

} // namespace tunedeck
