// Runs every target over its seeds and over what fuzzing has found, in every build.
#include "Tests/Fuzz/Targets.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <map>

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {

TEST(Corpus, BreaksNoPromise) {
    const std::map<QString, void (*)(const QByteArray&)> targets{
        {u"documents"_s, fuzz::documents},       {u"httpReply"_s, fuzz::httpReply},
        {u"jsonValues"_s, fuzz::jsonValues},     {u"mask"_s, fuzz::mask},
        {u"propertyList"_s, fuzz::propertyList}, {u"zipArchive"_s, fuzz::zipArchive}};
    for (const auto& [name, target] : targets) {
        const auto seeds = QDir(u"" FUZZ_CORPUS "/"_s + name).entryInfoList(QDir::Files);
        EXPECT_FALSE(seeds.isEmpty()) << name.toStdString();
        for (const auto& seed : seeds) {
            QFile file(seed.filePath());
            ASSERT_TRUE(file.open(QIODevice::ReadOnly));
            const QByteArray input = file.readAll();
            target(input);
            for (qsizetype length = 0; length < input.size(); length += 1 + length / 16) {
                target(input.first(length)); // truncated, as after a crash of the writer
            }
        }
    }
}

} // namespace
