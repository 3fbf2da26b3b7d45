#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Support/Text/Text.h"

#include <QLocale>

#include <cstdlib>
#include <ctime>

namespace tunedeck::test {
namespace {

/// Sets the locale and the time zone for one test.
class TextTest : public testing::Test {
protected:
    static void setLocale(const char* locale, const char* zone) {
        QLocale::setDefault(QLocale(QString::fromLatin1(locale)));
        ::setenv("TZ", zone, 1);
        ::tzset();
    }
    void SetUp() override { setLocale("en_US", "UTC"); }
    void TearDown() override {
        QLocale::setDefault(QLocale::system());
        ::unsetenv("TZ");
        ::tzset();
    }

    static QDateTime at(const char* text) {
        auto date = QDateTime::fromString(QString::fromLatin1(text), Qt::ISODate);
        date.setTimeSpec(Qt::LocalTime);
        return date;
    }
};

TEST_F(TextTest, CountsAndJoins) {
    EXPECT_EQ(counted(1, u"track"_s), u"1 track"_s);
    EXPECT_EQ(counted(0, u"track"_s), u"0 tracks"_s);
    EXPECT_EQ(joined({QString(), u"a"_s, u""_s, u"b"_s}), u"a · b"_s);
}

TEST_F(TextTest, ReplacesControlCharactersExceptTab) {
    EXPECT_EQ(withoutControls(u"a\tb\x1b[2J\n\x7f\x85\u202e\u2066é🇩🇪"_s),
              u"a\tb\ufffd[2J\ufffd\ufffd\ufffd\ufffd\ufffdé🇩🇪"_s);
}

TEST_F(TextTest, CutsOnlyBetweenUserPerceivedCharacters) {
    const auto text = u"a🇩🇪👨‍👩‍👧e\u0301z"_s;
    EXPECT_EQ(cut(text, 4), u"a🇩🇪👨‍👩‍👧e\u0301"_s);
    EXPECT_EQ(cut(text, 500), text);
    EXPECT_EQ(cut(QString(5, QChar(0xd83d)), 2).size(), 2);
    EXPECT_EQ(cut(u'e' + QString(100'000, QChar(0x301)), 2).size(), 64) << "endless combining marks";
}

TEST_F(TextTest, RoundsRelativeDatesAndCountsElapsedDays) {
    const auto now = at("2026-11-21T12:00:00");
    const auto ago = [&](int milliseconds) { return relativeDate(now.addMSecs(-milliseconds), now).toStdString(); };
    EXPECT_EQ(ago(499), "now");
    EXPECT_EQ(ago(59'400), "59 seconds ago");
    EXPECT_EQ(ago(59'600), "1 minute ago");
    EXPECT_EQ(ago(59 * 60'000 + 40'000), "1 hour ago");
    EXPECT_EQ(ago(-2 * 3600'000), "in 2 hours");
    EXPECT_EQ(ago(23 * 3600'000), "23 hours ago");

    const auto on = [&](const char* date) { return relativeDate(at(date), now).toStdString(); };
    EXPECT_EQ(on("2026-11-20T12:00:00"), "yesterday");
    EXPECT_EQ(relativeDate(at("2026-11-17T23:30:00"), at("2026-11-21T00:30:00")), u"3 days ago"_s)
        << "midnights don't count";
    EXPECT_EQ(on("2026-11-22T13:00:00"), "tomorrow");
    EXPECT_EQ(on("2026-11-14T12:00:00"), "last week");
    EXPECT_EQ(on("2026-10-31T12:00:00"), "3 weeks ago");
    EXPECT_EQ(on("2026-10-07T12:00:00"), "last month");
    EXPECT_EQ(on("2026-10-06T12:00:00"), "2 months ago") << "half a month is rounded up";
    EXPECT_EQ(on("2025-11-28T12:00:00"), "last year");
    EXPECT_EQ(on("2024-02-29T12:00:00"), "3 years ago");
}

TEST_F(TextTest, FormatsDatesInEnglishForTheUsersRegionAndZone) {
    const QDateTime moment(QDate(2025, 3, 1), QTime(18, 4, 5), Qt::UTC);
    EXPECT_EQ(dateAndTime(moment).toStdString(), "Mar 1, 2025 at 6:04 PM");
    setLocale("de_DE", "Europe/Berlin");
    EXPECT_EQ(dateAndTime(moment).toStdString(), "1 Mar 2025 at 19:04");
    setLocale("C", "America/New_York");
    EXPECT_EQ(dateAndTime(moment).toStdString(), "Mar 1, 2025 at 1:04 PM");
}

} // namespace
} // namespace tunedeck::test
