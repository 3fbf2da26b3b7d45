#include "Tests/Benchmarks/StatusJobs.h"
#include "Tests/Helpers/StatusDocument.h"
#include "TunedeckCore/Service/ServiceStatus.h"

#include <QJsonDocument>

#include <benchmark/benchmark.h>

using namespace tunedeck;

namespace {

/// A status document of 5,000 jobs, about 1 MB.
QByteArray document() {
    return test::statusDocument("\"recent_jobs\":[" + statusJobs(5000) + ']');
}

void decodeStatus(benchmark::State& state) {
    const QByteArray text = document();
    for (auto _ : state) {
        auto status = ServiceStatus::decode(text);
        benchmark::DoNotOptimize(status);
    }
    state.SetBytesProcessed(state.iterations() * text.size());
}
BENCHMARK(decodeStatus)->Unit(benchmark::kMillisecond);

/// Qt's parser for comparison: decodeStatus must take less than twice as long.
void qtParse(benchmark::State& state) {
    const QByteArray text = document();
    for (auto _ : state) {
        auto parsed = QJsonDocument::fromJson(text);
        benchmark::DoNotOptimize(parsed);
    }
    state.SetBytesProcessed(state.iterations() * text.size());
}
BENCHMARK(qtParse)->Unit(benchmark::kMillisecond);

} // namespace
