#include "Tests/Helpers/Contrast.h"
#include "Tests/Helpers/Desktop/BareDesktop.h"
#include "Tests/Helpers/Test.h"
#include "Tests/Peers/TrayHost.h"
#include "TunedeckMenu/Platform/Linux/Tray/TrayGlyph.h"

#include <QElapsedTimer>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>

namespace tunedeck::test {
namespace {

const QString statusItem = u"--status-item"_s;

class StatusItemTest : public testing::Test {
protected:
    void SetUp() override {
        if (!BareDesktop::isPossible()) {
            GTEST_SKIP() << "Xvfb, trayer or dbus-daemon is missing; ./tools/test installs them";
        }
    }
};

/// Waits until the icon is at the right end of the screen, whose width is 1000: a tray moves while it starts.
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

/// True when this is the next line apart from places.
testing::AssertionResult prints(Program& item, const std::string& expected) {
    std::string line = item.nextLine();
    while (line != expected && line.starts_with("there ")) {
        line = item.nextLine();
    }
    return line == expected ? testing::AssertionSuccess() : testing::AssertionFailure() << line;
}

TEST_F(StatusItemTest, DocksInAnX11TrayThatStartsLateAndRestarts) {
    BareDesktop desktop;
    const auto bus = desktop.startBus();
    const auto item = desktop.startSelf(statusItem);
    EXPECT_EQ(item->nextLine(), "gone unplaced");
    auto tray = desktop.startTray();
    EXPECT_TRUE(docksAtTheRight(*item));
    item->write(u"click"_s);
    EXPECT_TRUE(prints(*item, "activated"));
    item->write(u"menu"_s);
    EXPECT_TRUE(prints(*item, "open"));
    EXPECT_TRUE(prints(*item, "quit"));
    tray->kill();
    EXPECT_TRUE(prints(*item, "gone unplaced"));
    tray = desktop.startTray();
    EXPECT_TRUE(docksAtTheRight(*item));
}

TEST_F(StatusItemTest, RegistersWithAHostThatStartsLateAndAfterRestartsOfHostAndBus) {
    BareDesktop desktop;
    auto bus = desktop.startBus();
    const auto item = desktop.startSelf(statusItem);
    EXPECT_EQ(item->nextLine(), "gone unplaced");

    const auto showsTheIcon = [](TrayHost& host) {
        EXPECT_TRUE(runUntil([&] { return !host.reads.isEmpty(); }));
        EXPECT_TRUE(host.reads.value(0).startsWith(u"Tunedeck: fine dark ") && !host.reads.value(0).endsWith(u" 0"));
    };
    const auto registersWithAHost = [&] {
        auto host = std::make_unique<TrayHost>(desktop.busAddress());
        showsTheIcon(*host);
        EXPECT_EQ(item->nextLine(), "there unplaced"); // hosts don't report where the icon is
        host->activateItem();
        EXPECT_EQ(item->nextLine(), "activated");
        host->selectMenuEntries();
        EXPECT_EQ(item->nextLine(), "open");
        EXPECT_EQ(item->nextLine(), "quit");
        return host;
    };
    auto host = registersWithAHost();
    host->setHostRegistered(false);
    EXPECT_EQ(item->nextLine(), "gone unplaced");
    host->setHostRegistered(true);
    EXPECT_EQ(item->nextLine(), "there unplaced");
    host.reset();
    EXPECT_EQ(item->nextLine(), "gone unplaced");
    host = registersWithAHost();
    auto next = std::make_unique<TrayHost>(desktop.busAddress());
    host = std::move(next); // replaced without a gap
    showsTheIcon(*host);
    bus->kill();
    EXPECT_EQ(item->nextLine(), "gone unplaced");
    bus = desktop.startBus();
    host = registersWithAHost();

    const auto lookAfter = [&](const QString& command) {
        item->write(command);
        EXPECT_EQ(item->nextLine(), "there unplaced");
        host->reads.clear();
        host->readItem();
        EXPECT_TRUE(runUntil([&] { return !host->reads.isEmpty(); }));
        return host->reads.value(0).toStdString();
    };
    const auto light = lookAfter(u"dark"_s);
    EXPECT_TRUE(light.starts_with("Tunedeck: fine light ")) << light;
    EXPECT_EQ(lookAfter(u"gnome"_s), light) << "its panel is always dark";
    const auto warning = lookAfter(u"warn"_s);
    EXPECT_TRUE(warning.starts_with("Attention light ")) << warning;
    EXPECT_NE(warning.substr(warning.rfind(' ')), light.substr(light.rfind(' '))) << "another symbol";
}

TEST_F(StatusItemTest, WaitsSixSecondsForTheHostOfAWatcherBeforeItUsesAnX11Tray) {
    BareDesktop desktop;
    const auto bus = desktop.startBus();
    const auto tray = desktop.startTray();
    TrayHost host(desktop.busAddress());
    host.setHostRegistered(false);
    {
        const auto item = desktop.startSelf(statusItem);
        EXPECT_EQ(item->nextLine(), "gone unplaced");
        runUntil([] { return false; }, 500ms);
        host.setHostRegistered(true);
        EXPECT_EQ(item->nextLine(), "there unplaced");
    }
    host.setHostRegistered(false);
    const auto item = desktop.startSelf(statusItem);
    EXPECT_EQ(item->nextLine(), "gone unplaced");
    QElapsedTimer watch;
    watch.start();
    runUntil([] { return false; }, 4s);
    host.setHostRegistered(false); // asked again, which doesn't prolong the wait
    EXPECT_TRUE(docksAtTheRight(*item));
    EXPECT_GT(watch.elapsed(), 5500);
    EXPECT_LT(watch.elapsed(), 9500);
}

/// WCAG's contrast between the strokes of a glyph, which the mask defines, and the pixels next to them.
double strokeContrast(const QImage& shown, const QImage& mask) {
    const auto isStroke = [&](int x, int y) { return mask.valid(x, y) && qAlpha(mask.pixel(x, y)) >= 128; };
    double sums[2] = {};
    int counts[2] = {};
    for (int y = 0; y < mask.height(); ++y) {
        for (int x = 0; x < mask.width(); ++x) {
            const bool isNext = qAlpha(mask.pixel(x, y)) < 32 &&
                                (isStroke(x - 1, y) || isStroke(x + 1, y) || isStroke(x, y - 1) || isStroke(x, y + 1));
            if (isNext || isStroke(x, y)) {
                sums[isNext] += luminance(shown.pixelColor(x, y));
                ++counts[isNext];
            }
        }
    }
    return contrast(sums[0] / counts[0], sums[1] / counts[1]);
}

TEST(TrayGlyphTest, IsLegibleOnAnyBackgroundInBothTones) {
    for (const auto& symbol : {u"music.note.list"_s, u"exclamationmark.triangle"_s}) {
        for (const auto tone : {GlyphTone::Dark, GlyphTone::Light}) {
            const auto icon = trayGlyph(symbol, tone);
            EXPECT_GE(icon.availableSizes().size(), 4);
            EXPECT_EQ(icon.pixmap(22, 22).toImage().pixelColor(0, 0).alpha(), 0) << "the plate's corners are round";
            for (const int size : {16, 22, 24}) {
                const QImage mask(u":/tunedeck/tray/%1-%2.png"_s.arg(symbol).arg(size));
                for (const int grey : {0, 128, 255}) {
                    QImage shown(size, size, QImage::Format_RGB32);
                    shown.fill(QColor(grey, grey, grey));
                    QPainter(&shown).drawPixmap(0, 0, icon.pixmap(size, size));
                    EXPECT_GE(strokeContrast(shown, mask), 3)
                        << symbol.toStdString() << ' ' << size << " on grey " << grey;
                }
            }
        }
    }
    EXPECT_TRUE(trayGlyph(u"no.such.symbol"_s, GlyphTone::Dark).isNull());
}

} // namespace
} // namespace tunedeck::test
