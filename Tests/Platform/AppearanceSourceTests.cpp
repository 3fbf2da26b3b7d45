#include "Tests/Helpers/Test.h"
#include "Tests/Platform/SettingsPortal.h"
#include "TunedeckMenu/Platform/Linux/Desktop/LinuxAppearanceSource.h"
#include "TunedeckMenu/Platform/Linux/Desktop/SessionBus.h"

#include <QApplication>
#include <QPalette>

namespace tunedeck::test {

TEST(AppearanceSourceTest, FollowsThePortalOrElseThePalette) {
    SessionBus bus;
    if (!bus.connection().isConnected()) {
        GTEST_SKIP() << "no session bus; use tools/lib/desktop";
    }
    const auto neutral = u"org.freedesktop.appearance"_s;
    const auto scheme = u"color-scheme"_s;
    const auto gnome = u"org.gnome.desktop.interface"_s;
    const auto animations = u"enable-animations"_s;
    const auto kde = u"org.kde.kdeglobals.KDE"_s;
    const auto factor = u"AnimationDurationFactor"_s;
    LinuxAppearanceSource source(bus);
    int changes = 0;
    QObject::connect(&source, &AppearanceSource::changed, &source, [&changes] { ++changes; });
    runUntil([] { return false; }, 50ms);
    EXPECT_EQ(source.current(), Appearance{}); // without a portal the palette decides, which is light
    EXPECT_EQ(changes, 0);

    SettingsPortal portal({{neutral, {{scheme, 1U}}}, {gnome, {{animations, false}}}, {kde, {{factor, u"0"_s}}}});
    EXPECT_TRUE(runUntil([&] { return source.current().dark; })); // it started late
    EXPECT_TRUE(source.current().reduceMotion);
    portal.change(neutral, u"accent-color"_s, 3U); // irrelevant
    portal.change(gnome, animations, true);
    runUntil([] { return false; }, 20ms);
    EXPECT_TRUE(source.current().reduceMotion) << "the other desktop's setting";
    portal.change(kde, factor, u"1"_s);
    EXPECT_TRUE(runUntil([&] { return !source.current().reduceMotion; }));
    portal.change(neutral, u"reduced-motion"_s, 1U);
    EXPECT_TRUE(runUntil([&] { return source.current().reduceMotion; }));
    EXPECT_EQ(changes, 3);
    portal.change(neutral, u"reduced-motion"_s, 0U);
    EXPECT_TRUE(runUntil([&] { return !source.current().reduceMotion; }));
    for (const auto& [value, isReduced] : {std::pair(u"0"_s, true), {u"default"_s, false}}) {
        portal.change(kde, factor, value);
        EXPECT_TRUE(runUntil([&] { return source.current().reduceMotion == isReduced; })) << value.toStdString();
    }

    portal.change(neutral, u"contrast"_s, 1U);
    EXPECT_TRUE(runUntil([&] { return source.current().moreContrast; }));
    portal.change(neutral, scheme, 2U);
    EXPECT_TRUE(runUntil([&] { return !source.current().dark; }));

    auto dark = QApplication::palette();
    const auto light = dark;
    dark.setColor(QPalette::Window, Qt::black);
    QApplication::setPalette(dark);
    runUntil([] { return false; }, 20ms);
    EXPECT_FALSE(source.current().dark); // the portal decides
    portal.change(neutral, scheme, 0U);  // no preference: the palette decides
    EXPECT_TRUE(runUntil([&] { return source.current().dark; }));
    changes = 0;
    QApplication::setPalette(light);
    EXPECT_TRUE(runUntil([&] { return changes == 1; }));
    EXPECT_FALSE(source.current().dark);
}

} // namespace tunedeck::test
