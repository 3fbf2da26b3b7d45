// Sizes and places of the windows.
#include "Tests/Helpers/Views/Screen.h"
#include "TunedeckMenu/Views/Windows/PopoverPlace.h"
#include "TunedeckMenu/Views/Windows/WindowSize.h"

#include <QProcess>
#include <QScreen>

#include <functional>

using namespace Qt::StringLiterals;

namespace tunedeck::test {

namespace {

class WindowFitTests : public Screen {};

} // namespace

TEST(PopoverPlaceTests, ThePopoverIsAtItsIconAndInsideTheScreen) {
    const QRect screen(0, 0, 1600, 1000);
    const QRect barAbove = screen.adjusted(0, 28, 0, 0);
    const QRect barBelow = screen.adjusted(0, 0, 0, -44);
    const QSize size(360, 600);
    EXPECT_EQ(popoverPlace({800, 0, 24, 28}, size, screen, barAbove), QRect(631, 34, 360, 600));
    EXPECT_EQ(popoverPlace({1570, 0, 24, 28}, size, screen, barAbove).right(), 1593);
    EXPECT_EQ(popoverPlace({2, 0, 24, 28}, size, screen, barAbove).left(), 6);
    EXPECT_EQ(popoverPlace({800, 960, 24, 28}, size, screen, barBelow).bottom(), 949);
    // Unknown icon position: the corner where trays usually are.
    EXPECT_EQ(popoverPlace({}, size, screen, barAbove), QRect(1234, 34, 360, 600));
    EXPECT_EQ(popoverPlace({}, size, screen, barBelow).bottomRight(), QPoint(1593, 949));
    EXPECT_EQ(popoverPlace({}, {360, 4000}, screen, screen).top(), 42) << "a bar that isn't reported";
    // A second screen that is too small, with icons partly outside.
    const QRect second(1600, -200, 800, 480);
    for (const QRect& anchor :
         {QRect(), QRect(2390, 270, 40, 40), QRect(1590, -210, 24, 24), QRect(1700, 20, 24, 24)}) {
        const QRect place = popoverPlace(anchor, {360, 4000}, second, second.adjusted(0, 20, -30, 0));
        EXPECT_TRUE(second.adjusted(0, 20, -30, 0).contains(place))
            << place.x() << "," << place.y() << " " << place.height();
        EXPECT_GT(place.height(), 100);
    }
}

TEST(WindowSizeTests, LeavesRoomForBarsThatTheDesktopDoesNotReport) {
    const QRect screen(100, 0, 1024, 600);
    const QRect available = screen.adjusted(0, 28, 0, 0);
    EXPECT_EQ(freeArea(screen, available), available);
    EXPECT_TRUE(screen.adjusted(0, 30, 0, -30).contains(freeArea(screen, screen)));
}

TEST(WindowSizeTests, WindowManagersKeepTheHeightAtEveryScale) {
    for (const double ratio : {1.0, 1.25, 1.5, 1.75, 2.0, 2.5, 3.0}) {
        for (int wanted = 280; wanted < 1400; ++wanted) {
            const auto isKept = [&](int height) {
                const int given = qRound(height * ratio) / qRound(ratio) * qRound(ratio); // in whole steps of pixels
                return qRound(given / ratio) == height;
            };
            int height = wanted;
            while (!isKept(height)) {
                ++height;
            }
            ASSERT_EQ(steadyHeight(wanted, ratio), height) << wanted << " at " << ratio;
            ASSERT_LE(height, wanted + 2) << wanted << " at " << ratio;
        }
    }
}

TEST_F(WindowFitTests, EveryWindowFollowsTheFreeAreaOfTheScreen) {
    const Confirmation longQuestion{.message = u"Disconnect Claude?"_s,
                                    .informativeText = u"It is a long story. "_s.repeated(90),
                                    .confirmButton = u"Disconnect"_s,
                                    .cancelButton = u"Cancel"_s};
    struct Case {
        std::function<QQuickWindow&()> open;
        QStringList inSight; ///< controls that never scroll
    };
    const Case cases[] = {
        {[&]() -> QQuickWindow& { return onboarding(contentOf(samples::assistantStep(Assistant::claude))); },
         {u"Back"_s, u"Done"_s}},
        {[&]() -> QQuickWindow& { return mainWindow(contentOf(samples::crowded())); }, {u"Quit Tunedeck"_s}},
        {[&]() -> QQuickWindow& {
             mainWindow(contentOf(samples::usual()));
             views->confirm(longQuestion, [](bool) {});
             return front();
         },
         {u"Disconnect"_s, u"Cancel"_s}},
    };
    for (const auto& [open, inSight] : cases) {
        auto& window = open();
        ASSERT_TRUE(runUntil([&] { return window.isActive() && !window.frameMargins().isNull(); }));
        const auto fits = [&] { return window.screen()->availableGeometry().contains(window.frameGeometry()); };
        EXPECT_TRUE(runUntil(fits));
        const auto height = window.height();
        QWindow bar; // takes half of the screen, which is the most that openbox grants
        bar.setGeometry(0, 0, 40, 40);
        bar.create();
        QProcess::execute(u"xprop"_s,
                          {u"-id"_s, QString::number(bar.winId()), u"-f"_s, u"_NET_WM_STRUT"_s, u"32c"_s, u"-set"_s,
                           u"_NET_WM_STRUT"_s, u"0, 0, %1, 0"_s.arg(window.screen()->geometry().height() - 420)});
        bar.show();
        EXPECT_TRUE(runUntil([&] { return window.height() < height && fits(); })) << window.frameGeometry().height();
        for (const auto& name : inSight) {
            EXPECT_TRUE(runUntil([&] { return window.geometry().contains(control(name).geometry); }))
                << name.toStdString();
        }
        bar.hide();
        EXPECT_TRUE(runUntil([&] { return window.height() >= height; })) << "it doesn't grow back";
        views.reset();
    }
}

TEST_F(WindowFitTests, TheWindowFitsItsContentUntilTheUserResizesIt) {
    QQuickWindow& window = mainWindow(contentOf(samples::checking()));
    const QRect available = window.screen()->availableGeometry();
    const int small = window.height();
    setContent(contentOf(samples::crowded()));
    EXPECT_TRUE(runUntil([&] { return window.height() > small; }));
    EXPECT_TRUE(runUntil([&] { return available.contains(window.geometry()); }))
        << window.y() << " + " << window.height() << " in " << available.height();
    setContent(contentOf(samples::checking()));
    EXPECT_TRUE(runUntil([&] { return window.height() == small; }));
    window.resize(window.width(), 400);
    wait(20);
    setContent(contentOf(samples::crowded()));
    wait(120);
    EXPECT_EQ(window.height(), 400);
}

} // namespace tunedeck::test
