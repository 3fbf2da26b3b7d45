#include "Tests/Helpers/Test.h"
#include "Tests/Helpers/Update/Signing.h"
#include "TunedeckCore/Support/Text/Base64.h"
#include "TunedeckCore/Update/UpdateFeed.h"

namespace tunedeck::test {

namespace {

/// Test vectors 1 and 3 of RFC 8032, section 7.1.
struct Vector {
    const char* publicKey;
    const char* message;
    const char* signature;
};

constexpr Vector vectors[] = {
    {"d75a980182b10ab7d54bfed3c964073a0ee172f3daa62325af021a68f707511a", "",
     "e5564300c360ac729086e2cc806e828a84877f1eb8e5d974d873e065224901555fb8821590a33bacc61e39701cf9b46bd25bf5f0595bbe24"
     "655141438e7a100b"},
    {"fc51cd8e6218a1a38da47ed00230f0580816ed13ba3303ac5deb911548908025", "af82",
     "6291d657deec24024827e69c3abe01a30ce548a284743a445e3680d7db5ac3ac18ff9b538d16f290ae67f760984dc6594a7c15e9716ed28d"
     "c027beceea1ec40a"},
};

QString base64(const char* hex) {
    return QString::fromLatin1(QByteArray::fromHex(hex).toBase64());
}

} // namespace

TEST(Signature, VerifiesThePublishedVectorsAndRejectsChangedBytes) {
    for (const Vector& vector : vectors) {
        const QByteArray message = QByteArray::fromHex(vector.message);
        const QString key = base64(vector.publicKey);
        EXPECT_TRUE(UpdateFeed::verify(message, base64(vector.signature), key));
        EXPECT_FALSE(UpdateFeed::verify(message + " ", base64(vector.signature), key));
        QByteArray changed = QByteArray::fromHex(vector.signature);
        changed[10] = static_cast<char>(changed[10] ^ 1);
        EXPECT_FALSE(UpdateFeed::verify(message, QString::fromLatin1(changed.toBase64()), key));
    }
    EXPECT_FALSE(UpdateFeed::verify({}, base64(vectors[0].signature), base64(vectors[1].publicKey)));
}

TEST(Signature, AllowsSurroundingWhiteSpaceOnly) {
    const QString key = base64(vectors[0].publicKey);
    const QString signature = base64(vectors[0].signature);
    EXPECT_TRUE(UpdateFeed::verify({}, u"\r\n \t"_s + signature + u"\n\n"_s, key));
    EXPECT_FALSE(UpdateFeed::verify({}, signature.left(40) + u'\n' + signature.mid(40), key));
    EXPECT_FALSE(UpdateFeed::verify({}, signature, key + u'\n'));
    EXPECT_FALSE(UpdateFeed::verify({}, QString(), key));
    EXPECT_FALSE(UpdateFeed::verify({}, signature.left(84) + u"===="_s, key));
    EXPECT_FALSE(UpdateFeed::verify({}, signature, signature));
}

TEST(Base64, ReadsTheStandardAlphabetWithItsPaddingOnly) {
    EXPECT_EQ(decodeBase64("AP+/"), QByteArray("\x00\xff\xbf", 3));
    EXPECT_EQ(decodeBase64("YQ=="), "a");
    EXPECT_EQ(decodeBase64(""), "");
    for (const char* bad : {"YQ", "YQ=", "YQ===", "Y===", "=", "YQ==YQ==", "AP-_", "AP +", "YQ==\n", "Y\xc3\xa9=="}) {
        EXPECT_FALSE(decodeBase64(bad)) << bad;
    }
}

} // namespace tunedeck::test
