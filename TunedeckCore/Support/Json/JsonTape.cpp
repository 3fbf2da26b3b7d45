#include "TunedeckCore/Support/Json/JsonTape.h"

#include <QStringDecoder>

#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace tunedeck::json {

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView byteOrderMark = "\xEF\xBB\xBF";
constexpr unsigned parseFlags =
    rapidjson::kParseInsituFlag | rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;

/// Whether an escape has left half a surrogate pair in a text. The parser refuses a lone first half itself; the
/// document's bytes have been checked before, so only an escape can have made one.
bool holdsSurrogate(const char* text, std::size_t length) {
    const char* end = text + length;
    for (const char* at = text; at != end; ++at) {
        at = static_cast<const char*>(std::memchr(at, 0xED, static_cast<std::size_t>(end - at)));
        if (at == nullptr) {
            return false;
        }
        if (end - at > 1 && static_cast<unsigned char>(at[1]) >= 0xA0) {
            return true;
        }
    }
    return false;
}

/// Receives the parser's events and writes the tape.
class TapeWriter {
public:
    enum class Refusal { None, Depth, Surrogate };

    TapeWriter(std::vector<Token>& tokens, const char* bytes, int depth)
        : m_tokens(tokens), m_bytes(bytes), m_depth(depth) {}

    [[nodiscard]] Refusal refusal() const { return m_refusal; }

    bool Null() { return add(Token::Kind::Null); }
    bool Bool(bool value) { return add(value ? Token::Kind::True : Token::Kind::False); }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        return add(Token::Kind::Number, text, length);
    }
    bool String(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        if (holdsSurrogate(text, length)) {
            m_refusal = Refusal::Surrogate;
            return false;
        }
        return add(Token::Kind::Text, text, length);
    }
    bool Key(const char* text, rapidjson::SizeType length, bool copy) { return String(text, length, copy); }
    bool StartObject() { return open(Token::Kind::Map); }
    bool EndObject(rapidjson::SizeType /*count*/) { return close(); }
    bool StartArray() { return open(Token::Kind::List); }
    bool EndArray(rapidjson::SizeType /*count*/) { return close(); }

    // Numbers come as their text only; the parser's interface asks for these all the same.
    static bool Int(int) { return false; }
    static bool Uint(unsigned) { return false; }
    static bool Int64(std::int64_t) { return false; }
    static bool Uint64(std::uint64_t) { return false; }
    static bool Double(double) { return false; }

private:
    bool add(Token::Kind kind, const char* text = nullptr, rapidjson::SizeType length = 0) {
        Token token;
        token.kind = kind;
        token.offset = text == nullptr ? 0 : static_cast<std::uint32_t>(text - m_bytes);
        token.length = length;
        token.next = static_cast<std::uint32_t>(m_tokens.size()) + 1;
        m_tokens.push_back(token);
        return true;
    }

    bool open(Token::Kind kind) {
        if (static_cast<int>(m_open.size()) >= m_depth) {
            m_refusal = Refusal::Depth;
            return false;
        }
        m_open.push_back(static_cast<std::uint32_t>(m_tokens.size()));
        return add(kind);
    }

    bool close() {
        m_tokens[m_open.back()].next = static_cast<std::uint32_t>(m_tokens.size());
        m_open.pop_back();
        return true;
    }

    std::vector<Token>& m_tokens;
    std::vector<std::uint32_t> m_open; ///< the objects and arrays around the present place
    const char* m_bytes;
    int m_depth;
    Refusal m_refusal = Refusal::None;
};

std::unexpected<Error> refused(QString reason, bool beyondLimits = false) {
    return std::unexpected(Error{{}, std::move(reason), beyondLimits});
}

} // namespace

QString Tape::string(const Token& token) const {
    const QByteArrayView utf8 = text(token);
    if (utf8.startsWith(byteOrderMark)) {
        return QStringDecoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom)(utf8);
    }
    return QString::fromUtf8(utf8);
}

std::expected<Tape, Error> parseTape(const QByteArray& document, Limits limits) {
    if (document.size() > std::min<std::int64_t>(limits.bytes, std::numeric_limits<std::int32_t>::max())) {
        return refused(u"the document is larger than %1 bytes"_s.arg(limits.bytes), true);
    }
    if (!document.isValidUtf8()) {
        return refused(u"the document is not UTF-8 text"_s);
    }
    Tape tape;
    tape.bytes = document.startsWith(byteOrderMark) ? document.sliced(byteOrderMark.size()) : document;
    char* const bytes = tape.bytes.data(); // a copy of its own, ended by a zero; the parser unescapes in place
    rapidjson::InsituStringStream stream(bytes);
    TapeWriter writer(tape.tokens, bytes, limits.depth);
    rapidjson::Reader reader;
    const rapidjson::ParseResult result = reader.Parse<parseFlags>(stream, writer);
    switch (writer.refusal()) {
    case TapeWriter::Refusal::Depth:
        return refused(u"the document is nested deeper than %1 levels"_s.arg(limits.depth), true);
    case TapeWriter::Refusal::Surrogate:
        return refused(u"a text holds half a character"_s);
    case TapeWriter::Refusal::None:
        break;
    }
    if (result.IsError()) {
        return refused(u"no JSON at byte %1: %2"_s.arg(QString::number(result.Offset()),
                                                       QString::fromLatin1(rapidjson::GetParseError_En(result.Code()))),
                       result.Code() == rapidjson::kParseErrorNumberTooBig);
    }
    if (stream.Tell() != static_cast<std::size_t>(tape.bytes.size())) {
        return refused(u"no JSON at byte %1: a zero byte"_s.arg(stream.Tell()));
    }
    return tape;
}

} // namespace tunedeck::json
