#include "TunedeckCore/Support/PropertyList.h"

#include <gtest/gtest.h>

#include <limits>

namespace tunedeck {
namespace {

using namespace Qt::StringLiterals;

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

TEST(PropertyListTest, EveryTypeReadsBackAsItself) {
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

TEST(PropertyListTest, IsWrittenSortedAndIndented) {
    const PropertyDictionary dictionary{{u"b"_s, PropertyValue(PropertyArray{PropertyValue(std::int64_t{30})})},
                                        {u"a"_s, PropertyValue(u"x&y"_s)}};
    EXPECT_EQ(xmlPropertyList(dictionary).mid(xmlPropertyList({}).indexOf("<dict")).toStdString(),
              "<dict>\n\t<key>a</key>\n\t<string>x&amp;y</string>\n\t<key>b</key>\n\t<array>\n"
              "\t\t<integer>30</integer>\n\t</array>\n</dict>\n</plist>\n");
}

TEST(PropertyListTest, OrderFormattingAndCommentsDoNotMatterButTypesDo) {
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

TEST(PropertyListTest, AnythingElseGivesNothing) {
    const QByteArray dictionary = "<dict><key>k</key><true/></dict>";
    ASSERT_TRUE(parsePropertyList(list(dictionary)));
    const auto good = list(dictionary);
    for (qsizetype length = 0; length < good.indexOf("</plist>") + 7; ++length) {
        EXPECT_EQ(parsePropertyList(good.left(length)), std::nullopt) << length;
    }
    for (const auto& xml :
         {QByteArray("bplist00\xd1\x01\x02QaQb\x08\x0b\x0d"),
          list("<array/>"),
          list("<string>x</string>"),
          list(""),
          list(dictionary + dictionary),
          list("x" + dictionary),
          list(dictionary + "x"),
          list(dictionary) + "<more/>",
          dictionary,
          list("<dict><true/></dict>"),
          list("<dict><key>k</key></dict>"),
          list("<dict><key>k</key><key>l</key><true/></dict>"),
          list("<dict>x<key>k</key><true/></dict>"),
          entry("<integer>1.5</integer>"),
          entry("<integer>9223372036854775808</integer>"),
          entry("<integer/>"),
          entry("<real>x</real>"),
          entry("<date>yesterday</date>"),
          entry("<data>*</data>"),
          entry("<true>no</true>"),
          entry("<string>a<b/></string>"),
          entry("<unknown/>"),
          entry("<string>&unknown;</string>"),
          QByteArray("<!DOCTYPE plist [<!ENTITY e \"text\">]><plist><dict><key>k</key><string>&e;</string></dict>"
                     "</plist>"),
          entry("<string>" + QByteArray(1024 * 1024, 'x') + "</string>")}) {
        EXPECT_EQ(parsePropertyList(xml), std::nullopt) << xml.left(300).toStdString();
    }
}

TEST(PropertyListTest, DepthIsBounded) {
    const auto nested = [](int depth) {
        return entry(QByteArray("<array>").repeated(depth) + "<true/>" + QByteArray("</array>").repeated(depth));
    };
    EXPECT_TRUE(parsePropertyList(nested(60)));
    EXPECT_EQ(parsePropertyList(nested(64)), std::nullopt);
    EXPECT_EQ(parsePropertyList(nested(20000)), std::nullopt);
}

} // namespace
} // namespace tunedeck
