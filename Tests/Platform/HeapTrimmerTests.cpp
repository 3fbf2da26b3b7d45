#include "Tests/Helpers/Test.h"
#include "TunedeckMenu/Platform/HeapTrimmer.h"

#include <QFile>

#include <malloc.h>

#include <memory>
#include <vector>

namespace tunedeck::test {
namespace {

/// The memory that only this process uses, in MiB.
int privateMemory() {
    QFile file(u"/proc/self/smaps_rollup"_s);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().split('\n');
    const auto line =
        std::ranges::find_if(lines, [](const QByteArray& each) { return each.startsWith("Private_Dirty"); });
    return line->simplified().split(' ').at(1).toInt() / 1024;
}

TEST(HeapTrimmer, GivesTheMemoryOfALargeDocumentBack) {
    if (mallinfo2().arena == 0) {
        GTEST_SKIP() << "the sanitizers have an allocator of their own";
    }
    HeapTrimmer heap;
    heap.trim();
    const int before = privateMemory();
    std::vector<std::unique_ptr<QByteArray>> texts(200'000);
    for (auto& text : texts) {
        text = std::make_unique<QByteArray>(300, 'x');
    }
    const auto last = std::move(texts.back()); // keeps the end of the heap in use
    texts.clear();
    ASSERT_GT(privateMemory(), before + 40);
    heap.trim();
    EXPECT_LT(privateMemory(), before + 20);
}

} // namespace
} // namespace tunedeck::test
