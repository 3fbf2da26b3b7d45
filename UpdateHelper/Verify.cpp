#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckCore/Update/Confined/UpdateSteps.h"
#include "TunedeckCore/Update/UpdateFeed.h"
#include "UpdateHelper/Subcommands.h"

#include <QFile>
#include <QStringDecoder>

#include <openssl/crypto.h>

namespace tunedeck::helper {

namespace {

/// Decodes UTF-8 with invalid sequences replaced. Keeps a byte order mark, which must not count as white space.
QString decodeText(const QByteArray& bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringConverter::Flag::ConvertInitialBom);
    return decoder(bytes);
}

} // namespace

Outcome verify(const Options& options) {
    OPENSSL_init_crypto(OPENSSL_INIT_NO_LOAD_CONFIG, nullptr); // which can't be read
    const QString file = QFile::decodeName(options.operands[0].c_str());
    if (options.operands.size() == 1) {
        return UpdateInstaller::sha256Hex(file);
    }
    const auto bytes = readFile(file);
    const auto signature = readFile(QFile::decodeName(options.operands[1].c_str()));
    if (!bytes || !signature) {
        return std::unexpected(UpdateError::other(QStringLiteral("The update feed can't be read.")));
    }
    if (!UpdateFeed::verify(*bytes, decodeText(*signature), QString::fromStdString(options.operands[2]))) {
        return std::unexpected(UpdateError{.kind = UpdateError::Kind::checksum});
    }
    return {};
}

} // namespace tunedeck::helper
