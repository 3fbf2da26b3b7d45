#include "TunedeckCore/Update/SemVer.h"

#include "TunedeckCore/Support/Text/Text.h"

#include <QHashFunctions>
#include <QStringView>

#include <algorithm>
#include <compare>
#include <tuple>

namespace tunedeck {

namespace {

bool isDigits(QStringView text) {
    return !text.isEmpty() && std::ranges::all_of(text, [](QChar c) { return c >= u'0' && c <= u'9'; });
}

std::optional<std::int64_t> parseNumber(QStringView text) {
    bool fits = false;
    const qlonglong value = isDigits(text) ? text.toLongLong(&fits) : 0;
    return fits ? std::optional<std::int64_t>(value) : std::nullopt;
}

/// A numeric identifier without a limit on its size.
struct NumericIdentifier {
    qsizetype length = 0; ///< number of digits; negative for a negative number
    QStringView digits;   ///< without leading zeros

    static std::optional<NumericIdentifier> parse(QStringView text) {
        const bool hasSign = text.startsWith(u'-') || text.startsWith(u'+');
        QStringView digits = hasSign ? text.sliced(1) : text;
        if (!isDigits(digits)) {
            return {};
        }
        digits = digits.sliced(std::ranges::find_if(digits, [](QChar c) { return c != u'0'; }) - digits.begin());
        return NumericIdentifier{text.startsWith(u'-') ? -digits.size() : digits.size(), digits};
    }

    std::weak_ordering operator<=>(const NumericIdentifier& other) const {
        if (length != other.length) {
            return length <=> other.length;
        }
        return (length < 0 ? other.digits.compare(digits) : digits.compare(other.digits)) <=> 0;
    }
};

/// Compares two different pre-release identifiers.
std::weak_ordering compare(const QString& a, const QString& b) {
    const auto left = NumericIdentifier::parse(a);
    const auto right = NumericIdentifier::parse(b);
    if (left && right) {
        return *left <=> *right;
    }
    if (left || right) {
        return right.has_value() <=> left.has_value();
    }
    return a.toStdU32String() <=> b.toStdU32String(); // by code point, not by UTF-16 unit
}

} // namespace

std::optional<SemVer> SemVer::parse(const QString& text) {
    QStringView rest = trimmingSpaces(text);
    if (rest.startsWith(u'v')) {
        rest = rest.sliced(1);
    }
    rest = rest.first(rest.contains(u'+') ? rest.indexOf(u'+') : rest.size());
    const qsizetype dash = rest.indexOf(u'-');
    const auto numbers = rest.first(dash < 0 ? rest.size() : dash).split(u'.');
    if (numbers.size() != 3) {
        return {};
    }
    const auto major = parseNumber(numbers[0]);
    const auto minor = parseNumber(numbers[1]);
    const auto patch = parseNumber(numbers[2]);
    if (!major || !minor || !patch) {
        return {};
    }
    SemVer version{*major, *minor, *patch, {}};
    if (dash >= 0) {
        version.prerelease = rest.sliced(dash + 1).toString().split(u'.');
        if (std::ranges::any_of(version.prerelease, &QString::isEmpty)) {
            return {};
        }
    }
    return version;
}

QString SemVer::description() const {
    const QString core = QStringList{QString::number(major), QString::number(minor), QString::number(patch)}.join(u'.');
    return prerelease.isEmpty() ? core : core + u'-' + prerelease.join(u'.');
}

std::weak_ordering operator<=>(const SemVer& a, const SemVer& b) {
    if (const auto order = std::tie(a.major, a.minor, a.patch) <=> std::tie(b.major, b.minor, b.patch); order != 0) {
        return order;
    }
    if (a.prerelease.isEmpty() || b.prerelease.isEmpty()) {
        return a.prerelease.isEmpty() <=> b.prerelease.isEmpty();
    }
    const auto [left, right] = std::ranges::mismatch(a.prerelease, b.prerelease);
    if (left == a.prerelease.end() || right == b.prerelease.end()) {
        return a.prerelease.size() <=> b.prerelease.size();
    }
    return compare(*left, *right);
}

std::size_t qHash(const SemVer& version, std::size_t seed) noexcept {
    return qHashMulti(seed, version.major, version.minor, version.patch, version.prerelease);
}

} // namespace tunedeck
