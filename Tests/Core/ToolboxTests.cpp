#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Toolbox.h"

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {

TEST(ToolboxReport, FillsEveryFieldAndNeedsToolsEnvironmentsAndWhetherItInstalls) {
    const auto report = ToolboxReport::decode(R"({
        "tools": [{"name": "yt-dlp", "installed": "2025.01.15", "wanted": "2025.01.15", "ready": true},
                  {"name": "ffmpeg", "installed": null, "wanted": "7.1", "ready": false}],
        "venvs": [{"name": "spotdl", "installed": "spotdl==4.2.11", "wanted": "4.2.11", "ready": true}],
        "installing": true, "step": "ffmpeg", "progress": 0.25, "error": "e", "manifest": "m",
        "checked_at": "2025-03-01T18:04:05Z"})");
    ASSERT_TRUE(report) << report.error().description().toStdString();
    using Tool = ToolboxReport::Tool;
    const std::vector<Tool> tools{{u"yt-dlp"_s, u"2025.01.15"_s, u"2025.01.15"_s, true},
                                  {u"ffmpeg"_s, {}, u"7.1"_s, false}};
    const std::vector<Tool> venvs{{u"spotdl"_s, u"spotdl==4.2.11"_s, u"4.2.11"_s, true}};
    EXPECT_EQ(*report,
              (ToolboxReport{tools, venvs, true, u"ffmpeg"_s, 0.25, u"e"_s, u"m"_s, u"2025-03-01T18:04:05Z"_s}));
    EXPECT_TRUE(ToolboxReport::decode(R"({"tools":[],"venvs":[],"installing":false})"));
    EXPECT_FALSE(ToolboxReport::decode(R"({"tools":[],"installing":false})"));
    EXPECT_FALSE(ToolboxReport::decode(R"({"tools":[],"venvs":[],"installing":0})"));
    EXPECT_FALSE(ToolboxReport::decode(R"({"tools":[],"venvs":[],"installing":false,"progress":"1"})"));
}

TEST(ToolboxReport, ShowsTheVersionOfARequirementWithoutItsName) {
    const auto shown = [](const std::optional<QString>& installed) {
        return ToolboxReport::Tool{{}, installed, {}, true}.displayVersion();
    };
    EXPECT_EQ(shown({}), std::nullopt);
    EXPECT_EQ(shown(u"7.1"_s), u"7.1"_s);
    EXPECT_EQ(shown(u"spotdl==4.2"_s), u"4.2"_s);
    EXPECT_EQ(shown(u"a==b==c"_s), u"c"_s);
    EXPECT_EQ(shown(u"a=="_s), QString());
    EXPECT_EQ(shown(QString(u""_s)), QString());
    EXPECT_EQ(shown(u"a=1"_s), u"a=1"_s);
}

} // namespace
