#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Support/Json/Parse.h"
#include "TunedeckCore/Support/Json/Record.h"

namespace tunedeck::test {
namespace {

struct Disc {
    std::int64_t size = 0;
    std::optional<QString> fileName;
    bool operator==(const Disc&) const = default;

    static constexpr auto members = json::members<&Disc::size, &Disc::fileName>;
};

struct Player {
    Disc disc;
    short tray = 0;

    static constexpr auto members = json::members<&Player::disc>;
    static constexpr auto internalMembers = json::members<&Player::tray>;
};

struct Record {
    QString title;
    bool isReady = false;
    std::int64_t count = 0;
    std::optional<double> progress;
    std::optional<std::int64_t> limit;
    std::optional<Disc> disc;
    std::vector<Disc> discs;
    bool operator==(const Record&) const = default;

    static constexpr auto members = json::members<&Record::title, &Record::isReady, &Record::count, &Record::progress,
                                                  &Record::limit, &Record::disc, &Record::discs>;
};

std::expected<Record, json::Error> read(const QByteArray& document, json::Limits limits = {}) {
    return json::decode<Record>(document, json::Keys::SnakeToCamel, limits);
}

/// A valid document with members replaced or added.
QByteArray with(const QByteArray& members) {
    return R"({"title":"t","is_ready":true,"count":1,"discs":[],)" + members + "}";
}

/// The path and reason of the error, or "accepted".
QString errorOf(const QByteArray& document) {
    const auto record = read(document);
    return record ? u"accepted"_s : record.error().path + u": "_s + record.error().reason;
}

TEST(Json, DecodesMembersInAnyOrder) {
    const auto record =
        read(R"( {"discs":[{"size":5000000000},{"size":-1,"file_name":"a\/b\n\u00e9\ud83c\udfb5\u0000"}],
        "count":-9223372036854775808,"title":"Süß","is_ready":false,"progress":2,"limit":null,"disc":{"size":0}} )");
    ASSERT_TRUE(record) << record.error().description().toStdString();
    const Record expected{u"Süß"_s, false,       std::numeric_limits<std::int64_t>::min(),          2.0,
                          {},       Disc{0, {}}, {{5000000000, {}}, {-1, u"a/b\né🎵"_s + QChar(0)}}};
    EXPECT_EQ(*record, expected);
}

TEST(Json, RejectsWrongTypesWithThePathOfTheMember) {
    const std::vector<std::pair<QByteArray, QString>> cases{
        {R"({"is_ready":true,"count":1,"discs":[]})", u"title: is missing"_s},
        {with(R"("title":null)"), u"title: expected text, found null"_s},
        {with(R"("is_ready":1)"), u"isReady: expected a boolean, found a number"_s},
        {with(R"("count":true)"), u"count: expected an integer, found a boolean"_s},
        {with(R"("progress":"0.5")"), u"progress: expected a number, found text"_s},
        {with(R"("progress":1.8e308)"), u"progress: holds a number out of range"_s},
        {with(R"("disc":{"size":1,"file_name":{}})"), u"disc.fileName: expected text, found an object"_s},
        {with(R"("discs":[{"size":1},null])"), u"discs[1]: expected an object, found null"_s},
        {with(R"("discs":[{"size":1},{"size":[]}])"), u"discs[1].size: expected an integer, found a list"_s},
        {"null", u": expected an object, found null"_s},
    };
    for (const auto& [document, expected] : cases) {
        EXPECT_EQ(errorOf(document), expected) << document.constData();
    }
    EXPECT_EQ(read(with(R"("disc":{})")).error().description(), u"Unreadable document: \"disc.size\" is missing."_s);
}

TEST(Json, AcceptsExactIntegersInAnyForm) {
    const auto count = [](const QByteArray& number) -> std::optional<std::int64_t> {
        const auto record = read(with("\"count\":" + number));
        return record ? std::optional(record->count) : std::nullopt;
    };
    EXPECT_EQ(count("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(count("5e3"), 5000);
    EXPECT_EQ(count("9007199254740991.0"), 9007199254740991);
    for (const char* number : {"1.5", "9223372036854775808", "9007199254740993.0", "1e400"}) {
        EXPECT_EQ(count(number), std::nullopt) << number;
    }
}

TEST(Json, ConvertsSnakeCaseKeysKeepingOuterUnderscores) {
    const auto keys = u"download_dir_source DOWNLOAD_DIR download__dir _download_dir__ DownloadDir one_twoThree ___"_s;
    const auto camel = u"downloadDirSource downloadDir downloadDir _downloadDir__ DownloadDir oneTwothree ___"_s;
    QStringList converted;
    for (const auto& key : keys.split(u' ')) {
        converted << json::snakeToCamel(key);
    }
    EXPECT_EQ(converted.join(u' '), camel);
    EXPECT_EQ(json::decode<Disc>(R"({"size":1,"file_name":5,"fileName":"f"})", json::Keys::AsWritten)->fileName,
              u"f"_s);
}

TEST(Json, UsesTheLastOfDuplicateMembersAndIgnoresUnknownOnes) {
    EXPECT_EQ(read(with(R"("count":true,"count":2)"))->count, 2);
    EXPECT_EQ(read(with(R"("disc":{"size":1},"disc":null)"))->disc, std::nullopt);
    EXPECT_FALSE(read(with(R"("isReady":true,"is_ready":0)")));
    EXPECT_TRUE(read(with(R"("unknown":[[{"title":5}],1e-9,1e999],"":null)")));
}

TEST(Json, RejectsInvalidUnicodeCommentsAndTrailingData) {
    EXPECT_FALSE(read(with("\"x\":1") + QByteArray("\0{}", 3)));
    for (const auto* member :
         {"/* */\"x\":1", "\"x\":1}{", "\"x\":\"\xED\xA0\x80\"", "\"x\xFF\":1", R"("x":"\ud800")", R"("\udfff":1)"}) {
        EXPECT_FALSE(read(with(member))) << member;
    }
    EXPECT_TRUE(read("\xEF\xBB\xBF\r\n\t " + with(R"("x":"퟿ \ud7ff \ue000 \u0000")") + "\r\n\t "));
}

TEST(Json, LimitsDepthAndSize) {
    const auto nested = [](int levels) {
        return with("\"x\":" + QByteArray(levels - 1, '[') + QByteArray(levels - 1, ']'));
    };
    EXPECT_TRUE(read(nested(512)));
    EXPECT_EQ(errorOf(nested(513)), u": the document is nested deeper than 512 levels"_s);
    EXPECT_TRUE(read(nested(100'000)).error().beyondLimits);
    EXPECT_TRUE(read(with("\"x\":[" + QByteArray("1e999,").repeated(100) + "1]")).error().beyondLimits);
    const QByteArray document = with("\"x\":1");
    EXPECT_TRUE(read(document, {.bytes = document.size()}));
    EXPECT_TRUE(read(document, {.bytes = document.size() - 1}).error().beyondLimits);
}

TEST(Json, EncodesWithoutEmptyAndInternalMembers) {
    const Record record{u"\"é\"\n"_s, true, -7, 0.1, {}, Disc{5, u"f"_s}, {Disc{1, {}}}};
    const auto text = json::compactText(json::encode(record));
    EXPECT_EQ(text, R"({"count":-7,"disc":{"file_name":"f","size":5},"discs":[{"size":1}],"is_ready":true,)"
                    R"("progress":0.1,"title":"\"é\"\n"})");
    EXPECT_EQ(read(text), record);
    EXPECT_EQ(json::compactText(json::encode(record.disc, json::Form::AsDeclared)), R"({"fileName":"f","size":5})");
    const auto withTray = json::encode(std::vector<Player>{{{1, {}}, 3}}, json::Form::Complete);
    EXPECT_EQ(json::compactText(withTray), R"([{"disc":{"size":1},"tray":3}])");
    EXPECT_EQ(json::compactText(json::encode(Player{})), R"({"disc":{"size":0}})");
    EXPECT_EQ(json::decode<std::vector<Player>>(json::compactText(withTray), json::Keys::AsWritten)->front().tray, 3);
    EXPECT_EQ(json::decode<Player>(R"({"disc":{"size":1},"tray":70000})", json::Keys::AsWritten).error().path,
              u"tray"_s);
}

} // namespace
} // namespace tunedeck::test
