#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace tunedeck::demo {

/// A small repeatable source of chance (splitmix64). The seed is the whole state, so it can be kept in a file.
class Random {
public:
    explicit Random(std::uint64_t seed) : m_seed(seed) {}

    /// Any number.
    std::uint64_t next() {
        m_seed += 0x9E3779B97F4A7C15U;
        std::uint64_t value = m_seed;
        value = (value ^ (value >> 30U)) * 0xBF58476D1CE4E5B9U;
        value = (value ^ (value >> 27U)) * 0x94D049BB133111EBU;
        return value ^ (value >> 31U);
    }

    /// A whole number from `least` to `most`, both included.
    std::int64_t between(std::int64_t least, std::int64_t most) {
        return least + static_cast<std::int64_t>(next() % static_cast<std::uint64_t>(most - least + 1));
    }

    /// True `percent` times in a hundred.
    bool chance(int percent) { return between(1, 100) <= percent; }

    /// One of `choices`, which must not be empty.
    template<class T>
    const T& oneOf(std::span<const T> choices) {
        return choices[static_cast<std::size_t>(between(0, static_cast<std::int64_t>(choices.size()) - 1))];
    }

    /// `length` letters and digits, for ids, secrets and keys.
    std::string token(std::size_t length) {
        constexpr char alphabet[] = "abcdefghijkmnopqrstuvwxyzABCDEFGHJKLMNPQRSTUVWXYZ23456789";
        std::string text(length, ' ');
        for (char& letter : text) {
            letter = alphabet[next() % (sizeof alphabet - 1)];
        }
        return text;
    }

    std::uint64_t seed() const { return m_seed; }

private:
    std::uint64_t m_seed;
};

} // namespace tunedeck::demo
