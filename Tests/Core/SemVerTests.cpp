#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Update/SemVer.h"

namespace tunedeck::test {
namespace {

SemVer version(const QString& text) {
    const auto parsed = SemVer::parse(text);
    EXPECT_TRUE(parsed) << text.toStdString();
    return parsed.value_or(SemVer{});
}

TEST(SemVer, ParsesThreeNumbersAndRejectsOtherTexts) {
    EXPECT_EQ(version(u"\tv1.4.0+abc..\u00a0"_s), (SemVer{1, 4, 0, {}}));
    EXPECT_EQ(version(u"1.4.0-beta+exp.sha-5"_s), (SemVer{1, 4, 0, {u"beta"_s}}));
    EXPECT_EQ(version(u"1.4.0-alpha-2.-.é x"_s), (SemVer{1, 4, 0, {u"alpha-2"_s, u"-"_s, u"é x"_s}}));
    EXPECT_EQ(version(u"01.002.9223372036854775807"_s), (SemVer{1, 2, std::numeric_limits<std::int64_t>::max(), {}}));
    for (const auto& text : u"|v|1.4|1.4.0.1|1..0|V1.4.0|vv1.4.0|v 1.4.0|v1.4.0\n|1.4.x|1.4.-1|+1.4.0|1. 4.0|1.4.0x|"
                            "1.2.3-|1.2.3-rc..1|1.2.3-.rc|1.2.9223372036854775808|0x1.2.3|١.٢.٣"_s.split(u'|')) {
        EXPECT_FALSE(SemVer::parse(text)) << text.toStdString();
    }
    EXPECT_EQ(version(u"v1.2.3+build.7"_s).description(), u"1.2.3"_s);
    EXPECT_EQ(version(u"1.2.3-rc.01+7"_s).description(), u"1.2.3-rc.01"_s);
}

TEST(SemVer, ComparesByPrecedence) {
    const auto ascending =
        u"0.9.9 1.0.0--5 1.0.0--1 1.0.0-0 1.0.0-2 1.0.0-10 1.0.0-99999999999999999998 1.0.0-99999999999999999999 1.0.0-RC 1.0.0-alpha 1.0.0-alpha.1 1.0.0-alpha.beta 1.0.0-beta 1.0.0-beta.2 1.0.0-beta.11 1.0.0-beta10 1.0.0-beta2 1.0.0-rc.1 1.0.0-\uFFFD 1.0.0-🎵 1.0.0 1.0.1-a 1.0.1 1.1.0 1.10.0 2.0.0"_s
            .split(u' ');
    for (qsizetype i = 0; i < ascending.size(); ++i) {
        for (qsizetype j = 0; j < ascending.size(); ++j) {
            EXPECT_EQ(version(ascending[i]) < version(ascending[j]), i < j)
                << ascending[i].toStdString() << " and " << ascending[j].toStdString();
        }
    }
    const SemVer one = version(u"1.0.0-1"_s);
    const SemVer leadingZero = version(u"1.0.0-01"_s);
    EXPECT_FALSE(one < leadingZero || leadingZero < one || one == leadingZero);
    EXPECT_EQ(qHash(one, 7), qHash(version(u"v1.0.0-1+build"_s), 7));
}

} // namespace
} // namespace tunedeck::test
