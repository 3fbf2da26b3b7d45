#include "TunedeckMenu/Checkup/CheckRunner.h"

#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckCore/Support/Async/Wait.h"

#include <memory>
#include <optional>
#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

/// The results so far. Shared, as a check that doesn't stop outlives the run.
struct Run {
    explicit Run(std::size_t count) : results(count), missing(count) {}

    void finish(std::size_t index, CheckResult result) {
        results[index] = std::move(result);
        if (--missing == 0) {
            allFinished.wake();
        }
    }

    std::vector<std::optional<CheckResult>> results;
    std::size_t missing;
    Wait allFinished{{}};
    std::stop_source timers;
};

QCoro::Task<> perform(Check check, std::size_t index, std::shared_ptr<Run> run, std::stop_token stop) {
    auto result = co_await check.run(stop);
    if (!stop.stop_requested()) {
        run->finish(index, std::move(result));
    }
}

QCoro::Task<> limitTime(std::chrono::milliseconds limit, std::size_t index, std::shared_ptr<Run> run,
                        std::stop_source check, Clock* clock) {
    const bool isLate = co_await clock->sleep(limit, run->timers.get_token());
    if (isLate && !run->results[index]) {
        check.request_stop();
        run->finish(index, CheckResult::problem(u"This couldn't be checked: it took too long."_s,
                                                u"Try again. If it stays like this, log out and log in again."_s));
    }
}

} // namespace

QCoro::Task<std::vector<CheckResult>> runChecks(std::vector<Check> checks, Clock* clock) {
    const auto run = std::make_shared<Run>(checks.size());
    for (std::size_t i = 0; i < checks.size(); ++i) {
        const std::stop_source source;
        spawn(perform(checks[i], i, run, source.get_token()));
        spawn(limitTime(checks[i].limit, i, run, source, clock));
    }
    if (run->missing > 0) {
        co_await run->allFinished.next();
    }
    run->timers.request_stop();
    std::vector<CheckResult> results;
    for (std::size_t i = 0; i < checks.size(); ++i) {
        results.push_back(run->results[i].value_or(CheckResult()));
        results.back().name = checks[i].name;
    }
    co_return results;
}

} // namespace tunedeck
