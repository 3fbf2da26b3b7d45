#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Support/Text/Base64.h"
#include "TunedeckCore/Update/UpdateFeed.h"

namespace tunedeck::test {

namespace {

QString base64(const char* hex) {
    return QString::fromLatin1(QByteArray::fromHex(hex).toBase64());
}

// Test vector 3 of RFC 8032, section 7.1.
const QByteArray message = "\xaf\x82";
const QString key = base64("fc51cd8e6218a1a38da47ed00230f0580816ed13ba3303ac5deb911548908025");
const QString signature = base64("6291d657deec24024827e69c3abe01a30ce548a284743a445e3680d7db5ac3ac"
                                 "18ff9b538d16f290ae67f760984dc6594a7c15e9716ed28dc027beceea1ec40a");

} // namespace

TEST(Signature, VerifiesThePublishedVectorWithWhiteSpaceAroundTheSignature) {
    EXPECT_TRUE(UpdateFeed::verify(message, signature, key));
    EXPECT_FALSE(UpdateFeed::verify(message + " ", signature, key));
    EXPECT_FALSE(UpdateFeed::verify(message, u'A' + signature.mid(1), key));
    EXPECT_FALSE(UpdateFeed::verify(message, signature, u'A' + key.mid(1)));
    EXPECT_FALSE(UpdateFeed::verify(message, QString(), key));
    EXPECT_FALSE(UpdateFeed::verify(message, signature, signature));
    EXPECT_TRUE(UpdateFeed::verify(message, u"\r\n \t"_s + signature + u"\n\n"_s, key));
    EXPECT_FALSE(UpdateFeed::verify(message, signature.left(40) + u'\n' + signature.mid(40), key));
    EXPECT_FALSE(UpdateFeed::verify(message, signature, key + u'\n'));
}

TEST(Base64, AcceptsTheStandardAlphabetWithPaddingOnly) {
    EXPECT_EQ(decodeBase64("AP+/"), QByteArray("\x00\xff\xbf", 3));
    EXPECT_EQ(decodeBase64("YQ=="), "a");
    EXPECT_EQ(decodeBase64(""), "");
    for (const char* bad : {"YQ", "YQ=", "YQ===", "Y===", "=", "YQ==YQ==", "AP-_", "AP +", "YQ==\n", "Y\xc3\xa9=="}) {
        EXPECT_FALSE(decodeBase64(bad)) << bad;
    }
}

} // namespace tunedeck::test
