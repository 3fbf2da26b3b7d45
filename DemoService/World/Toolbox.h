#pragma once

#include "DemoService/World/Turn.h"

#include <optional>
#include <string>
#include <vector>

namespace tunedeck::demo {

/// A command-line tool, or an environment that one runs in.
struct Tool {
    std::string name;
    std::optional<std::string> installed;
    std::string wanted;
    bool ready = false;
    /// What `installed` reads once it is installed.
    std::string installs;

    static void members(auto& self, auto& archive) {
        archive("name", self.name);
        archive("installed", self.installed);
        archive("wanted", self.wanted);
        archive("ready", self.ready);
        archive.own("installs", self.installs);
    }
};

/// The report on the tools, as clients see it.
struct ToolReport {
    std::vector<Tool> tools;
    std::vector<Tool> venvs;
    bool installing = false;
    std::optional<std::string> step;
    std::optional<double> progress;
    std::optional<std::string> error;
    std::optional<std::string> manifest;
    std::optional<Moment> checkedAt;

    static void members(auto& self, auto& archive) {
        archive("tools", self.tools);
        archive("venvs", self.venvs);
        archive("installing", self.installing);
        archive("step", self.step);
        archive("progress", self.progress);
        archive("error", self.error);
        archive("manifest", self.manifest);
        archive("checked_at", self.checkedAt);
    }
};

/// The tools that the service manages, and an installation in steps: each missing tool is fetched, then each
/// environment is made, one after the other.
struct Toolbox {
    ToolReport report;
    /// The running step's span; without an end (a staged installation) it stays where it is.
    std::optional<Moment> stepStart;
    std::optional<Moment> stepEnd;
    /// How many steps the running installation has, and how many are behind it.
    int steps = 0;
    int stepsDone = 0;
    /// The next installation ends with an error at this tool.
    std::optional<std::string> failsAt;

    /// Starts an installation of everything; joins one that runs.
    void install(Turn& turn);
    void advance(Turn& turn);
    std::optional<Moment> nextEvent() const { return stepEnd; }
    bool ready() const;
    /// The report at a moment: the progress goes on between the steps.
    ToolReport reportAt(Moment now) const;

    static void members(auto& self, auto& archive) {
        archive("report", self.report);
        archive("step_start", self.stepStart);
        archive("step_end", self.stepEnd);
        archive("steps", self.steps);
        archive("steps_done", self.stepsDone);
        archive("fails_at", self.failsAt);
    }

private:
    Tool* nextMissing();
    void startStep(Turn& turn);
    void endInstallation(Turn& turn);
};

/// The tools as they are when everything is installed, or when nothing is.
Toolbox makeToolbox(bool installed, Moment checkedAt);

} // namespace tunedeck::demo
