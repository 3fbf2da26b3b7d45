#include "TunedeckCore/Support/Text/Text.h"

#include <QLocale>

#include <unicode/brkiter.h>
#include <unicode/datefmt.h>
#include <unicode/locid.h>
#include <unicode/timezone.h>

#include <cmath>
#include <memory>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

QString fromIcu(const icu::UnicodeString& text) {
    return QString::fromUtf16(text.getBuffer(), text.length());
}

/// English like the rest of the interface. The region decides on the order of day and month and on the 12-hour clock.
icu::Locale userLocale() {
    return {"en", QLocale::territoryToCode(QLocale().territory()).toLatin1().constData()};
}

/// A unit of time and, if they have names, the words for one unit ago and one ahead.
struct Unit {
    const char* name = "";
    const char* last = nullptr;
    const char* next = nullptr;
};

constexpr Unit second{"second"};
constexpr Unit minute{"minute"};
constexpr Unit hour{"hour"};
constexpr Unit day{"day", "yesterday", "tomorrow"};
constexpr Unit week{"week", "last week", "next week"};
constexpr Unit month{"month", "last month", "next month"};
constexpr Unit year{"year", "last year", "next year"};

/// A number of units of time.
struct Span {
    std::int64_t amount;
    const Unit& unit;
};

std::int64_t rounded(std::int64_t amount, std::int64_t unit) {
    return (amount + unit / 2) / unit;
}

/// Whole months of the calendar between two local times.
std::int64_t monthsBetween(const QDateTime& earlier, const QDateTime& later) {
    std::int64_t months =
        (later.date().year() - earlier.date().year()) * 12 + later.date().month() - earlier.date().month();
    return earlier.addMonths(static_cast<int>(months)) > later ? months - 1 : months;
}

Span monthsOrYears(const QDateTime& earlier, const QDateTime& later, std::int64_t whole) {
    const std::int64_t restDays = earlier.addMonths(static_cast<int>(whole)).daysTo(later);
    const std::int64_t months = whole + (restDays >= 15 ? 1 : 0);
    return months < 12 ? Span{months, month} : Span{rounded(months, 12), year};
}

/// The time between two local times in the largest unit that fits at least once, rounded. Midnights don't matter: three
/// days and one hour are three days at any time of day.
Span largestSpan(const QDateTime& earlier, const QDateTime& later) {
    if (const auto months = monthsBetween(earlier, later); months > 0) {
        return monthsOrYears(earlier, later, months);
    }
    const auto seconds = rounded(earlier.msecsTo(later), 1000);
    const auto minutes = rounded(seconds, 60);
    const auto hours = rounded(seconds, 3600);
    const auto days = rounded(seconds, 86'400);
    if (seconds < 60) {
        return {seconds, second};
    }
    if (minutes < 60) {
        return {minutes, minute};
    }
    if (hours < 24) {
        return {hours, hour};
    }
    return days < 7 ? Span{days, day} : Span{rounded(days, 7), week};
}

/// Formats a local time with ICU. ICU's own time zone is set to GMT, so that it loads no zone data and can't disagree
/// with Qt about the current zone.
QString formatted(const std::unique_ptr<icu::DateFormat>& format, const QDateTime& local) {
    if (!format) {
        return {};
    }
    format->setTimeZone(*icu::TimeZone::getGMT());
    icu::UnicodeString text;
    const QDateTime shifted(local.date(), local.time(), Qt::UTC);
    return fromIcu(format->format(static_cast<UDate>(shifted.toMSecsSinceEpoch()), text));
}

} // namespace

QString plural(std::int64_t count, const QString& noun) {
    return count == 1 ? noun : noun + u's';
}

QString withoutControls(QString text) {
    for (QChar& each : text) {
        const char16_t code = each.unicode();
        const bool isControl = each.category() == QChar::Other_Control && code != u'\t';
        const bool isDirection = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
        if (isControl || isDirection) {
            each = QChar::ReplacementCharacter;
        }
    }
    return text;
}

QString counted(std::int64_t count, const QString& noun) {
    return QString::number(count) + u' ' + plural(count, noun);
}

QString joined(const QStringList& parts) {
    QStringList shown = parts;
    shown.removeAll(QString());
    return shown.join(u" · "_s);
}

QStringView trimmingSpaces(QStringView text) {
    const auto isSpace = [](QChar c) { return c == u'\t' || c.category() == QChar::Separator_Space; };
    while (!text.isEmpty() && isSpace(text.front())) {
        text = text.sliced(1);
    }
    while (!text.isEmpty() && isSpace(text.back())) {
        text.chop(1);
    }
    return text;
}

QString cut(const QString& text, int count) {
    if (text.size() <= count) {
        return text;
    }
    // A character may have any number of combining marks.
    const qsizetype bound = count * qsizetype{32};
    const QStringView head = QStringView(text).left(bound);
    auto status = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> characters(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    if (U_FAILURE(status)) {
        return text.left(count);
    }
    const icu::UnicodeString alias(false, reinterpret_cast<const char16_t*>(head.utf16()),
                                   static_cast<std::int32_t>(head.size()));
    characters->setText(alias);
    const auto end = characters->next(count);
    return end == icu::BreakIterator::DONE ? head.toString() : text.left(end);
}

QString relativeDate(const QDateTime& date, const QDateTime& now) {
    const bool past = date <= now;
    const auto span =
        past ? largestSpan(date.toLocalTime(), now.toLocalTime()) : largestSpan(now.toLocalTime(), date.toLocalTime());
    if (span.amount == 0) {
        return u"now"_s;
    }
    if (const char* name = past ? span.unit.last : span.unit.next; name != nullptr && span.amount == 1) {
        return QString::fromLatin1(name);
    }
    const auto text = counted(span.amount, QString::fromLatin1(span.unit.name));
    return past ? text + u" ago"_s : u"in "_s + text;
}

QString dateAndTime(const QDateTime& date) {
    using icu::DateFormat;
    const auto locale = userLocale();
    const auto local = date.toLocalTime();
    const std::unique_ptr<DateFormat> days(DateFormat::createDateInstance(DateFormat::kMedium, locale));
    const std::unique_ptr<DateFormat> times(DateFormat::createTimeInstance(DateFormat::kShort, locale));
    // Newer ICU data has a narrow space before AM and PM, which few fonts support.
    QString text = formatted(days, local) + u" at "_s + formatted(times, local);
    text.replace(QChar(0x202f), u' ');
    return text;
}

} // namespace tunedeck
