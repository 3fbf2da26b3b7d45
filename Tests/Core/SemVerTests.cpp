#include "TunedeckCore/SemVer.h"

#include <gtest/gtest.h>

#include <random>

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {

SemVer version(const QString& text) {
    const auto parsed = SemVer::parse(text);
    EXPECT_TRUE(parsed) << text.toStdString();
    return parsed.value_or(SemVer{});
}

TEST(SemVer, IsReadFromItsThreeNumbersAndNothingLess) {
    EXPECT_EQ(version(u" v1.4.0 "_s), (SemVer{1, 4, 0, {}}));
    EXPECT_EQ(version(u"\t1.4.0+abc..\u00a0"_s), (SemVer{1, 4, 0, {}}));
    EXPECT_EQ(version(u"1.4.0-beta+exp.sha-5"_s), (SemVer{1, 4, 0, {u"beta"_s}}));
    EXPECT_EQ(version(u"1.4.0-alpha-2.-.é x"_s), (SemVer{1, 4, 0, {u"alpha-2"_s, u"-"_s, u"é x"_s}}));
    EXPECT_EQ(version(u"01.002.9223372036854775807"_s), (SemVer{1, 2, std::numeric_limits<std::int64_t>::max(), {}}));
    for (const auto& text :
         {u""_s,        u"v"_s,           u"1.4"_s,       u"1.4.0.1"_s,   u"1..0"_s,
          u".4.0"_s,    u"V1.4.0"_s,      u"vv1.4.0"_s,   u"v 1.4.0"_s,   u"v1.4.0\n"_s,
          u"1.4.x"_s,   u"1.4.-1"_s,      u"+1.4.0"_s,    u"1. 4.0"_s,    u"1.4.0x"_s,
          u"1.2.3-"_s,  u"1.2.3-rc..1"_s, u"1.2.3-.rc"_s, u"1.2.3-rc."_s, u"1.2.9223372036854775808"_s,
          u"0x1.2.3"_s, u"١.٢.٣"_s}) {
        EXPECT_FALSE(SemVer::parse(text)) << text.toStdString();
    }
    EXPECT_EQ(version(u"v1.2.3+build.7"_s).description(), u"1.2.3"_s);
    EXPECT_EQ(version(u"1.2.3-rc.01+7"_s).description(), u"1.2.3-rc.01"_s);
}

TEST(SemVer, FollowsTheOrderOfPrecedence) {
    const std::vector<QString> ascending{u"0.9.9"_s,
                                         u"1.0.0--5"_s,
                                         u"1.0.0--1"_s,
                                         u"1.0.0-0"_s,
                                         u"1.0.0-2"_s,
                                         u"1.0.0-10"_s,
                                         u"1.0.0-99999999999999999998"_s,
                                         u"1.0.0-99999999999999999999"_s,
                                         u"1.0.0-RC"_s,
                                         u"1.0.0-alpha"_s,
                                         u"1.0.0-alpha.1"_s,
                                         u"1.0.0-alpha.beta"_s,
                                         u"1.0.0-beta"_s,
                                         u"1.0.0-beta.2"_s,
                                         u"1.0.0-beta.11"_s,
                                         u"1.0.0-beta10"_s,
                                         u"1.0.0-beta2"_s,
                                         u"1.0.0-rc.1"_s,
                                         u"1.0.0-\uFFFD"_s,
                                         u"1.0.0-🎵"_s,
                                         u"1.0.0"_s,
                                         u"1.0.1-a"_s,
                                         u"1.0.1"_s,
                                         u"1.1.0"_s,
                                         u"1.10.0"_s,
                                         u"2.0.0"_s};
    for (std::size_t i = 0; i < ascending.size(); ++i) {
        for (std::size_t j = 0; j < ascending.size(); ++j) {
            EXPECT_EQ(version(ascending[i]) < version(ascending[j]), i < j)
                << ascending[i].toStdString() << " and " << ascending[j].toStdString();
        }
    }
    const SemVer one = version(u"1.0.0-1"_s);
    const SemVer leadingZero = version(u"1.0.0-01"_s);
    EXPECT_FALSE(one < leadingZero);
    EXPECT_FALSE(leadingZero < one);
    EXPECT_NE(one, leadingZero);
}

/// Versions as they are written by people: few numbers, so that equal ones meet often.
class Generator {
public:
    SemVer next() {
        SemVer version{pick(3), pick(3), pick(3), {}};
        for (std::int64_t left = pick(4); left > 0; --left) {
            version.prerelease += pick(2) == 0 ? QString::number(pick(25)) : m_words[pick(m_words.size())];
        }
        return version;
    }

private:
    std::int64_t pick(std::int64_t count) {
        return std::uniform_int_distribution<std::int64_t>(0, count - 1)(m_random);
    }

    const QStringList m_words{u"alpha"_s, u"beta"_s, u"rc"_s, u"RC"_s, u"1a"_s, u"a-1"_s, u"é"_s, u"🎵"_s};
    std::mt19937 m_random{20250301};
};

TEST(SemVer, IsATotalOrderThatSurvivesItsOwnText) {
    Generator generator;
    for (int round = 0; round < 20000; ++round) {
        const SemVer a = generator.next();
        const SemVer b = generator.next();
        const SemVer c = generator.next();
        ASSERT_EQ(SemVer::parse(a.description()), a);
        ASSERT_EQ((a < b) + (b < a) + (a == b), 1) << a.description().toStdString() << b.description().toStdString();
        if (a < b && b < c) {
            ASSERT_LT(a, c) << b.description().toStdString();
        }
        ASSERT_EQ(a <= b, a < b || a == b);
        ASSERT_EQ(a >= b, b <= a);
        if (a == b) {
            ASSERT_EQ(qHash(a, 7), qHash(b, 7));
        }
        SemVer release = a;
        release.prerelease.clear();
        ASSERT_LE(a, release);
    }
}

} // namespace
