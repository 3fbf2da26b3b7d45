// Runs every target over its seeds and over what fuzzing has found, in every build.
#include "Tests/Fuzz/Targets.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <utility>

using namespace tunedeck;

namespace {

using Target = std::pair<const char*, void (*)(const QByteArray&)>;

class Corpus : public testing::TestWithParam<Target> {};

TEST_P(Corpus, BreaksNoPromise) {
    const QDir folder(QStringLiteral(FUZZ_CORPUS "/") + QString::fromLatin1(GetParam().first));
    const QStringList names = folder.entryList(QDir::Files);
    EXPECT_FALSE(names.isEmpty());
    for (const QString& name : names) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray input = file.readAll();
        GetParam().second(input);
        for (qsizetype length = 0; length < input.size(); length += 1 + length / 16) {
            GetParam().second(input.first(length)); // truncated, as after a crash of the writer
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Of, Corpus,
                         testing::Values(Target{"documents", fuzz::documents}, Target{"jsonValues", fuzz::jsonValues},
                                         Target{"mask", fuzz::mask}, Target{"propertyList", fuzz::propertyList},
                                         Target{"semVer", fuzz::semVer}, Target{"timestamp", fuzz::timestamp},
                                         Target{"tunnelConfig", fuzz::tunnelConfig},
                                         Target{"updateFeed", fuzz::updateFeed},
                                         Target{"zipArchive", fuzz::zipArchive}),
                         [](const auto& target) { return std::string(target.param.first); });

} // namespace
