#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Diagnostics.h"
#include "TunedeckCore/Masking.h"

#include <QFile>

#include <sys/stat.h>

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {

TEST(Mask, HidesTokensCodesAndLongRuns) {
    const QString run = u"abcdefghij0123456789_-AZ"_s; // 24
    const std::vector<std::pair<QString, QString>> cases{
        {u"Authorization: Bearer abc.def"_s, u"Authorization: Bearer …"_s},
        {u"forBEARER \t\u00a0\n a b"_s, u"forBEARER \t\u00a0\n … b"_s},
        {u"bearer bearer x"_s, u"bearer … x"_s},
        {u"https://t.me/bot?start=x-1_Z&a=b"_s, u"https://t.me/bot?start=…&a=b"_s},
        {u"?a=b&START=1 ?start=é"_s, u"?a=b&START=… ?start=é"_s},
        {run, u"abcd…"_s},
        {u"/"_s + run + u"xyz/mcp"_s, u"/abcd…/mcp"_s},
        {run + u"."_s + run + u"é"_s + run, u"abcd….abcd…éabcd…"_s},
        {u"?start="_s + run, u"?start=…"_s},
        {u"token=\""_s + run.repeated(1000) + u"\""_s, u"token=\"abcd…\""_s},
    };
    for (const auto& [text, masked] : cases) {
        EXPECT_EQ(Diagnostics::mask(text), masked) << text.toStdString();
        EXPECT_EQ(Diagnostics::mask(masked), masked) << "masked twice";
    }
}

TEST(Mask, TreatsExactlyUnicodeWhiteSpaceAsSpaces) {
    const auto masked = [](int between) {
        const auto text = u"bearer%1a%1b"_s.arg(QChar(between));
        return Diagnostics::mask(text) == u"bearer%1…%1b"_s.arg(QChar(between));
    };
    for (const int blank :
         {0x09, 0x0b, 0x0d, 0x85, 0xa0, 0x1680, 0x2000, 0x200a, 0x2028, 0x2029, 0x202f, 0x205f, 0x3000}) {
        EXPECT_TRUE(masked(blank)) << std::hex << blank;
    }
    for (const int other : {0x08, 0x1c, 0x180e, 0x1fff, 0x200b, 0x2060, 0xfeff}) {
        EXPECT_FALSE(masked(other)) << std::hex << other;
    }
}

TEST(Mask, KeepsTextWithoutSecrets) {
    for (const auto& text :
         {u""_s, u"bearer"_s, u"bearer "_s, u"bearer\n"_s, u"bearertoken"_s, u"the bear er x"_s, u"start=abc"_s,
          u"?started=abc"_s, u"?start= abc"_s, u"?start="_s, u"&restart=abc"_s, u"abcdefghij0123456789_-A"_s,
          u"2025-03-01T18:04:05Z ERROR tunedeck::jobs: 12 tracks failed"_s, u"6ff42ae2-765d-4adf.8112"_s,
          u"/home/me/Music/Friday Night (12 tracks)/01 – Intro.mp3"_s, u"ééééééééééééééééééééééééééé"_s,
          u"https://r.example/v1/status?x=1&y=2"_s, u"…"_s}) {
        EXPECT_EQ(Diagnostics::mask(text), text);
    }
}

/// Quadratic time on any of these would exceed the time limit.
TEST(Mask, TakesLinearTimeAndHidesWhatItCannotRead) {
    EXPECT_EQ(Diagnostics::mask(u"a bearer b "_s + QChar(0xD800)), QString(u'…'));
    constexpr qsizetype million = 1'000'000;
    for (const auto& text : {QString(3 * million, u'x'), u"bearer"_s.repeated(million / 2),
                             u"bearer "_s.repeated(million / 2), u"bearer"_s + QString(3 * million, u' '),
                             u"?start="_s.repeated(million / 2), u"aaaaaaaaaaaaaaaaaaaaaaa."_s.repeated(million / 8)}) {
        EXPECT_LE(Diagnostics::mask(text).size(), text.size());
    }
}

class LogTail : public testing::Test {
protected:
    QStringList lines(const QByteArray& log, int limit = 50, std::int64_t tailBytes = 512 * 1024) const {
        return Diagnostics::warningLines(home.write(u"log"_s, log), limit, tailBytes);
    }

    test::TemporaryHome home;
};

TEST_F(LogTail, KeepsTheLastWarningsAndErrorsInOrder) {
    EXPECT_EQ(lines("t WARN a\nt INFO b\n\nt ERROR c\nWARN d\nt WARN\nt WARNING e\nt  WARN  f \xFF"),
              (QStringList{u"t WARN a"_s, u"t ERROR c"_s, u"t  WARN  f \uFFFD"_s}));
    EXPECT_EQ(lines("1 WARN \n2 WARN \n3 WARN \n", 2), (QStringList{u"2 WARN "_s, u"3 WARN "_s}));
    EXPECT_EQ(lines("1 WARN \n", 0), QStringList());
    EXPECT_EQ(lines(""), QStringList());
}

TEST_F(LogTail, ReadsOnlyTheTail) {
    const QByteArray log = "1 WARN one\n2 WARN two\n";
    EXPECT_EQ(lines(log, 50, log.size()).size(), 2);
    EXPECT_EQ(lines(log, 50, 17), QStringList(u"2 WARN two"_s));
    EXPECT_EQ(lines(log, 50, 21), (QStringList{u" WARN one"_s, u"2 WARN two"_s}));
    EXPECT_EQ(lines(log, 50, 0), QStringList());
    QFile sparse(home.path(u"sparse"_s));
    ASSERT_TRUE(sparse.open(QIODevice::WriteOnly) && sparse.resize(1LL << 40) && sparse.seek(1LL << 40));
    sparse.write("\nt ERROR at the end\n");
    sparse.close();
    EXPECT_EQ(Diagnostics::warningLines(sparse.fileName(), 50, 4096), QStringList(u"t ERROR at the end"_s));
}

TEST_F(LogTail, IsEmptyWithoutAReadableFileAndNeverBlocks) {
    EXPECT_EQ(Diagnostics::warningLines(home.path(u"missing"_s), 50, 4096), QStringList());
    EXPECT_EQ(Diagnostics::warningLines(home.path(), 50, 4096), QStringList());
    EXPECT_EQ(Diagnostics::warningLines(u"/dev/zero"_s, 50, 4096), QStringList());
    const QString pipe = home.path(u"pipe"_s);
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_EQ(Diagnostics::warningLines(pipe, 50, 4096), QStringList());
}

ServiceStatus status() {
    ServiceStatus status;
    status.downloadDir = u"/music"_s;
    status.downloadDirWritable = true;
    status.importXml = u"/music/import.xml"_s;
    status.cloud.enabled = true;
    for (int i = 1; i <= 6; ++i) {
        status.recentJobs.push_back({.jobId = u"j%1"_s.arg(i), .state = u"done"_s, .message = u"m%1"_s.arg(i)});
    }
    return status;
}

const QDateTime moment(QDate(2025, 3, 1), QTime(18, 4, 5), Qt::UTC);

TEST(Diagnostics, OmitsUnknownParts) {
    Diagnostics::Input input{u"1.2.3"_s, {}, u"14.5"_s, u"Apple silicon"_s, {}, {}, {}, {}};
    EXPECT_EQ(Diagnostics::report(input, moment), uR"(Tunedeck diagnostics · 2025-03-01T18:04:05Z
App 1.2.3 · service not running
macOS 14.5 · Apple silicon
Assistants: none

Recent warnings and errors:
(none))"_s);
    input.status = status();
    input.status->recentJobs.clear();
    input.status->rekordboxDb = ServiceStatus::Library{};
    EXPECT_TRUE(Diagnostics::report(input, moment).contains(uR"(
Cloud: on
Downloads: /music (writable)
Import XML: /music/import.xml
Rekordbox library: v— · 0 pending · 0 failed
Assistants: none
)"_s));
}

TEST(Diagnostics, ReportsAllPartsAndMasksThem) {
    Diagnostics::Input input{u"1.2.3"_s, u"2.0"_s, u"14.5"_s, u"Intel (x86_64)"_s, status(), ToolboxReport{}, {}, {}};
    input.status->cloud.protocol = 3;
    input.status->cloud.connected = false;
    input.status->xmlVersion = u"7"_s;
    input.status->downloadDirWritable = false;
    input.status->rekordboxDb = ServiceStatus::Library{.rekordboxRunning = true,
                                                       .pending = {{}, {}},
                                                       .failed = {{}},
                                                       .lastError = u"Bearer secret"_s,
                                                       .currentVersion = u"42"_s};
    input.toolbox->tools = {{u"yt-dlp"_s, u"yt-dlp==2025.1"_s, {}, true}, {u"ffmpeg"_s, {}, {}, false}};
    input.toolbox->venvs = {{u"spotdl"_s, u"4"_s, {}, true}};
    input.toolbox->error = u"offline"_s;
    input.toolbox->manifest = u"2025-03"_s;
    AssistantLink telegram;
    telegram.kind = u"telegram"_s;
    telegram.lastUsedAt = u"t"_s;
    AssistantLink claude;
    claude.kind = u"claude"_s;
    claude.lastUsedAt = u"t"_s;
    input.links = {telegram, claude};
    input.logLines = {u"t WARN https://r.example/0123456789abcdefghijklmn/mcp"_s, u"t ERROR two"_s};
    EXPECT_EQ(Diagnostics::report(input, moment.toOffsetFromUtc(3600)), uR"(Tunedeck diagnostics · 2025-03-01T18:04:05Z
App 1.2.3 · service 2.0
macOS 14.5 · Intel (x86_64)
Cloud: on · protocol 3 · not connected
Downloads: /music (NOT writable)
Import XML: /music/import.xml · v7
Rekordbox library: v42 · 2 pending · 1 failed · Rekordbox open
  last error: Bearer …
Job j1 done: m1
Job j2 done: m2
Job j3 done: m3
Job j4 done: m4
Job j5 done: m5
Tools: yt-dlp 2025.1, ffmpeg missing (not ready)
  toolbox error: offline
  manifest: 2025-03
Assistants: Telegram (not used yet), Claude (used)

Recent warnings and errors:
t WARN https://r.example/0123…/mcp
t ERROR two)"_s);
}

} // namespace
