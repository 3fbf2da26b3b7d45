#pragma once

#include "TunedeckCore/Support/Json/Members.h"

#include <QString>

#include <cstdint>

namespace tunedeck::demo {

/// A small repeatable pseudo-random generator (splitmix64) whose state can be saved.
struct Random {
    std::int64_t state = 1;

    std::uint64_t next() {
        auto value = static_cast<std::uint64_t>(state) + 0x9E3779B97F4A7C15U;
        state = static_cast<std::int64_t>(value);
        value = (value ^ (value >> 30U)) * 0xBF58476D1CE4E5B9U;
        value = (value ^ (value >> 27U)) * 0x94D049BB133111EBU;
        return value ^ (value >> 31U);
    }

    /// An integer from `least` to `most`, both included.
    std::int64_t between(std::int64_t least, std::int64_t most) {
        return least + static_cast<std::int64_t>(next() % static_cast<std::uint64_t>(most - least + 1));
    }

    /// True with a probability of `percent`.
    bool chance(std::int64_t percent) { return between(1, 100) <= percent; }

    /// An element of a container that isn't empty.
    auto oneOf(const auto& choices) { return choices[next() % static_cast<std::uint64_t>(choices.size())]; }

    /// `length` letters and digits, for ids, secrets and keys.
    QString token(int length) {
        static constexpr QStringView alphabet = u"abcdefghijkmnopqrstuvwxyzABCDEFGHJKLMNPQRSTUVWXYZ23456789";
        QString text(length, u' ');
        for (QChar& letter : text) {
            letter = oneOf(alphabet);
        }
        return text;
    }

    static constexpr auto members = json::members<&Random::state>;
};

} // namespace tunedeck::demo
