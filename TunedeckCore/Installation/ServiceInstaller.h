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

/// Installs the service for the user and starts it.
class ServiceInstaller {
public:
    struct Outcome {
        enum class Kind { installed, failed, notBundled, upToDate };
        Kind kind = Kind::upToDate;
        bool serviceChanged = false;
        bool plistChanged = false;
        QString message = {}; ///< of a failure

        /// Kind and members, for the log.
        [[nodiscard]] QString description() const;
        bool operator==(const Outcome&) const = default;
    };

    static constexpr const char* label = "com.brightfold.tunedeck";

    /// `bundledService`: the program in the bundle; `uid`: for the launchd domain; `clock`: must outlive the
    /// coroutines.
    ServiceInstaller(QString home, std::optional<QString> bundledService, std::uint32_t uid, Launchctl launchctl,
                     Clock& clock);

    /// Copies the program, writes the property list and loads, reloads or restarts the agent, each only if necessary.
    /// Errors and stops are failed outcomes; the caller ignores those of a stop.
    [[nodiscard]] QCoro::Task<Outcome> ensureInstalled(std::stop_token stop) const;

    /// The contents of the agent's property list.
    [[nodiscard]] PropertyDictionary plist() const;
    /// Path of the installed program.
    [[nodiscard]] QString installed() const { return m_paths.service(); }
    /// Path of the agent's property list.
    [[nodiscard]] QString plistURL() const { return m_paths.agentPlist(); }

    /// "gui/UID"
    static QString domainTarget(std::uint32_t uid);
    /// "gui/UID/LABEL"
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
