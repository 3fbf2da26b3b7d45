#include "Tests/Fuzz/Targets.h"
#include "Tests/Helpers/Update/Signing.h"
#include "Tests/Helpers/Update/Zip.h"
#include "TunedeckCore/Support/Files/RemoveTree.h"
#include "TunedeckCore/Update/Archive.h"
#include "TunedeckCore/Update/FeedSignature.h"
#include "TunedeckCore/Update/SemVer.h"
#include "TunedeckCore/Update/UpdateCheck.h"
#include "TunedeckCore/Update/UpdateFeed.h"

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

/// Checks a feed whose download completes at once.
UpdateCheck check(const test::SigningKey& key, const QByteArray& document, const QByteArray& signature) {
    const auto answer = [](QByteArray bytes) -> QCoro::Task<std::expected<UpdateFeed::Fetched, UpdateError>> {
        co_return UpdateFeed::Fetched{std::move(bytes)};
    };
    const UpdateFeed feed{.url = UpdateFeed::defaultURL(),
                          .publicKey = key.publicKey(),
                          .fetch = [&](const QUrl& url, const std::stop_token&) {
                              return answer(url.path().endsWith(u".sig") ? signature : document);
                          }};
    std::optional<UpdateCheck> result;
    auto task =
        feed.check(u"1.0.0"_s, SystemVersion{14, 2, 1}, {}).then([&](UpdateCheck found) { result = std::move(found); });
    require(result.has_value(), "the check doesn't wait");
    return *result;
}

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

void updateFeed(const QByteArray& input) {
    static const test::SigningKey key;
    // A line with a signature, then a feed.
    const qsizetype end = input.indexOf('\n');
    const QString claimed = QString::fromUtf8(input.left(end < 0 ? 0 : end));
    const QByteArray document = input.mid(end + 1);
    const QByteArray signature = key.sign(document);
    const bool isValid = isSignedBy(document, claimed, key.publicKey());
    require(!isValid || claimed.trimmed().toUtf8() == signature, "there is one signature");
    isSignedBy(document, QString::fromLatin1(signature), claimed);

    const UpdateCheck unsignedFeed{UpdateCheck::Failed{u"The update feed isn't signed by Tunedeck."_s}};
    require(check(key, document + " ", signature) == unsignedFeed, "a changed feed is rejected");
    const UpdateCheck checked = check(key, document, signature + "\n");
    require(checked != unsignedFeed, "a signed feed is read");
    if (const auto* failed = std::get_if<UpdateCheck::Failed>(&checked.value)) {
        require(!failed->message.isEmpty(), "a failure has a message");
    } else if (const auto* available = std::get_if<UpdateCheck::Available>(&checked.value)) {
        const auto version = SemVer::parse(available->release.version);
        require(version && *SemVer::parse(u"1.0.0"_s) < *version, "only newer versions are offered");
    }
}

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
        unpackZip(zip, to, {}, smallLimits);
        requireContained(fs::canonical(to.toStdString()));
        const auto everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
        require(QDir(folder.path()).entryList(everything).size() == 2 &&
                    QDir(folder.filePath(u"in"_s)).entryList(everything).size() == 1,
                "nothing is written outside");
        require(removeTree(to), "whatever was unpacked can be removed");
    }
}

} // namespace tunedeck::fuzz
