#pragma once

#include "DemoService/World/StepContext.h"
#include "TunedeckCore/Support/Json/Members.h"

#include <QString>

#include <optional>
#include <vector>

namespace tunedeck::demo {

/// The tools that the service manages, and an installation in steps: first each missing tool is downloaded, then each
/// missing environment is prepared.
struct Toolbox {
    /// A command-line tool, or a virtual environment in which one runs.
    struct Tool {
        QString name;
        std::optional<QString> installed; ///< version
        QString wanted;
        bool ready = false;
        QString installs; ///< the value of `installed` after an installation

        static constexpr auto members = json::members<&Tool::name, &Tool::installed, &Tool::wanted, &Tool::ready>;
        static constexpr auto internalMembers = json::members<&Tool::installs>;
    };

    /// What clients see.
    struct Report {
        std::vector<Tool> tools;
        std::vector<Tool> venvs;
        bool installing = false;
        std::optional<QString> step;
        std::optional<double> progress;
        std::optional<QString> error;
        std::optional<QString> manifest;
        std::optional<Moment> checkedAt;

        static constexpr auto members =
            json::members<&Report::tools, &Report::venvs, &Report::installing, &Report::step, &Report::progress,
                          &Report::error, &Report::manifest, &Report::checkedAt>;
    };

    Report report;
    std::optional<Moment> stepStart;
    std::optional<Moment> stepEnd; ///< none when the installation makes no progress
    int steps = 0;
    int stepsDone = 0;
    std::optional<QString> failsAt; ///< the tool at which the next installation fails

    /// Starts an installation of everything that is missing, unless one is running.
    void install(StepContext& context);
    void advance(StepContext& context);
    bool ready() const;
    /// The report with the progress at `now`.
    Report reportAt(Moment now) const;

    /// The usual tools, all installed or all missing.
    static Toolbox make(bool installed, Moment checkedAt);

    static constexpr auto members = json::members<&Toolbox::report, &Toolbox::stepStart, &Toolbox::stepEnd,
                                                  &Toolbox::steps, &Toolbox::stepsDone, &Toolbox::failsAt>;

private:
    std::vector<Tool*> missing();
    void startStep(StepContext& context);
    void finishInstallation(StepContext& context);
};

} // namespace tunedeck::demo
