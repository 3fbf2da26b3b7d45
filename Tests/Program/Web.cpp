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

QByteArray zipOf(const QString& bundle, int more) {
    std::vector<ZipEntry> entries;
    for (int i = 0; i < more; ++i) {
        entries.push_back({.name = "Tunedeck.app/Contents/Resources/" + QByteArray::number(i)});
    }
    for (QDirIterator files(bundle, QDir::Files, QDirIterator::Subdirectories); files.hasNext();) {
        QFile file(files.next());
        file.open(QIODevice::ReadOnly);
        const bool isProgram = QFileInfo(file).isExecutable();
        entries.push_back({.name = QFile::encodeName(u"Tunedeck.app"_s + file.fileName().mid(bundle.size())),
                           .contents = file.readAll(),
                           .mode = isProgram ? 0100755U : 0100644U});
    }
    return zip(entries, {.stored = true});
}

void Web::publish(const QByteArray& archive, const Fault& fault, const QByteArray& diskImage) {
    const auto digest = QCryptographicHash::hash(archive, QCryptographicHash::Sha256).toHex();
    const auto feed = R"({"latest": {"version": "1.4.1", "notes": "Faster.", "url": ")" +
                      url("/Tunedeck.zip").toEncoded() + R"(", "sha256": ")" +
                      (fault.digest.isEmpty() ? digest : fault.digest) + '"' +
                      (diskImage.isEmpty() ? "" : R"(, "dmg_url": ")" + diskImage + '"') + "}}\n";
    on("GET /download/appcast.json", behave::answer(200, feed));
    on("GET /download/appcast.json.sig", behave::answer(200, SigningKey(fault.secret).sign(feed) + '\n'));
    on("GET /Tunedeck.zip", fault.delivery ? fault.delivery : behave::answer(200, archive));
}

} // namespace tunedeck::test
