#include "TunedeckCore/Diagnostics.h"

#include <benchmark/benchmark.h>

using namespace tunedeck;

namespace {

/// A log of so many characters, with a secret in every other line.
QString log(qsizetype size) {
    const QString lines = QStringLiteral(
        "2025-03-01T18:04:05Z  WARN tunedeck::relay: retrying https://relay.example/c/0123456789abcdef0123456789/mcp\n"
        "2025-03-01T18:04:06Z ERROR tunedeck::jobs: 3 of 12 tracks of \"Friday Night\" could not be found – skipped\n");
    return lines.repeated(size / lines.size() + 1).first(size);
}

/// To stay linear from 64 KiB to 8 MiB, and above 100 MB/s.
void maskLog(benchmark::State& state) {
    const QString text = log(state.range());
    for (auto _ : state) {
        QString masked = Diagnostics::mask(text);
        benchmark::DoNotOptimize(masked);
    }
    state.SetBytesProcessed(state.iterations() * text.size());
}
BENCHMARK(maskLog)->Arg(64 * 1024)->Arg(512 * 1024)->Arg(8 * 1024 * 1024)->Unit(benchmark::kMicrosecond);

} // namespace
