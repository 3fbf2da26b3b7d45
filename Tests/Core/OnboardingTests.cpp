#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Onboarding.h"
#include "TunedeckCore/RekordboxInstall.h"
#include "TunedeckCore/Support/Files/PropertyList.h"

#include <QDir>

namespace tunedeck::test {
namespace {

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
    EXPECT_FALSE(Onboarding::shouldShow(false, std::nullopt, {{.id = u"c"_s}, telegram}));
}

class RekordboxTest : public testing::Test {
protected:
    void add(const QString& bundle, const PropertyValue::Storage& version) {
        m_home.write(bundle + u"/Contents/Info.plist"_s,
                     xmlPropertyList({{u"CFBundleShortVersionString"_s, PropertyValue(version)}}));
    }

    /// Name and version, or "none".
    [[nodiscard]] QString found() const {
        const auto install = RekordboxInstall::detect(m_home.path());
        return install ? install->name + u", "_s + install->version.value_or(u"unknown"_s) : u"none"_s;
    }

    TemporaryHome m_home;
};

TEST_F(RekordboxTest, FindsTheHighestVersion) {
    add(u"rekordbox 7/rekordbox.app"_s, u"7.9.2"_s);
    EXPECT_EQ(found(), u"Rekordbox 7, 7.9.2"_s);
    add(u"Rekordbox.app"_s, u"7.10.0"_s);
    add(u"rekordbox 6/rekordbox.app"_s, u"6.8.5"_s);
    EXPECT_EQ(found(), u"Rekordbox 7, 7.10.0"_s);
    add(u"rekordbox 6.9/REKORDBOX beta.app"_s, u"10.0"_s);
    EXPECT_EQ(found(), u"Rekordbox 10, 10.0"_s);
}

TEST_F(RekordboxTest, SkipsOtherNamesAndDeeperFolders) {
    for (const auto& other : {u"My rekordbox.app"_s, u"Pioneer/rekordbox.app"_s, u"rekordbox 7/Manager.app"_s,
                              u"rekordbox 7/old/rekordbox.app"_s, u"rekordbox 7/rekordbox.App"_s}) {
        add(other, u"9"_s);
    }
    m_home.write(u"rekordbox"_s, "a file");
    EXPECT_EQ(found(), u"none"_s);
}

TEST_F(RekordboxTest, PrefersAnyKnownVersion) {
    QDir(m_home.path()).mkpath(u"rekordbox.app"_s);
    add(u"rekordbox 2.app"_s, std::int64_t{7});
    m_home.write(u"rekordbox 3.app/Contents/Info.plist"_s, "no property list");
    EXPECT_EQ(found(), u"Rekordbox, unknown"_s);
    add(u"rekordbox 4.app"_s, u".."_s);
    EXPECT_EQ(found(), u"Rekordbox, .."_s);
    add(u"rekordbox 5.app"_s, u".5.8"_s);
    EXPECT_EQ(found(), u"Rekordbox 5, .5.8"_s);
}

} // namespace
} // namespace tunedeck::test
