#pragma once

#include "DemoService/World/StepContext.h"
#include "TunedeckCore/Support/Json/Record.h"

#include <QString>

#include <optional>
#include <tuple>
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

private:
    std::vector<Tool*> missing();
    void startStep(StepContext& context);
    void finishInstallation(StepContext& context);
};

} // namespace tunedeck::demo

template<>
struct tunedeck::json::Members<tunedeck::demo::Toolbox::Tool> {
    using Tool = demo::Toolbox::Tool;
    static constexpr auto list = std::tuple{member("name", &Tool::name), member("installed", &Tool::installed),
                                            member("wanted", &Tool::wanted), member("ready", &Tool::ready)};
    static constexpr auto internal = std::tuple{member("installs", &Tool::installs)};
};

template<>
struct tunedeck::json::Members<tunedeck::demo::Toolbox::Report> {
    using Report = demo::Toolbox::Report;
    static constexpr auto list =
        std::tuple{member("tools", &Report::tools),           member("venvs", &Report::venvs),
                   member("installing", &Report::installing), member("step", &Report::step),
                   member("progress", &Report::progress),     member("error", &Report::error),
                   member("manifest", &Report::manifest),     member("checked_at", &Report::checkedAt)};
};

template<>
struct tunedeck::json::Members<tunedeck::demo::Toolbox> {
    using Toolbox = demo::Toolbox;
    static constexpr auto list =
        std::tuple{member("report", &Toolbox::report),        member("step_start", &Toolbox::stepStart),
                   member("step_end", &Toolbox::stepEnd),     member("steps", &Toolbox::steps),
                   member("steps_done", &Toolbox::stepsDone), member("fails_at", &Toolbox::failsAt)};
};
