#include "TunedeckCore/Support/Text.h"

#include <QLocale>

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

namespace tunedeck {
namespace {

/// In a place of one's choice for the length of a test.
class TextTest : public testing::Test {
protected:
    static void setPlace(const char* locale, const char* zone) {
        QLocale::setDefault(QLocale(QString::fromLatin1(locale)));
        ::setenv("TZ", zone, 1);
        ::tzset();
    }
    void SetUp() override { setPlace("en_US", "UTC"); }
    void TearDown() override {
        QLocale::setDefault(QLocale::system());
        ::unsetenv("TZ");
        ::tzset();
    }

    static QDateTime at(const char* moment) {
        auto date = QDateTime::fromString(QString::fromLatin1(moment), Qt::ISODate);
        date.setTimeSpec(Qt::LocalTime);
        return date;
    }

    static std::string relative(const char* date, const char* now) {
        return relativeDate(at(date), at(now)).toStdString();
    }
};

TEST_F(TextTest, CountsAndJoins) {
    EXPECT_EQ(counted(1, QStringLiteral("track")), QStringLiteral("1 track"));
    EXPECT_EQ(counted(0, QStringLiteral("track")), QStringLiteral("0 tracks"));
    EXPECT_EQ(counted(-1, QStringLiteral("track")), QStringLiteral("-1 tracks"));
    EXPECT_EQ(joined({QString(), QStringLiteral("a"), QStringLiteral(""), QStringLiteral("b")}),
              QStringLiteral("a · b"));
}

TEST_F(TextTest, CutsBetweenUserPerceivedCharactersOnly) {
    const auto text = QStringLiteral("a🇩🇪👨‍👩‍👧e\u0301z");
    EXPECT_EQ(cut(text, 0), QString());
    EXPECT_EQ(cut(text, 2), QStringLiteral("a🇩🇪"));
    EXPECT_EQ(cut(text, 3), QStringLiteral("a🇩🇪👨‍👩‍👧"));
    EXPECT_EQ(cut(text, 4), QStringLiteral("a🇩🇪👨‍👩‍👧e\u0301"));
    EXPECT_EQ(cut(text, 5), text);
    EXPECT_EQ(cut(text, 500), text);
    EXPECT_EQ(cut(QString(1000, u'x'), 160), QString(160, u'x'));
    EXPECT_EQ(cut(QString(5, QChar(0xd83d)), 2).size(), 2);
}

TEST_F(TextTest, SmallDistancesAreRoundedToTheNearestUnit) {
    const auto now = at("2026-11-21T12:00:00");
    const auto ago = [&](int milliseconds) { return relativeDate(now.addMSecs(-milliseconds), now).toStdString(); };
    EXPECT_EQ(ago(0), "now");
    EXPECT_EQ(ago(499), "now");
    EXPECT_EQ(ago(-499), "now");
    EXPECT_EQ(ago(700), "1 second ago");
    EXPECT_EQ(ago(59'600), "1 minute ago");
    EXPECT_EQ(ago(89'000), "1 minute ago");
    EXPECT_EQ(ago(5 * 60'000), "5 minutes ago");
    EXPECT_EQ(ago(59 * 60'000 + 40'000), "1 hour ago");
    EXPECT_EQ(ago(-2 * 3600'000), "in 2 hours");
    EXPECT_EQ(ago(23 * 3600'000), "23 hours ago");
}

TEST_F(TextTest, DaysAndMoreCountWhatHasPassed) {
    EXPECT_EQ(relative("2026-11-20T12:00:00", "2026-11-21T12:00:00"), "yesterday");
    EXPECT_EQ(relative("2026-11-20T00:10:00", "2026-11-21T00:02:00"), "yesterday");
    EXPECT_EQ(relative("2026-11-17T23:30:00", "2026-11-21T00:30:00"), "3 days ago") << "whatever midnights lie between";
    EXPECT_EQ(relative("2026-11-22T13:00:00", "2026-11-21T12:00:00"), "tomorrow");
    EXPECT_EQ(relative("2026-11-14T12:00:00", "2026-11-21T12:00:00"), "last week");
    EXPECT_EQ(relative("2026-10-31T12:00:00", "2026-11-21T12:00:00"), "3 weeks ago");
    EXPECT_EQ(relative("2026-10-20T12:00:00", "2026-11-21T12:00:00"), "last month");
    EXPECT_EQ(relative("2026-02-28T12:00:00", "2026-11-21T12:00:00"), "9 months ago");
    EXPECT_EQ(relative("2025-11-28T12:00:00", "2026-11-21T12:00:00"), "last year");
    EXPECT_EQ(relative("2024-02-29T12:00:00", "2026-11-21T12:00:00"), "3 years ago");
}

TEST_F(TextTest, DatesAreEnglishInTheUsersRegionAndZone) {
    const QDateTime moment(QDate(2025, 3, 1), QTime(18, 4, 5), Qt::UTC);
    EXPECT_EQ(dateAndTime(moment).toStdString(), "Mar 1, 2025 at 6:04 PM");
    setPlace("de_DE", "Europe/Berlin");
    EXPECT_EQ(dateAndTime(moment).toStdString(), "1 Mar 2025 at 19:04");
    setPlace("C", "America/New_York");
    EXPECT_EQ(dateAndTime(moment).toStdString(), "Mar 1, 2025 at 1:04 PM");
}

} // namespace
} // namespace tunedeck
