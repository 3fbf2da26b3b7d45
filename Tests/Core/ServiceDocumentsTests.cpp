#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Service/ServiceStatus.h"
#include "TunedeckCore/Service/Toolbox.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <functional>

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

TEST(ServiceStatus, DecodesEveryMember) {
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

TEST(ServiceStatus, DatesAJobByItsEndEvenIfThatIsInvalid) {
    ServiceStatus::Job job;
    EXPECT_EQ(job.date(), std::nullopt);
    job.createdAt = u"2025-03-01T10:00:00Z"_s;
    EXPECT_EQ(job.date(), QDateTime(QDate(2025, 3, 1), QTime(10, 0), Qt::UTC));
    job.finishedAt = u"2025-03-01T12:00:00.250+01:00"_s;
    EXPECT_EQ(job.date(), QDateTime(QDate(2025, 3, 1), QTime(11, 0, 0, 250), Qt::UTC));
    job.finishedAt = u"yesterday"_s;
    EXPECT_EQ(job.date(), std::nullopt);
}

const QByteArray fullReport = R"({
        "tools": [{"name": "yt-dlp", "installed": "2025.01.15", "wanted": "2025.01.15", "ready": true},
                  {"name": "ffmpeg", "installed": null, "wanted": "7.1", "ready": false}],
        "venvs": [{"name": "spotdl", "installed": "spotdl==4.2.11", "wanted": "4.2.11", "ready": true}],
        "installing": true, "step": "ffmpeg", "progress": 0.25, "error": "e", "manifest": "m",
        "checked_at": "2025-03-01T18:04:05Z"})";

TEST(ToolboxReport, ShowsTheVersionOfARequirement) {
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

using With = std::function<QByteArray(const std::optional<QJsonValue>&)>;
using Rebuild = std::function<QByteArray(const QJsonObject&)>;
using Visit = std::function<void(const QString&, const With&)>;

/// Calls `visit` for every nested member with its path and a function that replaces or removes it.
void eachMember(const QJsonObject& object, const QString& path, const Rebuild& rebuild, const Visit& visit) {
    for (const auto& key : object.keys()) {
        const With with = [&](const std::optional<QJsonValue>& value) {
            auto changed = object;
            changed.remove(key);
            if (value) {
                changed.insert(key, *value);
            }
            return rebuild(changed);
        };
        visit(path + key, with);
        eachMember(object[key].toObject(), path + key + u'.', with, visit);
        const auto list = object[key].toArray();
        for (qsizetype i = 0; i < list.size(); ++i) {
            const Rebuild inList = [&](const QJsonObject& element) {
                auto changed = list;
                changed[i] = element;
                return with(changed);
            };
            eachMember(list[i].toObject(), path + key + u'.', inList, visit);
        }
    }
}

TEST(ServiceDocuments, RejectMissingMembersAndWrongTypes) {
    const auto names =
        u"rekordbox_db rekordbox_db.last_applied rekordbox_db.last_applied.version rekordbox_db.last_error "
        "rekordbox_db.current_version mcp mcp.public_url shortcut_url download_dir_error xml_version cloud.protocol "
        "cloud.registered cloud.connected recent_jobs.created_at recent_jobs.finished_at recent_jobs.links "
        "recent_jobs.tracks recent_jobs.errors recent_jobs.xml_version "
        "tools.installed venvs.installed step progress error manifest checked_at"_s.split(u' ');
    const QSet<QString> optional(names.begin(), names.end());
    const auto check = [&](QByteArray document, const auto& accepts) {
        auto whole = QJsonDocument::fromJson(document).object();
        whole.remove(u"unknown"_s);
        const Rebuild text = [](const QJsonObject& object) { return QJsonDocument(object).toJson(); };
        ASSERT_TRUE(accepts(text(whole)));
        int members = 0;
        eachMember(whole, {}, text, [&](const QString& path, const With& with) {
            ++members;
            EXPECT_EQ(accepts(with({})), optional.contains(path)) << path.toStdString() << " left out";
            EXPECT_EQ(accepts(with(QJsonValue())), optional.contains(path)) << path.toStdString() << " null";
            EXPECT_FALSE(accepts(with(QJsonArray{1.5}))) << path.toStdString() << " of a wrong type";
        });
        EXPECT_GT(members, 15);
    };
    check(fullDocument, [](const QByteArray& text) { return ServiceStatus::decode(text).has_value(); });
    check(fullReport, [](const QByteArray& text) { return ToolboxReport::decode(text).has_value(); });
}

} // namespace
