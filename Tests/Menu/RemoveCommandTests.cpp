#include "Tests/Helpers/Test.h"
#include "TunedeckMenu/App/RemoveCommand.h"

#include <QDir>
#include <QFile>

namespace tunedeck::test {

namespace {

QCoro::Task<std::int32_t> noManager(QStringList, std::stop_token) {
    co_return -1;
}
QCoro::Task<Removal> noUnit(std::stop_token) {
    co_return Removal();
}

TEST(RemoveCommandTest, ListsRemovedItemsRemainingItemsAndFailures) {
    const TemporaryHome home;
    ManualClock clock;
    const ServiceRemover::Supervisor supervisor{
        .launchctl = noManager, .forget = noUnit, .processes = [](const QString&) { return std::vector<pid_t>(); }};
    Removal loginItem;
    const auto run = [&](std::expected<bool, QString> ended) {
        const ServiceInstaller installer(home.path(), std::nullopt, 501, noManager, clock);
        return runToEnd(removeCommand({.home = home.path(),
                                       .settings = SettingsFile::standard(),
                                       .ended = std::move(ended),
                                       .uninstall = {supervisor, [&] { return loginItem; }}},
                                      {home.path(), installer, 501, supervisor, clock}));
    };
    EXPECT_EQ(run(false), CommandResult({.output = u"There was nothing of Tunedeck to remove.\n"_s}));

    const auto settings = home.write(u".tunedeck/settings.json"_s, R"({"download_dir": "/music"})");
    home.write(u".tunedeck/bin/tunedeck"_s, "program");
    home.write(u"Library/Logs/tunedeck.log"_s, "log");
    loginItem.done << u"Removed the entry."_s;
    EXPECT_EQ(run(true).output.toStdString(), "Ended the Tunedeck that ran.\n"
                                              "Removed the entry.\n"
                                              "Removed ~/.tunedeck/bin/tunedeck.\n"
                                              "These stay:\n"
                                              "  your music, in /music\n"
                                              "  settings, backups and the service's state, in ~/.tunedeck\n"
                                              "  the service's log, ~/Library/Logs/tunedeck.log\n");

    QFile::remove(settings);
    home.write(u".tunedeck/bin/tunedeck"_s, "program");
    loginItem = {.done = {}, .failures = {u"The entry is stuck."_s}};
    const auto failed = run(std::unexpected(u"it sleeps"_s));
    EXPECT_EQ(failed.exitStatus, 1);
    EXPECT_EQ(failed.errorOutput, u"Tunedeck: It couldn't be ended: it sleeps.\nTunedeck: The entry is stuck.\n"_s);
    EXPECT_TRUE(failed.output.startsWith(u"Removed ~/.tunedeck/bin/tunedeck.\nThese stay:\n  your music, where"_s));
}

} // namespace
} // namespace tunedeck::test
