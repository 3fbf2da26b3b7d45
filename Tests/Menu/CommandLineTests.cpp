#include "Tests/Helpers/Test.h"
#include "TunedeckMenu/App/CommandLine.h"

namespace tunedeck {

namespace {

using Command = CommandLine::Command;
using namespace Qt::StringLiterals;

} // namespace

TEST(CommandLineTest, AcceptsOneCommandWithItsOptions) {
    using Parsed = std::expected<CommandLine, QString>;
    const auto noProcess = std::unexpected(u"--after needs the id of a process"_s);
    const auto misplacedJson = std::unexpected(u"--json goes with --status or --checkup"_s);
    const auto misplacedShow = std::unexpected(u"--show and --after go with no other command"_s);
    const std::pair<const char*, Parsed> cases[]{
        {"", CommandLine{}},
        {"--show --after 7", CommandLine{.show = true, .afterProcess = 7}},
        {"-h", CommandLine{.command = Command::Help}},
        {"--help", CommandLine{.command = Command::Help}},
        {"--version", CommandLine{.command = Command::Version}},
        {"--status", CommandLine{.command = Command::Status}},
        {"--json --status", CommandLine{.command = Command::Status, .json = true}},
        {"--checkup", CommandLine{.command = Command::Checkup}},
        {"--checkup --online --json", CommandLine{.command = Command::Checkup, .json = true, .online = true}},
        {"--diagnostics", CommandLine{.command = Command::Diagnostics}},
        {"--quit", CommandLine{.command = Command::Quit}},
        {"--remove", CommandLine{.command = Command::Remove}},
        {"--shout", std::unexpected(u"there is no option “--shout”"_s)},
        {"-x", std::unexpected(u"there is no option “-x”"_s)},
        {"show", std::unexpected(u"there is no option “show”"_s)},
        {"--after", noProcess},
        {"--after 0", noProcess},
        {"--status --quit", std::unexpected(u"“--quit” can't be combined with another command"_s)},
        {"--status --status", std::unexpected(u"“--status” can't be combined with another command"_s)},
        {"--json", misplacedJson},
        {"--json --quit", misplacedJson},
        {"--status --online", std::unexpected(u"--online goes with --checkup"_s)},
        {"--show --quit", misplacedShow},
        {"--status --after 7", misplacedShow},
    };
    for (const auto& [arguments, expected] : cases) {
        EXPECT_EQ(CommandLine::parse(QString::fromLatin1(arguments).split(u' ', Qt::SkipEmptyParts)), expected)
            << arguments;
    }
    EXPECT_FALSE(CommandLine::parse({u"--show=yes"_s}));
}

} // namespace tunedeck
