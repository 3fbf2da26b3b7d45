#include "TunedeckCore/QRCode.h"

#include <benchmark/benchmark.h>

using namespace tunedeck;

namespace {

/// A pairing link as the panel shows it, to stay under a millisecond.
void qrCode(benchmark::State& state) {
    const QString text = QStringLiteral("https://t.me/tunedeck_bot?start=0123456789abcdef0123456789abcdef");
    for (auto _ : state) {
        auto image = QRCode::image(text);
        benchmark::DoNotOptimize(image);
    }
}
BENCHMARK(qrCode)->Unit(benchmark::kMicrosecond);

} // namespace
