#include "DemoService/Files.h"
#include "DemoService/RuntimeFile.h"
#include "Tests/Demo/TempHome.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace tunedeck::demo {

namespace {

void choose(const HomePaths& paths, const std::string& folder) {
    writeFileAtomically(paths.settingsFile(), R"({"onboarded":true,"download_dir":")" + folder + "\"}");
}

std::ptrdiff_t entries(const std::filesystem::path& folder) {
    return std::distance(std::filesystem::directory_iterator(folder), {});
}

} // namespace

TEST(DemoDownloads, TheFolderComesFromTheSettingsElseFromTheScenarioElseItIsTheDefault) {
    const TempHome home;
    DownloadFolder folder = findDownloadFolder(home.paths, {});
    EXPECT_EQ(folder.dir, home.paths.home / "Music" / "Tunedeck");
    EXPECT_EQ(folder.source, "default");
    EXPECT_TRUE(folder.writable);
    EXPECT_EQ(entries(folder.dir), 0) << "trying leaves nothing behind";

    const DownloadFolder staged{.dir = "/elsewhere", .source = "default", .writable = false, .error = "No."};
    EXPECT_EQ(findDownloadFolder(home.paths, staged).error, "No.");

    const std::string chosen = home.paths.home / "Gigs";
    std::filesystem::create_directory(chosen);
    choose(home.paths, chosen);
    folder = findDownloadFolder(home.paths, staged);
    EXPECT_EQ(folder.dir, chosen);
    EXPECT_EQ(folder.source, "settings");
    EXPECT_TRUE(folder.writable);

    writeFileAtomically(home.paths.settingsFile(), R"({"download_dir":5})");
    EXPECT_EQ(findDownloadFolder(home.paths, {}).source, "default");
}

TEST(DemoDownloads, AFolderThatCannotBeWrittenIsToldWithItsReason) {
    const TempHome home;
    const std::string missing = home.paths.home / "Missing";
    choose(home.paths, missing);
    DownloadFolder folder = findDownloadFolder(home.paths, {});
    EXPECT_FALSE(folder.writable);
    EXPECT_FALSE(folder.error->empty());
    EXPECT_FALSE(std::filesystem::exists(missing)) << "a chosen folder isn't made: its drive may come back";

    writeFileAtomically(missing, "a file");
    EXPECT_NE(findDownloadFolder(home.paths, {}).error->find("isn't a folder"), std::string::npos);
    EXPECT_TRUE(whyNotWritable("/proc")) << "for root as well";
}

TEST(DemoFiles, AFileIsReplacedWholeAndAFailureLeavesTheOldOne) {
    const TempHome home;
    const auto file = home.paths.folder() / "x.json";
    EXPECT_EQ(writeFileAtomically(file, "one"), "");
    EXPECT_EQ(writeFileAtomically(file, "two"), "");
    EXPECT_EQ(readFile(file), "two");
    EXPECT_EQ(entries(home.paths.folder()), 1) << "no temporary file stays";

    std::filesystem::create_directories(home.paths.folder() / "full" / "inside");
    EXPECT_NE(writeFileAtomically(home.paths.folder() / "full", "x"), "");
    EXPECT_EQ(entries(home.paths.folder()), 2);

    ASSERT_EQ(::mkfifo((home.paths.folder() / "pipe").c_str(), 0600), 0);
    EXPECT_FALSE(readFile(home.paths.folder() / "pipe")) << "a pipe must not block";
}

TEST(DemoFiles, TheRuntimeFileIsRemovedOnlyByTheProcessItNames) {
    const TempHome home;
    RuntimeFile file(home.paths.runtimeFile());
    file.publish(8123, 42);
    EXPECT_EQ(readFile(home.paths.runtimeFile()), "{\"port\":8123,\"pid\":42}\n");
    file.withdraw(43);
    EXPECT_TRUE(std::filesystem::exists(home.paths.runtimeFile()));
    file.withdraw(42);
    EXPECT_FALSE(std::filesystem::exists(home.paths.runtimeFile()));
}

} // namespace tunedeck::demo
