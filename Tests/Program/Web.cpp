#include "Tests/Program/Web.h"

#include "Tests/Helpers/Update/Signing.h"
#include "Tests/Helpers/Update/Zip.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <vector>

namespace tunedeck::test {

using namespace Qt::StringLiterals;

QByteArray zipOf(const QString& bundle, int emptyFiles) {
    std::vector<ZipEntry> entries;
    for (int i = 0; i < emptyFiles; ++i) {
        entries.push_back({.name = "Tunedeck.app/Contents/Resources/" + QByteArray::number(i)});
    }
    for (QDirIterator files(bundle, QDir::Files, QDirIterator::Subdirectories); files.hasNext();) {
        QFile file(files.next());
        file.open(QIODevice::ReadOnly);
        entries.push_back({.name = QFile::encodeName(u"Tunedeck.app"_s + file.fileName().mid(bundle.size())),
                           .contents = file.readAll(),
                           .mode = QFileInfo(file).isExecutable() ? 0100755U : 0100644U});
    }
    return zip(entries, {.stored = true});
}

void Web::publish(const QByteArray& archive, Behaviour delivery) {
    // The first private key of RFC 8032, section 7.1.
    const SigningKey key(QByteArray::fromHex("9d61b19deffd5a60ba844af492ec2cc44449c5697b326919703bac031cae7f60"));
    const auto feed = R"({"latest": {"version": "1.4.1", "notes": "Faster.", "url": ")" +
                      url("/Tunedeck.zip").toEncoded() + R"(", "sha256": ")" +
                      QCryptographicHash::hash(archive, QCryptographicHash::Sha256).toHex() + "\"}}\n";
    on("GET /download/appcast.json", behave::answer(200, feed));
    on("GET /download/appcast.json.sig", behave::answer(200, key.sign(feed) + '\n'));
    on("GET /Tunedeck.zip", delivery ? std::move(delivery) : behave::answer(200, archive));
}

} // namespace tunedeck::test
