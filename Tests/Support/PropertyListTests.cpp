#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Support/Files/PropertyList.h"

#include <limits>

namespace tunedeck {
namespace {

using namespace test;

QByteArray list(const QByteArray& inside) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n<plist version=\"1.0\">" +
           inside + "</plist>\n";
}

QByteArray entry(const QByteArray& value) {
    return list("<dict><key>k</key>" + value + "</dict>");
}

template<class T>
std::optional<T> read(const QByteArray& value) {
    const auto dictionary = parsePropertyList(entry(value));
    const auto* content = dictionary ? dictionary->at(u"k"_s).as<T>() : nullptr;
    return content ? std::optional(*content) : std::nullopt;
}

TEST(PropertyListTest, ReadsBackEveryType) {
    const PropertyDictionary nested{{u""_s, PropertyValue(QString())}, {u"<&>"_s, PropertyValue(false)}};
    const PropertyArray array{PropertyValue(nested), PropertyValue(PropertyArray()),
                              PropertyValue(PropertyDictionary())};
    const PropertyDictionary dictionary{
        {u"text"_s, PropertyValue(u" <b>&amp; \"ü😀\"\r\n\t]]> "_s)},
        {u"true"_s, PropertyValue(true)},
        {u"least"_s, PropertyValue(std::numeric_limits<std::int64_t>::min())},
        {u"real"_s, PropertyValue(0.1)},
        {u"infinite"_s, PropertyValue(-std::numeric_limits<double>::infinity())},
        {u"date"_s, PropertyValue(QDateTime(QDate(2026, 11, 21), QTime(9, 8, 7), Qt::UTC))},
        {u"data"_s, PropertyValue(QByteArray("\0\xff\x10", 3))},
        {u"array"_s, PropertyValue(array)},
    };
    EXPECT_EQ(parsePropertyList(xmlPropertyList(dictionary)), dictionary);
    EXPECT_EQ(textValue(dictionary, u"text"_s), u" <b>&amp; \"ü😀\"\r\n\t]]> "_s);
    EXPECT_EQ(textValue(dictionary, u"true"_s), std::nullopt);
    EXPECT_EQ(textValue(dictionary, u"missing"_s), std::nullopt);
}

TEST(PropertyListTest, ComparesTypesButNotOrderOrFormatting) {
    const auto one = parsePropertyList(list("<dict><key>a</key><true/><key>b</key><integer>30</integer></dict>"));
    const auto other = parsePropertyList(
        list("\n<!-- c --><dict>\n <key>b</key> <integer> 30 </integer>\n<?pi x?><key>a</key><true></true></dict>\n"));
    ASSERT_TRUE(one);
    EXPECT_EQ(one, other);
    EXPECT_NE(one, parsePropertyList(list("<dict><key>a</key><true/><key>b</key><real>30</real></dict>")));
    EXPECT_NE(one, parsePropertyList(list("<dict><key>a</key><string>true</string><key>b</key><integer>30</integer>"
                                          "</dict>")));
    EXPECT_EQ(read<QByteArray>("<data>\n\tAP8\n\tQ</data>"), QByteArray("\0\xff\x10", 3));
    EXPECT_EQ(read<std::int64_t>("<true/><key>k</key><integer>2</integer>"), 2); // the last of two counts
}

TEST(PropertyListTest, RejectsInvalidListsAndEntities) {
    const QByteArray dictionary = "<dict><key>k</key><true/></dict>";
    const auto good = list(dictionary);
    ASSERT_TRUE(parsePropertyList(good));
    for (qsizetype length = 0; length < good.indexOf("</plist>"); ++length) {
        EXPECT_EQ(parsePropertyList(good.left(length)), std::nullopt) << length;
    }
    for (const auto& value : {"<string>a<b/></string>", "<unknown/>", "<string>&unknown;</string>"}) {
        EXPECT_EQ(parsePropertyList(entry(value)), std::nullopt) << value;
    }
    for (const auto& inside : {"<array/>", "<string>x</string>", "", "<dict/><dict/>", "<dict><true/></dict>"}) {
        EXPECT_EQ(parsePropertyList(list(inside)), std::nullopt) << inside;
    }
    const auto binary = QByteArray::fromHex("62706c6973743030d101025161516208"
                                            "0b0d0000000000000101000000000000000300000000000000000000000f");
    for (const auto& xml :
         {binary,
          QByteArray("<!DOCTYPE plist [<!ENTITY e \"text\">]><plist><dict><key>k</key><string>&e;</string></dict>"
                     "</plist>"),
          entry("<string>" + QByteArray(1024 * 1024, 'x') + "</string>")}) {
        EXPECT_EQ(parsePropertyList(xml), std::nullopt) << xml.left(300).toStdString();
    }
}

TEST(PropertyListTest, RejectsDeepNesting) {
    const auto nested = [](int depth) {
        return entry(QByteArray("<array>").repeated(depth) + "<true/>" + QByteArray("</array>").repeated(depth));
    };
    EXPECT_TRUE(parsePropertyList(nested(60)));
    EXPECT_EQ(parsePropertyList(nested(64)), std::nullopt);
    EXPECT_EQ(parsePropertyList(nested(20000)), std::nullopt);
}

} // namespace
} // namespace tunedeck
