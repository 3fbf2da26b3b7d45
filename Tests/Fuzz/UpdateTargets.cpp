#include "Tests/Fuzz/Targets.h"
#include "TunedeckCore/Support/Files/RemoveTree.h"
#include "TunedeckCore/Support/Text/Base64.h"
#include "TunedeckCore/Update/Archive.h"
#include "TunedeckCore/Update/SemVer.h"
#include "TunedeckCore/Update/UpdateCheck.h"
#include "TunedeckCore/Update/UpdateFeed.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <archive.h>
#include <archive_entry.h>
#include <openssl/evp.h>

#include <filesystem>
#include <memory>

namespace tunedeck::fuzz {

namespace {

namespace fs = std::filesystem;

constexpr ArchiveLimits smallLimits{.entries = 50, .bytes = 1024 * 1024};

using Key = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;
using Context = std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)>;

/// Signs as the publisher does, always with the same key.
class Publisher {
public:
    Publisher()
        : m_key(EVP_PKEY_new_raw_private_key(EVP_PKEY_ED25519, nullptr,
                                             reinterpret_cast<const unsigned char*>("a key for nothing but fuzzing..."),
                                             32),
                &EVP_PKEY_free) {}

    [[nodiscard]] QString publicKey() const {
        QByteArray raw(32, '\0');
        std::size_t size = 32;
        EVP_PKEY_get_raw_public_key(m_key.get(), reinterpret_cast<unsigned char*>(raw.data()), &size);
        return QString::fromLatin1(raw.toBase64());
    }

    [[nodiscard]] QByteArray sign(const QByteArray& bytes) const {
        QByteArray signature(64, '\0');
        std::size_t size = 64;
        const Context context(EVP_MD_CTX_new(), &EVP_MD_CTX_free);
        EVP_DigestSignInit(context.get(), nullptr, nullptr, nullptr, m_key.get());
        EVP_DigestSign(context.get(), reinterpret_cast<unsigned char*>(signature.data()), &size,
                       reinterpret_cast<const unsigned char*>(bytes.constData()),
                       static_cast<std::size_t>(bytes.size()));
        return signature;
    }

private:
    Key m_key;
};

/// A check of a feed that is there at once, so that the task is done when it is started.
UpdateCheck check(const Publisher& publisher, const QByteArray& document, const QByteArray& signature) {
    const auto answer = [](QByteArray bytes) -> QCoro::Task<std::expected<UpdateFeed::Fetched, UpdateError>> {
        co_return UpdateFeed::Fetched{std::move(bytes)};
    };
    const UpdateFeed feed{.url = UpdateFeed::defaultURL(),
                          .publicKey = publisher.publicKey(),
                          .fetch = [&](const QUrl& url, const std::stop_token&) {
                              return answer(url.path().endsWith(u".sig") ? signature : document);
                          }};
    std::optional<UpdateCheck> result;
    auto task = feed.check(QStringLiteral("1.0.0"), SystemVersion{14, 2, 1}, {}).then([&](UpdateCheck found) {
        result = std::move(found);
    });
    require(result.has_value(), "a check of what is there waits for nothing");
    return *result;
}

/// An archive of an entry for each line: a letter for the kind, the name and, behind a tab, a link's target or
/// contents.
QByteArray zipOf(const QByteArray& description) {
    QByteArray made;
    const auto append = [](archive*, void* context, const void* bytes, std::size_t size) -> la_ssize_t {
        static_cast<QByteArray*>(context)->append(static_cast<const char*>(bytes), static_cast<qsizetype>(size));
        return static_cast<la_ssize_t>(size);
    };
    const std::unique_ptr<archive, decltype(&archive_write_free)> writer(archive_write_new(), &archive_write_free);
    archive_write_set_format_zip(writer.get());
    archive_write_open(writer.get(), &made, nullptr, append, nullptr);
    for (const QByteArray& line : description.split('\n')) {
        const QList<QByteArray> words = line.mid(1).split('\t');
        const QByteArray rest = words.value(1);
        const std::unique_ptr<archive_entry, decltype(&archive_entry_free)> entry(archive_entry_new(),
                                                                                  &archive_entry_free);
        archive_entry_copy_pathname(entry.get(), words[0].constData());
        switch (line.isEmpty() ? 'f' : line[0]) {
        case 'l':
            archive_entry_set_mode(entry.get(), 0120777);
            archive_entry_copy_symlink(entry.get(), rest.constData());
            break;
        case 'd':
            archive_entry_set_mode(entry.get(), 040755);
            break;
        case 's':
            archive_entry_set_mode(entry.get(), 0104755);
            break;
        default:
            archive_entry_set_mode(entry.get(), 0100644);
            archive_entry_set_size(entry.get(), rest.size());
        }
        archive_write_header(writer.get(), entry.get());
        archive_write_data(writer.get(), rest.constData(), static_cast<std::size_t>(rest.size()));
    }
    archive_write_close(writer.get());
    return made;
}

/// Whether nothing in the folder leads out of it or runs as somebody else.
void requireContained(const fs::path& root) {
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        const auto status = entry.symlink_status();
        require((status.permissions() & (fs::perms::set_uid | fs::perms::set_gid)) == fs::perms::none,
                "nothing unpacked runs as another user");
        require(fs::is_regular_file(status) || fs::is_directory(status) || fs::is_symlink(status),
                "only files, folders and links are unpacked");
        if (fs::is_symlink(status)) {
            std::error_code ignored;
            const auto target = fs::weakly_canonical(entry.path().parent_path() / fs::read_symlink(entry), ignored);
            require(ignored || target == root || target.native().starts_with(root.native() + "/"),
                    "no link leads out of the folder");
        }
    }
}

} // namespace

