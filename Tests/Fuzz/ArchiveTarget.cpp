#include "Tests/Fuzz/Targets.h"
#include "Tests/Helpers/Update/Zip.h"
#include "TunedeckCore/Support/Files/RemoveTree.h"
#include "TunedeckCore/Update/Confined/Archive.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <filesystem>
#include <map>
#include <vector>

namespace tunedeck::fuzz {

using namespace Qt::StringLiterals;

namespace {

namespace fs = std::filesystem;

constexpr ArchiveLimits smallLimits{.entries = 50, .bytes = 1024 * 1024};

/// An archive with one entry per line: a letter for its type, its name and, after a tab, its contents or link target.
QByteArray zipOf(const QByteArray& description) {
    const std::map<char, unsigned> modes{{'l', 0120777}, {'d', 040755}, {'s', 0104755}};
    std::vector<test::ZipEntry> entries;
    for (const QByteArray& line : description.split('\n')) {
        const QList<QByteArray> words = line.mid(1).split('\t');
        const auto mode = modes.find(line.isEmpty() ? 'f' : line[0]);
        entries.push_back({.name = words[0], .contents = words.value(1)});
        entries.back().mode = mode == modes.end() ? 0100644 : mode->second;
        entries.back().linkTarget = line.startsWith('l') ? words.value(1) : QByteArray();
    }
    return test::zip(entries);
}

/// Requires that no link leads out of the folder and no file runs as another user.
void requireContained(const fs::path& root) {
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        const auto status = entry.symlink_status();
        require((status.permissions() & (fs::perms::set_uid | fs::perms::set_gid)) == fs::perms::none,
                "nothing unpacked runs as another user");
        if (fs::is_symlink(status)) {
            std::error_code ignored;
            const auto target = fs::weakly_canonical(entry.path().parent_path() / fs::read_symlink(entry), ignored);
            require(ignored || (target / "").native().starts_with(root.native() + "/"),
                    "no link leads out of the folder");
        } else {
            require(fs::is_regular_file(status) || fs::is_directory(status),
                    "only files, folders and links are unpacked");
        }
    }
}

} // namespace

void zipArchive(const QByteArray& input) {
    const QTemporaryDir folder;
    const QString to = folder.filePath(u"in/to"_s);
    const QString zip = folder.filePath(u"a.zip"_s);
    for (const QByteArray& bytes : {input, zipOf(input)}) {
        QDir().mkpath(to);
        QFile file(zip);
        require(file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size(),
                "the archive is written");
        file.close();
        static_cast<void>(unpackZip(zip, to, smallLimits));
        requireContained(fs::canonical(to.toStdString()));
        const auto everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
        require(QDir(folder.path()).entryList(everything).size() == 2 &&
                    QDir(folder.filePath(u"in"_s)).entryList(everything).size() == 1,
                "nothing is written outside");
        require(removeTree(to), "whatever was unpacked can be removed");
    }
}

} // namespace tunedeck::fuzz
