#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Service/Watchers/JobEvent.h"
#include "TunedeckCore/Service/Watchers/JobWatcher.h"
#include "TunedeckCore/Service/Watchers/LibraryWatcher.h"

namespace tunedeck::test {
namespace {

using Jobs = std::vector<ServiceStatus::Job>;
using Applied = std::optional<ServiceStatus::Library::Applied>;

ServiceStatus::Job job(const char* id, const char* state) {
    return {.jobId = QString::fromLatin1(id), .state = QString::fromLatin1(state)};
}

/// The events as "r:a f:b" for "requested a, finished b"; "x" stands for failed.
QString events(JobWatcher& watcher, const Jobs& jobs) {
    QStringList texts;
    for (const JobEvent& event : watcher.update(jobs)) {
        texts += u"rfx"_s.at(static_cast<int>(event.kind)) + u":"_s + event.job.jobId;
    }
    return texts.join(u' ');
}

TEST(JobWatcher, ReportsNothingForTheFirstAndUnchangedLists) {
    JobWatcher watcher;
    const Jobs jobs{job("a", "done"), job("b", "failed"), job("c", "queued"), job("d", "running")};
    EXPECT_EQ(events(watcher, jobs), u""_s);
    JobWatcher emptyFirst;
    EXPECT_EQ(events(emptyFirst, {}), u""_s);
    EXPECT_EQ(events(emptyFirst, jobs), u"f:a x:b r:c r:d"_s);
    EXPECT_EQ(events(emptyFirst, jobs), u""_s);
}

TEST(JobWatcher, ReportsEachStepOnceInListOrder) {
    JobWatcher watcher;
    events(watcher, {job("a", "queued"), job("b", "running")});
    EXPECT_EQ(events(watcher, {job("new", "queued"), job("a", "running"), job("b", "done")}), u"r:new f:b"_s);
    EXPECT_EQ(events(watcher, {job("quick", "done"), job("new", "failed"), job("a", "paused"), job("b", "done")}),
              u"f:quick x:new"_s);
    // A requeued job isn't new, but one that returns to the list is. A retried job may finish again.
    EXPECT_EQ(events(watcher, {job("new", "queued"), job("b", "failed")}), u"x:b"_s);
    EXPECT_EQ(events(watcher, {job("new", "done"), job("a", "queued")}), u"f:new r:a"_s);
}

TEST(LibraryWatcher, ReportsEachUpdateOnceAfterTheFirst) {
    const auto update = [](const char* at) { return Applied({QString::fromLatin1(at), {}, u"2 tracks"_s}); };
    LibraryWatcher watcher;
    EXPECT_EQ(watcher.update(update("1")), std::nullopt);
    EXPECT_EQ(watcher.update(update("2")), update("2"));
    EXPECT_EQ(watcher.update(update("2")), std::nullopt);
    EXPECT_EQ(watcher.update({}), std::nullopt);
    EXPECT_EQ(watcher.update(update("2")), update("2"));
    LibraryWatcher withoutAny;
    EXPECT_EQ(withoutAny.update({}), std::nullopt);
    EXPECT_EQ(withoutAny.update(update("")), update(""));
}

} // namespace
} // namespace tunedeck::test
