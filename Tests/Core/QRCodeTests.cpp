#include "Tests/Helpers/Test.h"
#include "TunedeckCore/QRCode.h"

#include <QProcess>

namespace tunedeck::test {

namespace {

constexpr int panelSize = 112; // points on a side, as the panel shows a code

/// What a scanner reads from a picture of the code with sides of this length, drawn without smoothing.
QString scanned(const QRCode::Image& code, int side) {
    QByteArray picture = "P5 " + QByteArray::number(side) + " " + QByteArray::number(side) + " 255\n";
    for (int i = 0; i < side * side; ++i) {
        picture.append(code.isDark(i % side * code.size / side, i / side * code.size / side) ? '\0' : '\xff');
    }
    const TemporaryHome home;
    QProcess scanner;
    scanner.start(u"zbarimg"_s, {u"--raw"_s, u"-q"_s, home.write(u"code.pgm"_s, picture)});
    EXPECT_TRUE(scanner.waitForFinished()) << "zbarimg is missing";
    return QString::fromUtf8(scanner.readAllStandardOutput()).trimmed();
}

} // namespace

TEST(QRCode, ScansAtTheSizeOfThePanelAndHasAQuietZone) {
    const QString text = u"https://t.me/tunedeck_bot?start=Xy9_-s3cretsecretsecret Grüße 🎧"_s;
    const auto code = QRCode::image(text);
    ASSERT_TRUE(code);
    for (const int scale : {1, 2, 3}) {
        EXPECT_EQ(scanned(*code, panelSize * scale), text) << scale;
    }
    for (int i = 0; i < code->size; ++i) {
        for (int edge = 0; edge < 4; ++edge) {
            EXPECT_FALSE(code->isDark(i, edge) || code->isDark(edge, i) || code->isDark(i, code->size - 1 - edge));
        }
    }
    EXPECT_TRUE(code->isDark(4, 4)) << "the finder's corner begins right behind the quiet zone";
}

TEST(QRCode, RejectsEmptyAndTooLongTexts) {
    EXPECT_FALSE(QRCode::image(QString()));
    EXPECT_TRUE(QRCode::image(QString(2331, u'x'))) << "the most that version 40 holds at level M";
    EXPECT_FALSE(QRCode::image(QString(2332, u'x')));
}

} // namespace tunedeck::test
