#include "Tests/Platform/DesktopParts.h"
#include "TunedeckMenu/Platform/Linux/TrayGlyph.h"

#include <QImage>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace tunedeck {
namespace {

using test::BareDesktop;
using test::Program;

const QString statusItem = QStringLiteral("--status-item");
const QString trayHost = QStringLiteral("--tray-host");

class StatusItemTest : public testing::Test {
protected:
    void SetUp() override {
        if (!BareDesktop::isPossible()) {
            GTEST_SKIP() << "Xvfb, trayer or dbus-daemon is missing; ./tools/test installs them";
        }
    }
};

// Asks until the icon is at the right end of the screen of 1000: a tray that has just started still moves about.
testing::AssertionResult docksAtTheRight(Program& item) {
    static const QRegularExpression form(QStringLiteral("^there (\\d+) (\\d+) of 1000$"));
    std::string line = item.nextLine();
    for (int tries = 0; tries < 500 && !line.empty(); ++tries) {
        const auto match = form.match(QString::fromStdString(line));
        const int x = match.captured(1).toInt();
        const int width = match.captured(2).toInt();
        if (match.hasMatch() && width > 8 && x >= 900 && x + width <= 1000) {
            return testing::AssertionSuccess();
        }
        item.say(QStringLiteral("where"));
        line = item.nextLine();
    }
    return testing::AssertionFailure() << line;
}

// Says this next, whatever it has told of its place before.
testing::AssertionResult says(Program& item, const std::string& expected) {
    std::string line = item.nextLine();
    while (line != expected && line.starts_with("there ")) {
        line = item.nextLine();
    }
    return line == expected ? testing::AssertionSuccess() : testing::AssertionFailure() << line;
}

TEST_F(StatusItemTest, DocksInAnX11TrayThatComesLateGoesAndComesBack) {
    BareDesktop desktop;
    const auto bus = desktop.startBus();
    const auto item = desktop.startSelf({statusItem});
    EXPECT_EQ(item->nextLine(), "gone unplaced");
    auto tray = desktop.startTray();
    EXPECT_TRUE(docksAtTheRight(*item));
    item->say(QStringLiteral("click"));
    EXPECT_TRUE(says(*item, "activated"));
    item->say(QStringLiteral("menu"));
    EXPECT_TRUE(says(*item, "open"));
    EXPECT_TRUE(says(*item, "quit"));
    tray->kill();
    EXPECT_TRUE(says(*item, "gone unplaced"));
    tray = desktop.startTray();
    EXPECT_TRUE(docksAtTheRight(*item));
}

TEST_F(StatusItemTest, DocksWithoutASessionBus) {
    BareDesktop desktop;
    const auto tray = desktop.startTray();
    const auto item = desktop.startSelf({statusItem});
    EXPECT_EQ(item->nextLine(), "gone unplaced");
    EXPECT_TRUE(docksAtTheRight(*item));
}

TEST_F(StatusItemTest, RegistersWithAHostThatComesLateRestartsAndOutlivesItsBus) {
    BareDesktop desktop;
    auto bus = desktop.startBus();
    const auto item = desktop.startSelf({statusItem});
    EXPECT_EQ(item->nextLine(), "gone unplaced");

    auto host = desktop.startSelf({trayHost});
    EXPECT_EQ(host->nextLine(), "ready");
    EXPECT_EQ(host->nextLine(), "item with menu at /MenuBar");
    EXPECT_EQ(item->nextLine(), "there unplaced"); // a host doesn't tell where it shows it
    host->say(QStringLiteral("activate"));
    EXPECT_EQ(item->nextLine(), "activated");
    host->say(QStringLiteral("leave"));
    EXPECT_EQ(item->nextLine(), "gone unplaced");
    host->say(QStringLiteral("come"));
    EXPECT_EQ(item->nextLine(), "there unplaced");

    host->kill();
    EXPECT_EQ(item->nextLine(), "gone unplaced");
    host = desktop.startSelf({trayHost});
    EXPECT_EQ(host->nextLine(), "ready");
    EXPECT_EQ(host->nextLine(), "item with menu at /MenuBar");
    EXPECT_EQ(item->nextLine(), "there unplaced");

    bus->kill();
    EXPECT_EQ(item->nextLine(), "gone unplaced");
    bus = desktop.startBus();
    host = desktop.startSelf({trayHost});
    EXPECT_EQ(host->nextLine(), "ready");
    EXPECT_EQ(host->nextLine(), "item with menu at /MenuBar");
    EXPECT_EQ(item->nextLine(), "there unplaced");
    host->say(QStringLiteral("activate"));
    EXPECT_EQ(item->nextLine(), "activated");
}

TEST(TrayGlyphTest, EverySymbolIsDrawnInEachSizeAndStandsOutFromEitherPanel) {
    for (const auto& symbol : {QStringLiteral("music.note.list"), QStringLiteral("exclamationmark.triangle")}) {
        for (const auto tone : {GlyphTone::dark, GlyphTone::light}) {
            const auto icon = trayGlyph(symbol, tone);
            EXPECT_GE(icon.availableSizes().size(), 4);
            const auto image = icon.pixmap(32, 32).toImage();
            int body = 0;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    const auto colour = image.pixelColor(x, y);
                    body += colour.alpha() > 200 && (tone == GlyphTone::dark) == (colour.lightness() < 80);
                }
            }
            EXPECT_GT(body, 60) << symbol.toStdString();
            EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
        }
    }
    EXPECT_TRUE(trayGlyph(QStringLiteral("no.such.symbol"), GlyphTone::dark).isNull());
}

} // namespace
} // namespace tunedeck
