#include "TunedeckCore/ServiceStatus.h"
#include "TunedeckCore/Support/JsonValue.h"

#include <gtest/gtest.h>

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

/// Every path of a document's members, with objects and the first elements of arrays walked into.
void collect(const json::Value& value, const std::vector<QString>& path, std::vector<std::vector<QString>>& paths) {
    if (const auto* object = value.as<json::Object>()) {
        for (const auto& [key, member] : *object) {
            auto inner = path;
            inner.push_back(key);
            paths.push_back(inner);
            collect(member, inner, paths);
        }
    } else if (const auto* array = value.as<json::Array>(); array != nullptr && !array->empty()) {
        collect(array->front(), path, paths);
    }
}

/// A copy with the member at a path replaced, or removed when there is no replacement.
json::Value replaced(const json::Value& value, std::span<const QString> path,
                     const std::optional<json::Value>& replacement) {
    if (const auto* array = value.as<json::Array>()) {
        json::Array copy = *array;
        copy.front() = replaced(copy.front(), path, replacement);
        return json::Value::Storage(std::move(copy));
    }
    json::Object copy = *value.as<json::Object>();
    if (path.size() > 1) {
        copy.insert_or_assign(path.front(), replaced(copy.at(path.front()), path.subspan(1), replacement));
    } else if (replacement) {
        copy.insert_or_assign(path.front(), *replacement);
    } else {
        copy.erase(path.front());
    }
    return json::Value::Storage(std::move(copy));
}

TEST(ServiceStatus, RefusesTheDocumentForEachRequiredMemberMissingAndForAnyOfAWrongType) {
    const json::Value document = json::Value::Storage(*json::parseObject(fullDocument));
    std::vector<std::vector<QString>> paths;
    collect(document, {}, paths);
    const auto accepts = [&](const std::vector<QString>& path, const std::optional<json::Value>& replacement) {
        const json::Value changed = replaced(document, path, replacement);
        return ServiceStatus::decode(json::compactText(*changed.as<json::Object>())).has_value();
    };
    const QStringList optional{u"shortcut_url"_s,
                               u"rekordbox_db"_s,
                               u"mcp"_s,
                               u"download_dir_error"_s,
                               u"xml_version"_s,
                               u"mcp.public_url"_s,
                               u"cloud.protocol"_s,
                               u"cloud.registered"_s,
                               u"cloud.connected"_s,
                               u"recent_jobs.created_at"_s,
                               u"recent_jobs.finished_at"_s,
                               u"recent_jobs.links"_s,
                               u"recent_jobs.tracks"_s,
                               u"recent_jobs.errors"_s,
                               u"recent_jobs.xml_version"_s,
                               u"rekordbox_db.last_applied"_s,
                               u"rekordbox_db.last_applied.version"_s,
                               u"rekordbox_db.last_error"_s,
                               u"rekordbox_db.current_version"_s};
    int required = 0;
    for (const auto& path : paths) {
        const QString name = QStringList(path.begin(), path.end()).join(u'.');
        if (name == "unknown"_L1) {
            continue;
        }
        const bool mayMiss = optional.contains(name);
        required += mayMiss ? 0 : 1;
        EXPECT_EQ(accepts(path, {}), mayMiss) << name.toStdString() << " missing";
        EXPECT_EQ(accepts(path, json::Value::Storage(nullptr)), mayMiss) << name.toStdString() << " null";
        // No member is of these types or, being an integer or a boolean, accepts the fraction.
        EXPECT_FALSE(accepts(path, json::Value(1.5))) << name.toStdString();
        EXPECT_FALSE(accepts(path, json::Value::Storage(json::Array{json::Value(1.5)}))) << name.toStdString();
        EXPECT_FALSE(accepts(path, json::Value::Storage(json::Object{}))) << name.toStdString();
    }
    EXPECT_EQ(required, 31);
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
