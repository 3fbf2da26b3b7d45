#include "TunedeckCore/Support/Files/RemoveTree.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/fsuid.h>
#include <sys/stat.h>

namespace tunedeck::test {

using namespace Qt::StringLiterals;

TEST(RemoveTree, RemovesFoldersThatAreNotWritable) {
    const auto user = ::setfsuid(65534); // root may write anywhere
    const QTemporaryDir home;
    QDir(home.path()).mkpath(u"tree/inner/folder"_s);
    for (const auto* name : {"tree/inner", "tree"}) {
        ::chmod(QFile::encodeName(home.filePath(QString::fromLatin1(name))).constData(), 0500);
    }
    EXPECT_TRUE(removeTree(home.filePath(u"tree"_s)));
    EXPECT_FALSE(QFileInfo::exists(home.filePath(u"tree"_s)));
    ::setfsuid(static_cast<uid_t>(user));
}

} // namespace tunedeck::test
