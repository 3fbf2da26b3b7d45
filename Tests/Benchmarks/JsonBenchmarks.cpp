#include "TunedeckCore/Service/ServiceStatus.h"

#include <QJsonDocument>

#include <benchmark/benchmark.h>

using namespace tunedeck;

namespace {

/// A status document of 5,000 jobs, about 1 MB.
QByteArray document() {
    QByteArray text = R"({"version":"2.1.0","download_dir":"/music","download_dir_source":"settings",
        "download_dir_writable":true,"import_xml":"/music/import.xml",
        "cloud":{"enabled":true,"base_url":"https://relay.example","protocol":3,"connected":true},"recent_jobs":[)";
    for (int i = 0; i < 5000; ++i) {
        const QByteArray number = QByteArray::number(i);
        text += (i == 0 ? QByteArray() : QByteArray(",")) + R"({"job_id":"job-)" + number +
                R"(","state":"done","playlist":"Friday Night )" + number +
                R"(","message":"12 tracks added — fertig",)" +
                R"("created_at":"2025-03-01T18:04:05Z","finished_at":"2025-03-01T18:06:07Z","links":1,"tracks":)" +
                number + R"(,"errors":0,"xml_version":"7"})";
    }
    return text + "]}";
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
