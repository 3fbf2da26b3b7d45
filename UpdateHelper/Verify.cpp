#include "TunedeckCore/Support/Files/FileDescriptor.h"
#include "TunedeckCore/Update/Confined/UpdateSteps.h"
#include "TunedeckCore/Update/UpdateFeed.h"
#include "UpdateHelper/Subcommands.h"

#include <QFile>
#include <QStringDecoder>

#include <openssl/crypto.h>
#include <unistd.h>

#include <array>

namespace tunedeck::helper {

namespace {

constexpr qsizetype inputLimit = 4 * 1024 * 1024; // more than the application sends

QByteArray readInput() {
    QByteArray input;
    std::array<char, 64 * 1024> part{};
    ssize_t count = 0;
    while (input.size() <= inputLimit && (count = readSome(STDIN_FILENO, part.data(), part.size())) > 0) {
        input.append(part.data(), count);
    }
    return input;
}

/// Decodes UTF-8 with invalid sequences replaced. Keeps a byte order mark, which must not count as white space.
QString decodeText(const QByteArray& bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringConverter::Flag::ConvertInitialBom);
    return decoder(bytes);
}

} // namespace

Outcome verify(const Options& options) {
    OPENSSL_init_crypto(OPENSSL_INIT_NO_LOAD_CONFIG, nullptr); // which can't be read
    const auto& operands = options.operands;
    if (operands.size() == 1) {
        return UpdateInstaller::sha256Hex(QFile::decodeName(operands[0].c_str()));
    }
    const auto size = QByteArray::fromStdString(operands[1]).toLongLong();
    const QByteArray input = readInput();
    if (!UpdateFeed::verify(input.mid(size), decodeText(input.left(size)), QString::fromStdString(operands[0]))) {
        return std::unexpected(UpdateError{.kind = UpdateError::Kind::checksum});
    }
    return {};
}

} // namespace tunedeck::helper
