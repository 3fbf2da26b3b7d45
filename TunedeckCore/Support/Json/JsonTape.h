#pragma once

#include "TunedeckCore/Support/Json/Json.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <cstdint>
#include <expected>
#include <vector>

namespace tunedeck::json {

/// One value of a parsed document or one key of an object.
struct Token {
    enum class Kind : std::uint8_t { Null, False, True, Number, Text, List, Map };

    std::uint32_t offset = 0; ///< of the text in the tape's bytes
    std::uint32_t length = 0; ///< of the text in bytes; 0 for all but Number and Text
    std::uint32_t next = 0;   ///< index of the token after this value and everything in it
    Kind kind = Kind::Null;
};

/// A parsed document as a flat list in its own order: an object is followed by key, value, key, value up to its
/// `next`, an array by its elements. Texts are unescaped UTF-8, numbers stay as they were written.
struct Tape {
    QByteArray bytes;
    std::vector<Token> tokens; ///< never empty; the document itself comes first

    [[nodiscard]] QByteArrayView text(const Token& token) const {
        return QByteArrayView(bytes).sliced(token.offset, token.length);
    }

    /// The text with every character of it, also a byte-order mark at its start, which QString::fromUtf8() drops.
    [[nodiscard]] QString string(const Token& token) const;
};

/// Parses a whole document. White space around it and a byte-order mark before it are accepted, anything else beside
/// it is not, nor is text that is not strict UTF-8. Uses no stack for nesting.
std::expected<Tape, Error> parseTape(const QByteArray& document, Limits limits);

} // namespace tunedeck::json
