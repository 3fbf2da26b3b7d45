#include "Tests/Helpers/Test.h"
#include "TunedeckCore/ServiceStatus.h"

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {

const QByteArray fullDocument = R"({
    "version": "2.1.0", "unknown": [1, {"version": 2}], "shortcut_url": "http://127.0.0.1:8000/shortcut",
    "rekordbox_db": {
        "db_path": "/home/me/master.db", "rekordbox_running": true,
        "pending": [{"id": "p1", "created_at": "2025-03-01T18:04:05Z", "summary": "3 tracks"}],
        "failed": [{"id": "f1", "summary": "1 track", "error": "locked"}],
        "last_applied": {"at": "2025-03-01T17:00:00Z", "version": "41", "summary": "2 tracks"},
        "last_error": "disk full", "current_version": "42",
        "backups": [{"version": "41", "created_at": "2025-03-01T16:00:00.5Z", "reason": "before", "size_bytes": 5000000000}]
    },
    "mcp": {"public_url": null, "local_url": "http://127.0.0.1:8000/mcp"},
    "download_dir": "/music", "download_dir_source": "settings", "download_dir_writable": false,
    "download_dir_error": "read-only", "import_xml": "/music/import.xml", "xml_version": "7",
    "cloud": {"enabled": true, "base_url": "https://relay.example", "protocol": 3, "registered": true, "connected": false},
    "recent_jobs": [
        {"job_id": "j1", "state": "done", "playlist": "Friday", "message": "ok", "created_at": "2025-03-01T10:00:00Z",
         "finished_at": "2025-03-01T11:00:00Z", "links": 1, "tracks": 12, "errors": 0, "xml_version": "6"},
        {"job_id": "j2", "state": "queued", "playlist": "Sunday", "message": ""}]
})";

TEST(ServiceStatus, FillsEveryFieldOfAFullDocument) {
    const auto status = ServiceStatus::decode(fullDocument);
    ASSERT_TRUE(status) << status.error().description().toStdString();
    const ServiceStatus expected{
        .version = u"2.1.0"_s,
        .rekordboxDb =
            ServiceStatus::Library{
                .dbPath = u"/home/me/master.db"_s,
                .rekordboxRunning = true,
                .pending = {{u"p1"_s, u"2025-03-01T18:04:05Z"_s, u"3 tracks"_s}},
                .failed = {{u"f1"_s, u"1 track"_s, u"locked"_s}},
                .lastApplied = ServiceStatus::Library::Applied{u"2025-03-01T17:00:00Z"_s, u"41"_s, u"2 tracks"_s},
                .lastError = u"disk full"_s,
                .currentVersion = u"42"_s,
                .backups = {{u"41"_s, u"2025-03-01T16:00:00.5Z"_s, u"before"_s, 5000000000}}},
        .mcp = ServiceStatus::Mcp{{}, u"http://127.0.0.1:8000/mcp"_s},
        .shortcutUrl = u"http://127.0.0.1:8000/shortcut"_s,
        .downloadDir = u"/music"_s,
        .downloadDirSource = u"settings"_s,
        .downloadDirWritable = false,
        .downloadDirError = u"read-only"_s,
        .importXml = u"/music/import.xml"_s,
        .xmlVersion = u"7"_s,
        .cloud = {true, u"https://relay.example"_s, 3, true, false},
        .recentJobs = {{u"j1"_s, u"done"_s, u"Friday"_s, u"ok"_s, u"2025-03-01T10:00:00Z"_s, u"2025-03-01T11:00:00Z"_s,
                        1, 12, 0, u"6"_s},
                       {u"j2"_s, u"queued"_s, u"Sunday"_s, {}, {}, {}, {}, {}, {}, {}}}};
    EXPECT_EQ(*status, expected);
}

TEST(ServiceStatus, RefusesADocumentWithoutARequiredMemberOrWithOneOfAWrongType) {
    const auto accepts = [](const QByteArray& text, const QByteArray& instead) {
        EXPECT_EQ(fullDocument.count(text), 1) << text.toStdString();
        return ServiceStatus::decode(QByteArray(fullDocument).replace(text, instead)).has_value();
    };
    for (const char* required :
         {R"("version": "2.1.0",)", R"("download_dir": "/music",)", R"("download_dir_source": "settings",)",
          R"("download_dir_writable": false,)", R"("import_xml": "/music/import.xml",)", R"("enabled": true,)",
          R"("base_url": "https://relay.example",)", R"("rekordbox_running": true,)", R"("id": "p1",)",
          R"(, "error": "locked")", R"(, "size_bytes": 5000000000)", R"("job_id": "j2",)", R"("state": "queued",)"}) {
        EXPECT_FALSE(accepts(required, "")) << required;
    }
    for (const char* optional :
         {R"("shortcut_url": "http://127.0.0.1:8000/shortcut",)", R"("last_error": "disk full",)",
          R"("download_dir_error": "read-only",)", R"("xml_version": "7",)", R"("protocol": 3,)", R"("links": 1,)",
          R"("last_applied": {"at": "2025-03-01T17:00:00Z", "version": "41", "summary": "2 tracks"},)"}) {
        EXPECT_TRUE(accepts(optional, "")) << optional;
        const auto name = QByteArray(optional).left(QByteArray(optional).indexOf(':'));
        EXPECT_TRUE(accepts(optional, name + ": null,")) << optional;
        EXPECT_FALSE(accepts(optional, name + ": [1.5],")) << optional;
    }
    EXPECT_FALSE(accepts(R"("protocol": 3)", R"("protocol": 3.5)"));
    EXPECT_FALSE(accepts(R"("connected": false)", R"("connected": 0)"));
    EXPECT_FALSE(accepts(R"("message": ""})", R"("message": ""}, {})"));
}

TEST(ServiceStatus, DatesAJobByItsEndAndNeverFallsBackFromAnUnreadableOne) {
    ServiceStatus::Job job;
    EXPECT_EQ(job.date(), std::nullopt);
    job.createdAt = u"2025-03-01T10:00:00Z"_s;
    EXPECT_EQ(job.date(), QDateTime(QDate(2025, 3, 1), QTime(10, 0), Qt::UTC));
    job.finishedAt = u"2025-03-01T12:00:00.250+01:00"_s;
    EXPECT_EQ(job.date(), QDateTime(QDate(2025, 3, 1), QTime(11, 0, 0, 250), Qt::UTC));
    job.finishedAt = u"yesterday"_s;
    EXPECT_EQ(job.date(), std::nullopt);
}

} // namespace
