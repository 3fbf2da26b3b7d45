#include "Tests/Helpers/Test.h"
#include "TunedeckMenu/App/CommandLine.h"

namespace tunedeck {

namespace {

using Command = CommandLine::Command;
using namespace Qt::StringLiterals;

} // namespace

TEST(CommandLineTest, AcceptsOneCommandWithItsOptions) {
    const std::pair<const char*, CommandLine> accepted[]{
        {"", {}},
        {"--show --after 7", {.show = true, .afterProcess = 7}},
        {"-h", {.command = Command::Help}},
        {"--help", {.command = Command::Help}},
        {"--version", {.command = Command::Version}},
        {"--status", {.command = Command::Status}},
        {"--json --status", {.command = Command::Status, .json = true}},
        {"--diagnostics", {.command = Command::Diagnostics}},
        {"--quit", {.command = Command::Quit}},
        {"--remove", {.command = Command::Remove}},
    };
    for (const auto& [arguments, expected] : accepted) {
        EXPECT_EQ(CommandLine::parse(QString::fromLatin1(arguments).split(u' ', Qt::SkipEmptyParts)), expected)
            << arguments;
    }
}

TEST(CommandLineTest, RejectsEverythingElseWithASentence) {
    const std::pair<const char*, QString> rejected[]{
        {"--shout", u"there is no option “--shout”"_s},
        {"-x", u"there is no option “-x”"_s},
        {"show", u"there is no option “show”"_s},
        {"--after", u"--after needs the id of a process"_s},
        {"--after --show", u"--after needs the id of a process"_s},
        {"--after 0", u"--after needs the id of a process"_s},
        {"--status --quit", u"“--quit” can't be combined with another command"_s},
        {"--status --status", u"“--status” can't be combined with another command"_s},
        {"--json", u"--json goes with --status"_s},
        {"--json --quit", u"--json goes with --status"_s},
        {"--show --quit", u"--show and --after go with no other command"_s},
        {"--status --after 7", u"--show and --after go with no other command"_s},
    };
    for (const auto& [arguments, expected] : rejected) {
        const auto parsed = CommandLine::parse(QString::fromLatin1(arguments).split(u' ', Qt::SkipEmptyParts));
        ASSERT_FALSE(parsed) << arguments;
        EXPECT_EQ(parsed.error(), expected) << arguments;
    }
    EXPECT_FALSE(CommandLine::parse({u"--show=yes"_s}));
}

} // namespace tunedeck