void base64(const QByteArray& input) {
    require(decodeBase64(input.toBase64()) == input, "what is encoded decodes as the same");
    const auto decoded = decodeBase64(input);
    if (decoded) {
        const QByteArray again = decoded->toBase64();
        require(again.size() == input.size() && again.count('=') == input.count('='), "the length is the text's");
        // Only the unused bits of the last character may differ.
        const qsizetype sure = std::max<qsizetype>(0, input.size() - 1 - input.count('='));
        require(again.first(sure) == input.first(sure), "every character counts");
    }
}

void updateFeed(const QByteArray& input) {
    static const Publisher publisher;
    // A signature's line and a feed.
    const qsizetype end = input.indexOf('\n');
    const QByteArray claimed = input.left(end < 0 ? 0 : end);
    const QByteArray document = input.mid(end + 1);
    const QByteArray signature = publisher.sign(document);

    const bool held = UpdateFeed::verify(document, QString::fromUtf8(claimed), publisher.publicKey());
    require(!held || decodeBase64(QString::fromUtf8(claimed).trimmed().toUtf8()) == signature,
            "there is one signature");
    UpdateFeed::verify(document, QString::fromLatin1(signature.toBase64()), QString::fromUtf8(claimed));

    const UpdateCheck unsignedFeed{UpdateCheck::Failed{QStringLiteral("The update feed isn't signed by Tunedeck.")}};
    require(check(publisher, document + " ", signature.toBase64()) == unsignedFeed,
            "other bytes need another signature");
    const UpdateCheck checked = check(publisher, document, signature.toBase64() + "\n");
    require(checked != unsignedFeed, "a signed feed is read");
    if (const auto* failed = std::get_if<UpdateCheck::Failed>(&checked.value)) {
        require(!failed->message.isEmpty(), "a failure has its words");
    } else if (const auto* available = std::get_if<UpdateCheck::Available>(&checked.value)) {
        const auto version = SemVer::parse(available->release.version);
        require(version && *SemVer::parse(QStringLiteral("1.0.0")) < *version, "only what is newer is offered");
    }
}

void zipArchive(const QByteArray& input) {
    const QTemporaryDir folder;
    const QString to = folder.filePath(QStringLiteral("in/to"));
    const QString zip = folder.filePath(QStringLiteral("a.zip"));
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
                    QDir(folder.filePath(QStringLiteral("in"))).entryList(everything).size() == 1,
                "nothing is written outside");
        require(removeTree(to), "whatever was unpacked can be removed");
    }
}

} // namespace tunedeck::fuzz
