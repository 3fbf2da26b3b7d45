#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Support/Files/PropertyList.h"

#include <limits>

namespace tunedeck::test {
namespace {

QByteArray list(const QByteArray& inside) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + inside + "</plist>\n";
}

TEST(PropertyListTest, ReadsBackEveryType) {
    const PropertyDictionary nested{{u"<&>"_s, PropertyValue(false)}};
    const PropertyDictionary dictionary{
        {u"text"_s, PropertyValue(u" <b>&amp; \"ü😀\"\r\n\t]]> "_s)},
        {u"true"_s, PropertyValue(true)},
        {u"least"_s, PropertyValue(std::numeric_limits<std::int64_t>::min())},
        {u"real"_s, PropertyValue(0.1)},
        {u"date"_s, PropertyValue(QDateTime(QDate(2026, 11, 21), QTime(9, 8, 7), Qt::UTC))},
        {u"data"_s, PropertyValue(QByteArray("\0\xff\x10", 3))},
        {u"array"_s, PropertyValue(PropertyArray{PropertyValue(nested), PropertyValue(PropertyArray())})},
    };
    EXPECT_EQ(parsePropertyList(xmlPropertyList(dictionary)), dictionary);
    EXPECT_EQ(textValue(dictionary, u"true"_s), std::nullopt);
}

TEST(PropertyListTest, ComparesTypesButNotOrderOrFormatting) {
    const auto one = parsePropertyList(list("<dict><key>a</key><true/><key>b</key><integer>30</integer></dict>"));
    const auto other = parsePropertyList(
        list("\n<!-- c --><dict>\n <key>b</key> <integer> 30 </integer>\n<?pi x?><key>a</key><true></true></dict>\n"));
    ASSERT_TRUE(one);
    EXPECT_EQ(one, other);
    EXPECT_NE(one, parsePropertyList(list("<dict><key>a</key><true/><key>b</key><real>30</real></dict>")));
}

TEST(PropertyListTest, RejectsInvalidBinaryLargeAndDeepLists) {
    const auto nested = [](int depth) {
        return list("<dict><key>k</key>" + QByteArray("<array>").repeated(depth) +
                    QByteArray("</array>").repeated(depth) + "</dict>");
    };
    EXPECT_TRUE(parsePropertyList(nested(60)));
    for (const auto& bytes :
         {nested(60).chopped(30), nested(64), list("<array/>"), list(""), list("<dict><true/></dict>"),
          QByteArray(
              "<!DOCTYPE plist [<!ENTITY e \"t\">]><plist><dict><key>k</key><string>&e;</string></dict></plist>"),
          list("<dict><key>k</key><string>" + QByteArray(1024 * 1024, 'x') + "</string></dict>"),
          QByteArray::fromHex("62706c6973743030d1010251615162080b0d00000000000001010000000000000003000000000000000000"
                              "00000f")}) {
        EXPECT_EQ(parsePropertyList(bytes), std::nullopt) << bytes.left(300).toStdString();
    }
}

} // namespace
} // namespace tunedeck::test
