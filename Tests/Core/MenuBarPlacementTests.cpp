#include "Tests/Helpers/Test.h"
#include "TunedeckCore/MenuBarPlacement.h"

namespace tunedeck::test {
namespace {

/// An item 24 wide on a screen of 1512 with the notch from 640 to 872, or without one.
MenuBarPlacement at(double x, std::optional<double> sideOfNotch = 640) {
    return {.itemMinX = x,
            .itemWidth = 24,
            .screenWidth = 1512,
            .leftAreaWidth = sideOfNotch,
            .rightAreaWidth = sideOfNotch};
}

TEST(MenuBarPlacementTest, AnItemIsHiddenBehindTheNotchOffTheScreenOrByTheUser) {
    const auto behindNotch = u"hidden: Your menu bar is full, so macOS put the Tunedeck icon behind the notch."_s;
    const auto offScreen = u"hidden: Your menu bar is full, so macOS hid the Tunedeck icon."_s;
    auto oneSide = at(700);
    oneSide.rightAreaWidth.reset();
    auto occluded = at(1511.5);
    occluded.occluded = true;
    auto removed = at(700);
    removed.userHidden = true;
    const std::vector<std::pair<MenuBarPlacement, QString>> rows{
        {at(616), u"visible"_s},     {at(616.5), behindNotch},
        {at(871.5), behindNotch},    {at(872), u"visible"_s},
        {at(700, {}), u"visible"_s}, {oneSide, u"visible"_s},
        {at(-0.5), offScreen},       {at(1512), offScreen},
        {occluded, u"visible"_s},    {removed, u"hidden: The Tunedeck icon was removed from the menu bar."_s},
    };
    for (const auto& [placement, description] : rows) {
        EXPECT_EQ(placement.visibility().description(), description) << placement.itemMinX;
    }
    EXPECT_EQ(MenuBarIconVisibility().description(), u"unknown"_s);
}

TEST(MenuBarPlacementTest, IsMeasuredFromFramesOnAnyScreen) {
    const QRectF second(-1512, 200, 1512, 982);
    const auto beside =
        MenuBarPlacement::measured({-1200, 1149, 24, 33}, second, {-1512, 1149, 640, 33}, {-640, 1149, 639.5, 33});
    auto expected = at(312);
    expected.rightAreaWidth = 639.5;
    EXPECT_EQ(beside, expected);
    EXPECT_EQ(MenuBarPlacement::measured({312, 949, 24, 33}, {0, 0, 1512, 982}), at(312, {})) << "without a notch";
}

TEST(MenuBarPlacementTest, IsWrittenAsSortedJson) {
    const TemporaryHome home;
    const auto path = home.path(u".tunedeck/menu-bar.json"_s);
    const QDateTime now(QDate(2025, 3, 1), QTime(19, 4, 5, 700), Qt::OffsetFromUTC, 3600);
    auto placement = at(700.25);
    placement.rightAreaWidth = 639.5;
    ASSERT_TRUE(placement.write(path, now));
    EXPECT_EQ(home.read(u".tunedeck/menu-bar.json"_s).simplified(),
              R"({ "checked_at": "2025-03-01T18:04:05Z", "item_width": 24, "item_x": 700.25, "notch": [ 640, 872.5 ], )"
              R"("occluded": false, "screen_width": 1512, "status": "hidden: Your menu bar is full, so macOS put the )"
              R"(Tunedeck icon behind the notch.", "visible": false })");
    ASSERT_TRUE(at(5, {}).write(path, now));
    EXPECT_TRUE(home.read(u".tunedeck/menu-bar.json"_s).contains("\"notch\": [],"));
}

} // namespace
} // namespace tunedeck::test
