#include "Tests/Fuzz/Targets.h"

#include <cstddef>
#include <cstdint>

/// libFuzzer's way in, compiled once for each target with its function's name.
extern "C" __attribute__((visibility("default"))) int LLVMFuzzerTestOneInput(const std::uint8_t* bytes,
                                                                             std::size_t size) {
    tunedeck::fuzz::FUZZ_TARGET(QByteArray(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size)));
    return 0;
}
