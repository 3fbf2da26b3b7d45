#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Support/Files/AtomicFile.h"

namespace tunedeck::test {

TEST(ProcFileTest, ReadsFilesWithoutASize) {
    EXPECT_TRUE(readFile(u"/proc/self/environ"_s).value_or(QByteArray()).contains("PATH="));
}

} // namespace tunedeck::test
