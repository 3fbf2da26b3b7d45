#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Support/Files/PropertyList.h"

#include <limits>

namespace tunedeck {
namespace {

using namespace test;

QByteArray list(const QByteArray& inside) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + inside + "</plist>\n";
}

QByteArray entry(const QByteArray& value) {
    return list("<dict><key>k</key>" + value + "</dict>");
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
}

TEST(PropertyListTest, RejectsInvalidListsAndEntities) {
    const QByteArray dictionary = "<dict><key>k</key><true/></dict>";
    ASSERT_TRUE(parsePropertyList(list(dictionary)));
    EXPECT_EQ(parsePropertyList(list(dictionary).chopped(30)), std::nullopt);
    for (const auto& inside : {"<array/>", "", "<dict><true/></dict>"}) {
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
}

} // namespace
} // namespace tunedeck
