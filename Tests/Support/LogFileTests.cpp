#include "Tests/Helpers/TemporaryHome.h"
#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Support/Files/FileDescriptor.h"
#include "TunedeckCore/Support/Files/LogFile.h"

#include <QFile>

#include <sys/stat.h>

namespace tunedeck::test {

TEST(LogFile, RenamesAFullFileAndKeepsOneOldFile) {
    TemporaryHome home;
    const auto path = home.path(u"log"_s);
    for (const auto& line : {u"12345"_s, u"6789"_s, u"new"_s}) {
        appendLine(path, line, 5);
    }
    EXPECT_EQ(home.read(u"log"_s), "new\n");
    EXPECT_EQ(home.read(u"log.1"_s), "6789\n");
}

TEST(LogFile, NeverBlocksOrRenamesWhatIsNoRegularFile) {
    TemporaryHome home;
    const auto fifo = home.path(u"fifo"_s);
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    appendLine(fifo, u"line"_s, 0);
    EXPECT_FALSE(QFile::exists(fifo + u".1"_s));
    const auto reader = openForReading(fifo);
    appendLine(fifo, u"line"_s, 0);
    char byte = 0;
    EXPECT_EQ(readSome(reader.get(), &byte, 1), 0) << "nothing is written to it, either";
}

} // namespace tunedeck::test
