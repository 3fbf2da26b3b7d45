#include "TunedeckCore/Installation/Launchctl.h"

#include "TunedeckCore/Support/Async/Process.h"

#include <utility>

namespace tunedeck {

namespace {

QCoro::Task<std::int32_t> run(QString program, QStringList arguments, std::stop_token stop) {
    const ProcessRequest request{.program = std::move(program), .arguments = std::move(arguments)};
    const auto ended = co_await runProcess(request, std::move(stop));
    co_return ended ? ended->exitStatus : -1;
}

} // namespace

Launchctl launchctlProgram(QString program) {
    return [program = std::move(program)](QStringList arguments, std::stop_token stop) {
        return run(program, std::move(arguments), std::move(stop));
    };
}

} // namespace tunedeck
