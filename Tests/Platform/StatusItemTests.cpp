#include "Tests/Helpers/Desktop/BareDesktop.h"
#include "Tests/Helpers/Test.h"
#include "TunedeckMenu/Platform/Linux/Tray/TrayGlyph.h"

#include <QImage>
#include <QRegularExpression>

namespace tunedeck {
namespace {

using namespace test;

const QString statusItem = u"--status-item"_s;

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
    static const QRegularExpression form(u"^there (\\d+) (\\d+) of 1000$"_s);
    std::string line = item.nextLine();
    for (int tries = 0; tries < 500 && !line.empty(); ++tries) {
        const auto match = form.match(QString::fromStdString(line));
        const int x = match.captured(1).toInt();
        const int width = match.captured(2).toInt();
        if (match.hasMatch() && width > 8 && x >= 900 && x + width <= 1000) {
            return testing::AssertionSuccess();
        }
        item.write(u"where"_s);
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
    const auto item = desktop.startSelf(statusItem);
    EXPECT_EQ(item->nextLine(), "gone unplaced");
    auto tray = desktop.startTray();
    EXPECT_TRUE(docksAtTheRight(*item));
    item->write(u"click"_s);
    EXPECT_TRUE(says(*item, "activated"));
    item->write(u"menu"_s);
    EXPECT_TRUE(says(*item, "open"));
    EXPECT_TRUE(says(*item, "quit"));
    tray->kill();
    EXPECT_TRUE(says(*item, "gone unplaced"));
    tray = desktop.startTray();
    EXPECT_TRUE(docksAtTheRight(*item));
}

TEST_F(StatusItemTest, RegistersWithAHostThatComesLateRestartsAndOutlivesItsBus) {
    BareDesktop desktop;
    auto bus = desktop.startBus();
    const auto item = desktop.startSelf(statusItem);
    EXPECT_EQ(item->nextLine(), "gone unplaced");

    const auto meetsAHost = [&] {
        auto host = desktop.startSelf(u"--tray-host"_s);
        EXPECT_EQ(host->nextLine(), "ready");
        EXPECT_EQ(host->nextLine(), "item with menu at /MenuBar");
        EXPECT_EQ(item->nextLine(), "there unplaced"); // a host doesn't tell where it shows it
        host->write(u"activate"_s);
        EXPECT_EQ(item->nextLine(), "activated");
        return host;
    };
    auto host = meetsAHost();
    host->write(u"leave"_s);
    EXPECT_EQ(item->nextLine(), "gone unplaced");
    host->write(u"come"_s);
    EXPECT_EQ(item->nextLine(), "there unplaced");
    host->kill();
    EXPECT_EQ(item->nextLine(), "gone unplaced");
    host = meetsAHost();
    bus->kill();
    EXPECT_EQ(item->nextLine(), "gone unplaced");
    bus = desktop.startBus();
    host = meetsAHost();
}

TEST(TrayGlyphTest, EverySymbolIsDrawnInEachSizeAndStandsOutFromEitherPanel) {
    for (const auto& [symbol, tone] :
         {std::pair(u"music.note.list"_s, GlyphTone::Dark), {u"exclamationmark.triangle"_s, GlyphTone::Light}}) {
        const auto icon = trayGlyph(symbol, tone);
        EXPECT_GE(icon.availableSizes().size(), 4);
        const auto image = icon.pixmap(32, 32).toImage();
        int body = 0;
        for (int pixel = 0; pixel < 32 * 32; ++pixel) {
            const auto colour = image.pixelColor(pixel % 32, pixel / 32);
            body += colour.alpha() > 200 && (tone == GlyphTone::Dark) == (colour.lightness() < 80);
        }
        EXPECT_GT(body, 60) << symbol.toStdString();
        EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
    }
    EXPECT_TRUE(trayGlyph(u"no.such.symbol"_s, GlyphTone::Dark).isNull());
}

} // namespace
} // namespace tunedeck
