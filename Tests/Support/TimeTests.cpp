#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Support/Text/Time.h"

namespace tunedeck::test {
namespace {

QDateTime utc(int year, int month, int day, int hour, int minute, int second, int millisecond = 0) {
    return QDateTime(QDate(year, month, day), QTime(hour, minute, second, millisecond), Qt::UTC);
}

TEST(TimestampTest, ParsesInternetDateTimesInAnyZone) {
    EXPECT_EQ(parseTimestamp(u"2025-03-01T18:04:05Z"_s), utc(2025, 3, 1, 18, 4, 5));
    EXPECT_EQ(parseTimestamp(u"2025-03-01T18:04:05.1239999+01:00"_s), utc(2025, 3, 1, 17, 4, 5, 123));
    EXPECT_EQ(parseTimestamp(u"2024-02-29T00:30:00.5-05:30"_s), utc(2024, 2, 29, 6, 0, 0, 500));
    EXPECT_EQ(parseTimestamp(u"2025-01-01T00:00:00+23:59"_s), utc(2024, 12, 31, 0, 1, 0));
}

TEST(TimestampTest, RejectsOtherForms) {
    EXPECT_EQ(parseTimestamp(std::nullopt), std::nullopt);
    const QStringList wrong =
        u"|2025-03-01|2025-03-01T18:04:05|2025-03-01T18:04:05.Z|2025-03-01T18:04:05+0100|2025-03-01T18:04:05+24:00|"
        "2025-03-01T18:04:05+01:60|2025-02-29T18:04:05Z|2025-03-01T24:00:00Z|2025-03-01T18:60:05Z|"
        "٢٠٢٥-03-01T18:04:05Z|2025-03-01 18:04:05Z| 2025-03-01T18:04:05Z"_s.split(u'|');
    for (const auto& text : wrong) {
        EXPECT_EQ(parseTimestamp(text), std::nullopt) << text.toStdString();
    }
}

TEST(TimestampTest, WritesWholeSecondsInUtc) {
    const QDateTime local(QDate(2025, 3, 1), QTime(19, 4, 5, 999), Qt::OffsetFromUTC, 3600);
    EXPECT_EQ(isoTimestamp(local), u"2025-03-01T18:04:05Z");
}

} // namespace
} // namespace tunedeck::test
