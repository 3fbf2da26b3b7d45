#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <cstdint>

namespace tunedeck {

/// The noun with "s" appended unless the count is exactly 1 ("track", "tracks"); without the number.
QString plural(std::int64_t count, const QString& noun);

/// The count, a space and the noun as plural() has it ("1 track", "2 tracks").
QString counted(std::int64_t count, const QString& noun);

/// The non-empty parts joined with " · ".
QString joined(const QStringList& parts);

/// The text without spaces (of any width) and tabs at its ends; line breaks stay.
QStringView trimmingSpaces(QStringView text);

/// The first user-perceived characters of a text, at most `count`; a flag or a family emoji is never split.
QString cut(const QString& text, int count);

/// A date in relation to another in words, named where there is a name ("yesterday", "now"), with wide units
/// ("5 minutes ago"), rounded to the nearest unit. The words are those of the common locale data for English; asking
/// ICU for them took 2.4 MiB.
QString relativeDate(const QDateTime& date, const QDateTime& now);

/// A date in local time in the abbreviated date and shortened time styles ("Mar 1, 2025 at 6:04 PM"), English with
/// the region of the user's locale.
QString dateAndTime(const QDateTime& date);

} // namespace tunedeck
