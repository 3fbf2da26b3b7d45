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

namespace tunedeck::test {
namespace {

TEST(ServiceStatus, DatesAJobByItsEndEvenIfThatIsInvalid) {
    ServiceStatus::Job job{.createdAt = u"2025-03-01T10:00:00Z"_s};
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
    EXPECT_EQ(shown(u"a=1"_s), u"a=1"_s);
}

using With = std::function<QByteArray(const QJsonValue&)>;
using Visit = std::function<void(const QString&, const With&)>;

/// Calls `visit` for every nested member with its path and a function that returns the document with another value for
/// that member; an undefined value removes it.
void eachMember(const QJsonObject& object, const QString& path, const With& rebuild, const Visit& visit) {
    for (const auto& key : object.keys()) {
        const With with = [&](const QJsonValue& value) {
            auto changed = object;
            changed[key] = value;
            return rebuild(changed);
        };
        visit(path + key, with);
        eachMember(object[key].toObject(), path + key + u'.', with, visit);
        const auto list = object[key].toArray();
        for (qsizetype i = 0; i < list.size(); ++i) {
            const With inList = [&](const QJsonValue& element) {
                auto changed = list;
                changed[i] = element;
                return with(changed);
            };
            eachMember(list[i].toObject(), path + key + u'.', inList, visit);
        }
    }
}

/// Checks every member of a complete document, which names its optional ones in a member of its own.
void checkMembers(const char* file, const std::function<bool(const QByteArray&)>& accepts) {
    QFile seed(u"" DOCUMENT_SEEDS "/"_s + QLatin1StringView(file));
    ASSERT_TRUE(seed.open(QIODevice::ReadOnly));
    auto whole = QJsonDocument::fromJson(seed.readAll()).object();
    const auto optional = whole.take(u"optional members"_s).toString().split(u' ');
    const With text = [](const QJsonValue& document) { return QJsonDocument(document.toObject()).toJson(); };
    ASSERT_TRUE(accepts(text(whole))) << file;
    qsizetype found = 0;
    eachMember(whole, {}, text, [&](const QString& path, const With& with) {
        const bool isOptional = optional.contains(path);
        found += isOptional ? 1 : 0;
        EXPECT_EQ(accepts(with(QJsonValue::Undefined)), isOptional) << path.toStdString() << " left out";
        EXPECT_EQ(accepts(with(QJsonValue::Null)), isOptional) << path.toStdString() << " null";
        EXPECT_FALSE(accepts(with(QJsonArray{1.5}))) << path.toStdString() << " of a wrong type";
    });
    EXPECT_GE(found, optional.size()) << "the document lacks a member";
}

TEST(ServiceDocuments, RejectMissingMembersAndWrongTypes) {
    checkMembers("status.json", [](const QByteArray& text) { return ServiceStatus::decode(text).has_value(); });
    checkMembers("toolbox.json", [](const QByteArray& text) { return ToolboxReport::decode(text).has_value(); });
    checkMembers("health.json", [](const QByteArray& text) { return CloudHealth::decode(text).has_value(); });
    checkMembers("appcast.json", [](const QByteArray& text) { return Appcast::decode(text).has_value(); });
    checkMembers("link.json", [](const QByteArray& text) {
        return json::decode<AssistantLink>(text, json::Keys::AsWritten).has_value();
    });
}

} // namespace
} // namespace tunedeck::test
