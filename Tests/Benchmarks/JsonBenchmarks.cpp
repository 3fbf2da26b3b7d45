#include "Tests/Helpers/StatusDocument.h"
#include "TunedeckCore/Service/ServiceStatus.h"

#include <QByteArrayList>
#include <QJsonDocument>

#include <benchmark/benchmark.h>

using namespace tunedeck;

namespace {

/// A status document of 5,000 jobs, about 1 MB.
QByteArray document() {
    const QByteArray job =
        R"({"job_id":"job-1","state":"done","playlist":"Friday Night",)"
        R"("message":"12 tracks added — fertig","created_at":"2025-03-01T18:04:05Z",)"
        R"("finished_at":"2025-03-01T18:06:07Z","links":1,"tracks":12,"errors":0,"xml_version":"7"})";
    return test::statusDocument("\"recent_jobs\":[" + QByteArrayList(5000, job).join(',') + ']');
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
