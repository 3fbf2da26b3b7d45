#include "DemoService/Files/JsonFile.h"

#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckCore/Support/Json/Parse.h"

#include <QFileInfo>

namespace tunedeck::demo {

json::Object readObject(const QString& path) {
    return json::parseObject(tunedeck::readFile(path).value_or(QByteArray())).value_or(json::Object{});
}

std::expected<void, QString> writeFile(const QString& path, const QByteArray& bytes) {
    const auto folder = createFolder(QFileInfo(path).path());
    return folder ? writeFileAtomically(path, bytes, fileLimit) : folder;
}

} // namespace tunedeck::demo
