#include "TunedeckCore/Support/Text.h"

#include <QLocale>

#include <unicode/brkiter.h>
#include <unicode/datefmt.h>
#include <unicode/locid.h>
#include <unicode/reldatefmt.h>
#include <unicode/timezone.h>

#include <cmath>
#include <memory>

namespace tunedeck {

namespace {

QString fromIcu(const icu::UnicodeString& text) {
    return QString::fromUtf16(text.getBuffer(), text.length());
}

/// English, because all other words are; the region decides on the order of day and month and on the clock.
icu::Locale userLocale() {
    return {"en", QLocale::territoryToCode(QLocale().territory()).toLatin1().constData()};
}

/// A number of units of time; negative ones lie in the past.
struct Span {
    std::int64_t amount;
    URelativeDateTimeUnit unit;
};

std::int64_t rounded(std::int64_t amount, std::int64_t unit) {
    return (amount + unit / 2) / unit;
}

/// How many weeks of the calendar lie between two days.
std::int64_t weeksBetween(QDate earlier, QDate later) {
    const auto first = QLocale().firstDayOfWeek();
    const auto startOfWeek = [first](QDate day) { return day.addDays(-((day.dayOfWeek() - first + 7) % 7)); };
    return startOfWeek(earlier).daysTo(startOfWeek(later)) / 7;
}

/// The largest unit of which at least one whole lies between two local times. Hours and less are rounded to the
/// nearest; from days on the calendar's own days, weeks, months and years are counted: "yesterday" and "last month"
/// name one of them, and would otherwise be said of the wrong one.
Span largestSpan(const QDateTime& earlier, const QDateTime& later) {
    const auto from = earlier.date();
    const auto to = later.date();
    if (earlier.addYears(1) <= later) {
        return {to.year() - from.year(), UDAT_REL_UNIT_YEAR};
    }
    if (earlier.addMonths(1) <= later) {
        return {(to.year() - from.year()) * 12 + to.month() - from.month(), UDAT_REL_UNIT_MONTH};
    }
    if (earlier.addDays(7) <= later) {
        return {weeksBetween(from, to), UDAT_REL_UNIT_WEEK};
    }
    if (earlier.addDays(1) <= later) {
        return {from.daysTo(to), UDAT_REL_UNIT_DAY};
    }
    const auto seconds = rounded(earlier.msecsTo(later), 1000);
    const auto minutes = rounded(seconds, 60);
    if (seconds < 60) {
        return {seconds, UDAT_REL_UNIT_SECOND};
    }
    return minutes < 60 ? Span{minutes, UDAT_REL_UNIT_MINUTE} : Span{rounded(seconds, 3600), UDAT_REL_UNIT_HOUR};
}

/// The local time in one of ICU's forms. The form is told that it is in Greenwich, so that it needs no table of zones
/// and can't disagree with Qt about the present one.
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

QString counted(std::int64_t count, const QString& noun) {
    return QString::number(count) + u' ' + plural(count, noun);
}

QString joined(const QStringList& parts) {
    QStringList shown = parts;
    shown.removeAll(QString());
    return shown.join(QStringLiteral(" · "));
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
    auto status = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> characters(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    if (U_FAILURE(status)) {
        return text.left(count);
    }
    const icu::UnicodeString alias(false, reinterpret_cast<const char16_t*>(text.utf16()),
                                   static_cast<std::int32_t>(text.size()));
    characters->setText(alias);
    const auto end = characters->next(count);
    return end == icu::BreakIterator::DONE ? text : text.left(end);
}

QString relativeDate(const QDateTime& date, const QDateTime& now) {
    const bool past = date <= now;
    const auto span =
        past ? largestSpan(date.toLocalTime(), now.toLocalTime()) : largestSpan(now.toLocalTime(), date.toLocalTime());
    auto status = U_ZERO_ERROR;
    const icu::RelativeDateTimeFormatter formatter(userLocale(), status);
    icu::UnicodeString text;
    formatter.format(static_cast<double>(past ? -span.amount : span.amount), span.unit, text, status);
    return U_SUCCESS(status) ? fromIcu(text) : QString();
}

QString dateAndTime(const QDateTime& date) {
    using icu::DateFormat;
    const auto locale = userLocale();
    const auto local = date.toLocalTime();
    const std::unique_ptr<DateFormat> day(DateFormat::createDateInstance(DateFormat::kMedium, locale));
    const std::unique_ptr<DateFormat> time(DateFormat::createTimeInstance(DateFormat::kShort, locale));
    // Newer tables of ICU put a narrow space before AM and PM, which few fonts have.
    QString text = formatted(day, local) + QStringLiteral(" at ") + formatted(time, local);
    text.replace(QChar(0x202f), u' ');
    return text;
}

} // namespace tunedeck
