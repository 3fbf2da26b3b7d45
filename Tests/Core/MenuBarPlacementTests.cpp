#include "Tests/Helpers/Test.h"
#include "TunedeckCore/MenuBarPlacement.h"

namespace tunedeck {
namespace {

using namespace test;

const auto removed = MenuBarIconVisibility::hidden(u"The Tunedeck icon was removed from the menu bar."_s);
const auto behindNotch =
    MenuBarIconVisibility::hidden(u"Your menu bar is full, so macOS put the Tunedeck icon behind the notch."_s);
const auto offScreen = MenuBarIconVisibility::hidden(u"Your menu bar is full, so macOS hid the Tunedeck icon."_s);

/// An item 24 wide on a screen of 1512 with the notch from 640 to 872, or without one.
MenuBarPlacement at(double x, bool notch = true) {
    MenuBarPlacement placement{.itemMinX = x, .itemWidth = 24, .screenWidth = 1512};
    if (notch) {
        placement.leftAreaWidth = 640;
        placement.rightAreaWidth = 640;
    }
    return placement;
}

TEST(MenuBarPlacementTest, AnItemThatOverlapsTheNotchIsHidden) {
    EXPECT_EQ(at(616).visibility(), MenuBarIconVisibility::visible());
    EXPECT_EQ(at(616.5).visibility(), behindNotch);
    EXPECT_EQ(at(871.5).visibility(), behindNotch);
    EXPECT_EQ(at(872).visibility(), MenuBarIconVisibility::visible());
    EXPECT_EQ(at(700, false).visibility(), MenuBarIconVisibility::visible());
    auto half = at(700);
    half.rightAreaWidth.reset();
    EXPECT_EQ(half.visibility(), MenuBarIconVisibility::visible());
}

TEST(MenuBarPlacementTest, AnItemOffTheScreenOrRemovedIsHidden) {
    EXPECT_EQ(at(-0.5).visibility(), offScreen);
    EXPECT_EQ(at(1512).visibility(), offScreen);
    auto placement = at(1511.5);
    placement.occluded = true;
    EXPECT_EQ(placement.visibility(), MenuBarIconVisibility::visible());
    placement = at(700);
    placement.userHidden = true;
    EXPECT_EQ(placement.visibility(), removed);
    EXPECT_EQ(MenuBarIconVisibility().description(), u"unknown"_s);
}

TEST(MenuBarPlacementTest, IsWrittenAsSortedJson) {
    const test::TemporaryHome home;
    const auto path = home.path(u"menu-bar.json"_s);
    const QDateTime now(QDate(2025, 3, 1), QTime(19, 4, 5, 700), Qt::OffsetFromUTC, 3600);
    auto placement = at(700.25);
    placement.rightAreaWidth = 639.5;
    ASSERT_TRUE(placement.write(path, now));
    EXPECT_EQ(home.read(u"menu-bar.json"_s).simplified(),
              R"({ "checked_at": "2025-03-01T18:04:05Z", "item_width": 24, "item_x": 700.25, "notch": [ 640, 872.5 ], )"
              R"("occluded": false, "screen_width": 1512, "status": "hidden: Your menu bar is full, so macOS put the )"
              R"(Tunedeck icon behind the notch.", "visible": false })");
    ASSERT_TRUE(at(5, false).write(path, now));
    EXPECT_TRUE(home.read(u"menu-bar.json"_s).contains("\"notch\": [],"));
    EXPECT_FALSE(placement.write(home.path(u"missing/menu-bar.json"_s), now));
}

} // namespace
} // namespace tunedeck
