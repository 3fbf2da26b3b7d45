#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <cstdint>

namespace tunedeck {

/// The noun alone, with "s" appended unless the count is 1: "track", "tracks".
QString plural(std::int64_t count, const QString& noun);

/// The count and the noun: "1 track", "2 tracks".
QString counted(std::int64_t count, const QString& noun);

/// The non-empty parts joined with " · ".
QString joined(const QStringList& parts);

/// The text without Unicode spaces and tabs at its ends. Line breaks stay.
QStringView trimmingSpaces(QStringView text);

/// The first `count` user-perceived characters, but at most 32 times as many code units. Never splits a flag or a
/// family emoji.
QString cut(const QString& text, int count);

/// The text with U+FFFD for each control character except tab (C0, DEL, C1, and those that change the direction of
/// writing), so that it can neither control a terminal nor look like several lines.
QString withoutControls(QString text);

/// The time between two dates in words, rounded to the nearest unit: "5 minutes ago", "yesterday", "now". The words
/// are those of CLDR for English; using ICU for them costs 2.4 MiB of memory.
QString relativeDate(const QDateTime& date, const QDateTime& now);

/// A date in local time, medium date style and short time style: "Mar 1, 2025 at 6:04 PM". English with the region of
/// the user's locale.
QString dateAndTime(const QDateTime& date);

} // namespace tunedeck
