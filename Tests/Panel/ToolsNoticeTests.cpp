#include "Tests/Helpers/Test.h"
#include "Tests/Panel/Fixtures.h"

namespace tunedeck::test {

namespace {

ToolboxReport toolbox(bool isReady, bool installing) {
    return {.tools = {{u"yt-dlp"_s, u"1"_s, u"1"_s, true}, {u"spotdl"_s, {}, u"4"_s, isReady}},
            .venvs = {{u"spotdl-env"_s, {}, u"4"_s, isReady}},
            .installing = installing};
}

} // namespace

TEST(ToolsNotice, NamesEachToolThatIsNotReadyOnce) {
    EXPECT_FALSE(toolsNotice({}).shown);
    EXPECT_FALSE(toolsNotice(toolbox(true, false)).shown);
    ToolboxReport broken = toolbox(false, false);
    broken.error = u"No space left"_s;
    EXPECT_EQ(textOf(toolsNotice(broken)), "shown: true | badge: Needs repair | text: Missing: spotdl, spotdl-env | "
                                           "detail: No space left | button: Repair Tools");
    broken.venvs[0].name = u"spotdl"_s;
    EXPECT_EQ(toolsNotice(broken).text, u"Missing: spotdl");
}

TEST(ToolsNotice, ShowsTheProgressOfAnInstallationAlthoughEverythingIsReady) {
    ToolboxReport report = toolbox(true, true);
    report.step = u"Unpacking"_s;
    report.progress = 0.404;
    EXPECT_EQ(textOf(toolsNotice(report)),
              "shown: true | badge: Installing | badgeTone: Accent | detail: Unpacking · 40 % | "
              "installingText: Installing… | progress: 0.404");
    report.progress = 7;
    EXPECT_EQ(toolsNotice(report).progress, 1);
    report.progress.reset();
    EXPECT_LT(toolsNotice(report).progress, 0);
}

} // namespace tunedeck::test
