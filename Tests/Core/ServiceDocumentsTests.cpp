#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Service/AssistantLink.h"
#include "TunedeckCore/Service/CloudHealth.h"
#include "TunedeckCore/Service/ServiceStatus.h"
#include "TunedeckCore/Service/Toolbox.h"
#include "TunedeckCore/Support/Json/Record.h"
#include "TunedeckCore/Update/Appcast.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <functional>

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {

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

TEST(ToolboxReport, ShowsTheVersionOfARequirement) {
    const auto shown = [](const std::optional<QString>& installed) {
        return ToolboxReport::Tool{{}, installed, {}, true}.displayVersion();
    };
    EXPECT_EQ(shown({}), std::nullopt);
    EXPECT_EQ(shown(u"a==b==c"_s), u"c"_s);
    EXPECT_EQ(shown(u"a=="_s), QString());
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

/// Every member of a document as the service writes it, or the relay or the update feed. Optional ones are named.
template<class Decode>
void checkMembers(const char* file, const Decode& decode, const QString& names) {
    QFile seed(QStringLiteral(DOCUMENT_SEEDS "/") + QString::fromLatin1(file));
    ASSERT_TRUE(seed.open(QIODevice::ReadOnly));
    auto whole = QJsonDocument::fromJson(seed.readAll()).object();
    whole.remove(u"unknown"_s);
    const auto optional = names.split(u' ');
    const Rebuild text = [](const QJsonObject& object) { return QJsonDocument(object).toJson(); };
    ASSERT_TRUE(decode(text(whole))) << file;
    int members = 0;
    eachMember(whole, {}, text, [&](const QString& path, const With& with) {
        ++members;
        EXPECT_EQ(decode(with({})).has_value(), optional.contains(path)) << path.toStdString() << " left out";
        EXPECT_EQ(decode(with(QJsonValue())).has_value(), optional.contains(path)) << path.toStdString() << " null";
        EXPECT_FALSE(decode(with(QJsonArray{1.5}))) << path.toStdString() << " of a wrong type";
    });
    EXPECT_GE(members, 8);
}

TEST(ServiceDocuments, RejectMissingMembersAndWrongTypes) {
    checkMembers("status.json", ServiceStatus::decode,
                 u"rekordbox_db rekordbox_db.last_applied rekordbox_db.last_applied.version rekordbox_db.last_error "
                 "rekordbox_db.current_version mcp mcp.public_url shortcut_url download_dir_error xml_version "
                 "cloud.protocol cloud.registered cloud.connected recent_jobs.created_at recent_jobs.finished_at "
                 "recent_jobs.links recent_jobs.tracks recent_jobs.errors recent_jobs.xml_version"_s);
    checkMembers("toolbox.json", ToolboxReport::decode,
                 u"tools.installed venvs.installed step progress error manifest checked_at"_s);
    checkMembers("health.json", CloudHealth::decode, u"agent agent.last_seen agent.version queued"_s);
    checkMembers("appcast.json", Appcast::decode,
                 u"latest.min_macos latest.size latest.published_at latest.notes latest.dmg_url"_s);
    const auto link = [](const QByteArray& text) { return json::decode<AssistantLink>(text, json::Keys::AsWritten); };
    checkMembers("link.json", link, u"label createdAt lastUsedAt url apiUrl token paired telegramUsername expiresAt"_s);
}

} // namespace
