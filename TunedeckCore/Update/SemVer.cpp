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

std::optional<std::int64_t> number(QStringView text) {
    bool fits = false;
    const qlonglong value = isDigits(text) ? text.toLongLong(&fits) : 0;
    return fits ? std::optional<std::int64_t>(value) : std::nullopt;
}

/// A numeric identifier of any size in parts that compare as the number does.
struct NumericIdentifier {
    bool negative = false;
    QStringView digits; ///< without leading zeros; empty for 0

    static std::optional<NumericIdentifier> read(QStringView text) {
        const bool hasSign = text.startsWith(u'-') || text.startsWith(u'+');
        QStringView digits = hasSign ? text.sliced(1) : text;
        if (!isDigits(digits)) {
            return {};
        }
        digits = digits.sliced(std::ranges::find_if(digits, [](QChar c) { return c != u'0'; }) - digits.begin());
        return NumericIdentifier{text.startsWith(u'-') && !digits.isEmpty(), digits};
    }

    [[nodiscard]] bool isLessThan(const NumericIdentifier& other) const {
        if (negative != other.negative) {
            return negative;
        }
        const auto& [smaller, larger] = negative ? std::tie(other, *this) : std::tie(*this, other);
        return smaller.digits.size() != larger.digits.size() ? smaller.digits.size() < larger.digits.size()
                                                             : smaller.digits < larger.digits;
    }
};

/// The order of two identifiers that differ as texts.
bool precedes(const QString& a, const QString& b) {
    const auto left = NumericIdentifier::read(a);
    const auto right = NumericIdentifier::read(b);
    if (left && right) {
        return left->isLessThan(*right);
    }
    if (left || right) {
        return left.has_value();
    }
    return std::ranges::lexicographical_compare(a.toUcs4(), b.toUcs4()); // by character, not by UTF-16 unit
}

} // namespace

std::optional<SemVer> SemVer::parse(const QString& text) {
    QStringView rest = trimmingSpaces(text);
    if (rest.startsWith(u'v')) {
        rest = rest.sliced(1);
    }
    rest = rest.first(rest.contains(u'+') ? rest.indexOf(u'+') : rest.size());
    const qsizetype dash = rest.indexOf(u'-');
    const auto pieces = rest.first(dash < 0 ? rest.size() : dash).split(u'.');
    if (pieces.size() != 3) {
        return {};
    }
    const auto major = number(pieces[0]);
    const auto minor = number(pieces[1]);
    const auto patch = number(pieces[2]);
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

bool operator<(const SemVer& a, const SemVer& b) {
    const auto order = std::tie(a.major, a.minor, a.patch) <=> std::tie(b.major, b.minor, b.patch);
    if (order != 0) {
        return order < 0;
    }
    if (a.prerelease.isEmpty() || b.prerelease.isEmpty()) {
        return !a.prerelease.isEmpty();
    }
    const auto [left, right] = std::ranges::mismatch(a.prerelease, b.prerelease);
    if (left == a.prerelease.end() || right == b.prerelease.end()) {
        return a.prerelease.size() < b.prerelease.size();
    }
    return precedes(*left, *right);
}

std::size_t qHash(const SemVer& version, std::size_t seed) noexcept {
    return qHashMulti(seed, version.major, version.minor, version.patch, version.prerelease);
}

} // namespace tunedeck
