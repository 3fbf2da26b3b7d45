#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Onboarding.h"
#include "TunedeckCore/RekordboxInstall.h"
#include "TunedeckCore/Support/Files/PropertyList.h"

#include <QDir>

namespace tunedeck {
namespace {

using namespace test;

TEST(OnboardingTest, ShowsUntilAnAssistantWorks) {
    EXPECT_FALSE(Onboarding::shouldShow(true, std::nullopt, {}));
    ServiceStatus status;
    status.mcp.emplace();
    EXPECT_TRUE(Onboarding::shouldShow(false, status, {}));
    status.mcp->publicUrl = u"https://example.org/mcp"_s;
    EXPECT_FALSE(Onboarding::shouldShow(false, status, {}));
    AssistantLink telegram{.id = u"t"_s, .kind = u"telegram"_s, .lastUsedAt = u"2026-11-21T09:00:00Z"_s};
    EXPECT_TRUE(Onboarding::shouldShow(false, std::nullopt, {telegram}));
    telegram.paired = true;
    EXPECT_FALSE(Onboarding::shouldShow(false, std::nullopt, {{.id = u"c"_s, .kind = u"claude"_s}, telegram}));
}

class RekordboxTest : public testing::Test {
protected:
    void add(const QString& bundle, const PropertyValue& version) {
        m_home.write(bundle + u"/Contents/Info.plist"_s, xmlPropertyList({{u"CFBundleShortVersionString"_s, version}}));
    }
    void add(const QString& bundle, const QString& version) { add(bundle, PropertyValue(version)); }

    /// Name and version, or "none".
    [[nodiscard]] std::string found() const {
        const auto install = RekordboxInstall::detect(m_home.path());
        return install ? (install->name + u", "_s + install->version.value_or(u"unknown"_s)).toStdString() : "none";
    }

    test::TemporaryHome m_home;
};

TEST_F(RekordboxTest, FindsTheHighestVersion) {
    EXPECT_EQ(found(), "none");
    add(u"rekordbox 6/rekordbox.app"_s, u"6.8.5"_s);
    EXPECT_EQ(found(), "Rekordbox 6, 6.8.5");
    add(u"rekordbox 7/rekordbox.app"_s, u"7.9.2"_s);
    EXPECT_EQ(found(), "Rekordbox 7, 7.9.2");
    add(u"Rekordbox.app"_s, u"7.10.0"_s);
    EXPECT_EQ(found(), "Rekordbox 7, 7.10.0");
    add(u"rekordbox 6.9/REKORDBOX beta.app"_s, u"10.0"_s);
    EXPECT_EQ(found(), "Rekordbox 10, 10.0");
}

TEST_F(RekordboxTest, SkipsOtherNamesAndDeeperFolders) {
    add(u"My rekordbox.app"_s, u"9"_s);
    add(u"Pioneer/rekordbox.app"_s, u"9"_s);
    add(u"rekordbox 7/Manager.app"_s, u"9"_s);
    add(u"rekordbox 7/old/rekordbox.app"_s, u"9"_s);
    add(u"rekordbox 7/rekordbox.App"_s, u"9"_s);
    m_home.write(u"rekordbox"_s, "a file");
    EXPECT_EQ(found(), "none");
}

TEST_F(RekordboxTest, PrefersAnyKnownVersion) {
    QDir(m_home.path()).mkpath(u"rekordbox.app"_s);
    EXPECT_EQ(found(), "Rekordbox, unknown");
    add(u"rekordbox 2.app"_s, PropertyValue(std::int64_t{7}));
    m_home.write(u"rekordbox 3.app/Contents/Info.plist"_s, "no property list");
    EXPECT_EQ(found(), "Rekordbox, unknown");
    add(u"rekordbox 4.app"_s, u".."_s);
    EXPECT_EQ(found(), "Rekordbox, ..");
    add(u"rekordbox 5.app"_s, u".5.8"_s);
    EXPECT_EQ(found(), "Rekordbox 5, .5.8");
}

TEST(NumericOrderTest, ComparesRunsOfDigitsAsNumbers) {
    const auto ordered = u" 6.8.5 7 7.0.1 7.10 7.10b 7.10b2 7.10b10 99999999999999999999 100000000000000000000 x"_s;
    const auto texts = ordered.split(u' ');
    for (qsizetype i = 1; i < texts.size(); ++i) {
        EXPECT_TRUE(isNumericallyLess(texts[i - 1], texts[i])) << texts[i].toStdString();
        EXPECT_FALSE(isNumericallyLess(texts[i], texts[i - 1])) << texts[i].toStdString();
    }
    EXPECT_FALSE(isNumericallyLess(u"7.01"_s, u"7.1"_s) || isNumericallyLess(u"7.1"_s, u"7.01"_s));
}

} // namespace
} // namespace tunedeck
