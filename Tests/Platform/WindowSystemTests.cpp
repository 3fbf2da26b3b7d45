#include "Tests/Helpers/Test.h"
#include "TunedeckMenu/Platform/Linux/System/LinuxWindowSystem.h"

namespace tunedeck::test {

TEST(WindowSystemTest, PrefersX11UnlessTheUserOrTheSessionDecides) {
    using Environment = decltype(WindowSystem::environment);
    const Environment native{{"QT_QPA_PLATFORM", "wayland"}, {"QT_IM_MODULE", "compose"}};
    const struct {
        const char* session;
        DisplayVariables variables;
        bool reachesX11;
        Environment expected;
    } cases[] = {
        {"X11", {.x11 = ":0"}, true, {}},
        {"Wayland with XWayland", {.wayland = "wayland-0", .x11 = ":0"}, true, {{"QT_QPA_PLATFORM", "xcb"}}},
        {"Wayland with an XWayland that is gone", {.wayland = "wayland-0", .x11 = ":0"}, false, native},
        {"Wayland alone", {.wayland = "wayland-0"}, true, native},
        {"Wayland and an input method",
         {.wayland = "wayland-0", .inputMethod = "ibus"},
         true,
         {{"QT_QPA_PLATFORM", "wayland"}}},
        {"requested X11", {.platform = "xcb", .wayland = "wayland-0"}, true, {}},
        {"requested Wayland",
         {.platform = "wayland-egl", .wayland = "wayland-0", .x11 = ":0"},
         true,
         {{"QT_IM_MODULE", "compose"}}},
    };
    for (const auto& [session, variables, reachesX11, expected] : cases) {
        const auto chosen = windowSystemFor(variables, [reaches = reachesX11] { return reaches; });
        EXPECT_EQ(chosen.environment, expected) << session;
        EXPECT_FALSE(chosen.reason.isEmpty()) << session;
    }
}

} // namespace tunedeck::test
