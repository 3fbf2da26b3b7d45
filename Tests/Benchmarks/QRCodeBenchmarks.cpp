#include "TunedeckCore/QRCode.h"

#include <benchmark/benchmark.h>

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {

/// A pairing link as the panel shows it, to stay under a millisecond.
void qrCode(benchmark::State& state) {
    const QString text = u"https://t.me/tunedeck_bot?start=0123456789abcdef0123456789abcdef"_s;
    for (auto _ : state) {
        auto image = QRCode::image(text);
        benchmark::DoNotOptimize(image);
    }
}
BENCHMARK(qrCode)->Unit(benchmark::kMicrosecond);

} // namespace
