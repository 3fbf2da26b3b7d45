#include "Tests/Helpers/Test.h"
#include "Tests/Panel/Fixtures.h"
#include "TunedeckMenu/Panel/TrayMenu.h"

#include <algorithm>
#include <iterator>

namespace tunedeck::test {

namespace {

/// The entries that are shown, disabled ones in parentheses and separators as "-".
std::string shown(const ServiceState& service, const PanelState& panel = {}) {
    QStringList entries;
    for (const TrayMenuEntry& entry : trayMenu(service, panel)) {
        if (entry.isShown()) {
            const bool isSeparator = entry.kind == TrayMenuEntry::Kind::Separator;
            entries << (isSeparator ? u"-"_s : entry.enabled ? entry.text : u"("_s + entry.text + u")"_s);
        }
    }
    return entries.join(u" | "_s).toStdString();
}

} // namespace

TEST(TrayMenu, OffersWhatTheStateNeeds) {
    EXPECT_EQ(shown(ServiceState::checking()), "(Checking…) | Open Tunedeck | - | Open Log | Quit Tunedeck");

    PanelState panel;
    panel.toolbox = ToolboxReport{.tools = {{.name = u"ffmpeg"_s}}}; // stale: the service has stopped since
    EXPECT_EQ(shown(ServiceState::notRunning(), panel),
              "(Not running) | Open Tunedeck | Start tunedeck | - | Open Log | Quit Tunedeck");
    panel.isRestarting = true;
    panel.actionError = u"Couldn't start\ntunedeck."_s;
    EXPECT_EQ(shown(ServiceState::notRunning(), panel),
              "(Not running) | (Couldn't start\uFFFDtunedeck.) | Open Tunedeck | "
              "(Starting…) | - | Open Log | Quit Tunedeck");

    ServiceStatus status = goodStatus();
    status.downloadDirWritable = false;
    status.rekordboxDb = ServiceStatus::Library{.pending = {{.id = u"p"_s}}};
    panel = {.toolbox = panel.toolbox};
    EXPECT_EQ(
        shown(ServiceState::running(status), panel),
        "(Running · connected to the cloud) | (tunedeck can't write to this folder.) | Open Tunedeck | Repair Tools | "
        "Apply Now | - | Open Log | Quit Tunedeck");
    panel.toolbox->installing = panel.libraryBusy = true;
    status.downloadDirWritable = true;
    EXPECT_EQ(shown(ServiceState::running(status), panel),
              "(Running · connected to the cloud) | Open Tunedeck | (Installing…) | (Applying…) | - | Open Log | "
              "Quit Tunedeck");
    status.rekordboxDb->rekordboxRunning = true;
    EXPECT_EQ(shown(ServiceState::running(status)),
              "(Running · connected to the cloud) | Open Tunedeck | - | Open Log | Quit Tunedeck");
}

TEST(TrayMenu, ListsThreeJobsWithoutTimesAndKeepsItsEntriesInTheirPlaces) {
    ServiceStatus status = goodStatus();
    for (const auto& state : {u"running"_s, u"done"_s, u"failed"_s, u"queued"_s}) {
        status.recentJobs.push_back({.state = state, .playlist = u"Friday"_s, .createdAt = ago(60)});
    }
    const auto full = trayMenu(ServiceState::running(status), {});
    EXPECT_EQ(shown(ServiceState::running(status)),
              "(Running · connected to the cloud) | Open Tunedeck | - | Friday · Downloading | Friday · Added | "
              "Friday · Failed | - | Open Log | Quit Tunedeck");
    status.recentJobs = {{.state = u"queued"_s, .playlist = QString(u"e\u0301\n"_s).repeated(1000)}};
    const auto cut = shown(ServiceState::running(status));
    EXPECT_TRUE(cut.contains("… · Waiting | ")) << cut;
    EXPECT_LT(cut.size(), 400);

    const auto empty = trayMenu(ServiceState::checking(), {});
    const auto kinds = [](const TrayMenu& menu) {
        QList<TrayMenuEntry::Kind> all;
        std::ranges::transform(menu, std::back_inserter(all), &TrayMenuEntry::kind);
        return all;
    };
    EXPECT_EQ(kinds(empty), kinds(full)) << "a host would close a menu whose entries move";
}

TEST(TrayMenu, ToolTipNamesTheStateAndWhyTheIconWarns) {
    ServiceStatus status = goodStatus();
    EXPECT_EQ(trayToolTip(ServiceState::running(status)), u"Tunedeck: Running · connected to the cloud");
    status.downloadDirWritable = false;
    status.downloadDirError = u"The disk\nis full."_s;
    EXPECT_EQ(trayToolTip(ServiceState::running(status)),
              u"Tunedeck: Running · connected to the cloud · The disk\uFFFDis full.");
}

} // namespace tunedeck::test
