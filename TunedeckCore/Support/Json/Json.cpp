#include "TunedeckCore/Support/Json/Json.h"

#include "TunedeckCore/Support/Json/JsonTape.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

namespace tunedeck::json {

using namespace Qt::StringLiterals;

namespace {

using detail::MemberShape;
using detail::TypeShape;

/// Beyond this magnitude a number with a fraction or an exponent no longer names one integer.
constexpr double exactIntegers = 9007199254740991.0;
/// No member's name comes near this; longer keys are never looked at.
constexpr qsizetype longestKey = 64;
/// More members than any record has.
constexpr std::size_t mostMembers = 32;

QLatin1StringView nameOf(Token::Kind kind) {
    switch (kind) {
    case Token::Kind::Null:
        return "null"_L1;
    case Token::Kind::False:
    case Token::Kind::True:
        return "a boolean"_L1;
    case Token::Kind::Number:
        return "a number"_L1;
    case Token::Kind::Text:
        return "text"_L1;
    case Token::Kind::List:
        return "a list"_L1;
    case Token::Kind::Map:
        return "an object"_L1;
    }
    Q_UNREACHABLE();
}

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

/// Writes the camel-case form of a key, which is never longer than the key; gives its length.
std::size_t writeCamel(std::string_view key, char* out) {
    const char* const begin = out;
    const std::size_t first = key.find_first_not_of('_');
    const std::size_t last = key.find_last_not_of('_');
    if (first == std::string_view::npos || key.substr(first, last - first).find('_') == std::string_view::npos) {
        std::ranges::copy(key, out);
        return key.size();
    }
    out = std::ranges::copy(key.substr(0, first), out).out;
    bool firstWord = true;
    bool wordStarts = false;
    for (const char c : key.substr(first, last + 1 - first)) {
        if (c == '_') {
            firstWord = false;
            wordStarts = true;
        } else {
            *out++ = wordStarts && !firstWord ? upper(c) : lower(c);
            wordStarts = false;
        }
    }
    out = std::ranges::copy(key.substr(last + 1), out).out;
    return static_cast<std::size_t>(out - begin);
}

std::optional<std::int64_t> integerOf(std::string_view text) {
    std::int64_t integer = 0;
    const auto whole = std::from_chars(text.data(), text.data() + text.size(), integer);
    if (whole.ptr == text.data() + text.size()) {
        return whole.ec == std::errc() ? std::optional(integer) : std::nullopt;
    }
    double number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    if (read.ec != std::errc() || number != std::trunc(number) || std::abs(number) > exactIntegers) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(number);
}

/// Walks a tape and fills values. Its recursion goes as deep as the records are declared, never as deep as a document.
class Walker {
public:
    Walker(const Tape& tape, Keys keys) : m_tape(tape), m_keys(keys) {}

    std::optional<Error> read(std::uint32_t index, const TypeShape& shape, void* value) const {
        const Token& token = m_tape.tokens[index];
        switch (shape.kind) {
        case TypeShape::Kind::Text:
            if (token.kind != Token::Kind::Text) {
                return expected("text"_L1, token);
            }
            *static_cast<QString*>(value) = m_tape.string(token);
            return {};
        case TypeShape::Kind::Boolean:
            if (token.kind != Token::Kind::True && token.kind != Token::Kind::False) {
                return expected("a boolean"_L1, token);
            }
            *static_cast<bool*>(value) = token.kind == Token::Kind::True;
            return {};
        case TypeShape::Kind::Integer:
            return readInteger(token, *static_cast<std::int64_t*>(value));
        case TypeShape::Kind::Number:
            return readNumber(token, *static_cast<double*>(value));
        case TypeShape::Kind::Record:
            return readRecord(index, shape, value);
        case TypeShape::Kind::List:
            return readList(index, shape, value);
        }
        Q_UNREACHABLE();
    }

private:
    [[nodiscard]] std::string_view text(const Token& token) const {
        return {m_tape.bytes.constData() + token.offset, token.length};
    }

    static Error expected(QLatin1StringView what, const Token& token) {
        return {{}, u"expected %1, found %2"_s.arg(what, nameOf(token.kind)), false};
    }

    [[nodiscard]] std::optional<Error> readInteger(const Token& token, std::int64_t& value) const {
        if (token.kind != Token::Kind::Number) {
            return expected("an integer"_L1, token);
        }
        const auto integer = integerOf(text(token));
        if (!integer) {
            return Error{{}, u"expected an integer of 64 bits, found another number"_s, false};
        }
        value = *integer;
        return {};
    }

    [[nodiscard]] std::optional<Error> readNumber(const Token& token, double& value) const {
        if (token.kind != Token::Kind::Number) {
            return expected("a number"_L1, token);
        }
        const std::string_view digits = text(token);
        const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value);
        if (read.ec == std::errc()) {
            return {};
        }
        // The parser lets through no number of more than 308 digits or a greater exponent, so this tells which it is.
        const bool tiny = digits.starts_with("0.") || digits.starts_with("-0.") ||
                          digits.find("e-") != std::string_view::npos || digits.find("E-") != std::string_view::npos;
        value = 0;
        return tiny ? std::nullopt : std::optional(Error{{}, u"holds a number that is too large"_s, true});
    }

    std::optional<Error> readList(std::uint32_t index, const TypeShape& shape, void* value) const {
        const Token& token = m_tape.tokens[index];
        if (token.kind != Token::Kind::List) {
            return expected("a list"_L1, token);
        }
        int position = 0;
        for (std::uint32_t at = index + 1; at < token.next; at = m_tape.tokens[at].next, ++position) {
            if (auto error = read(at, *shape.element, shape.append(value))) {
                return within(u"[%1]"_s.arg(position), std::move(error));
            }
        }
        return {};
    }

    std::optional<Error> readRecord(std::uint32_t index, const TypeShape& shape, void* value) const {
        const Token& token = m_tape.tokens[index];
        if (token.kind != Token::Kind::Map) {
            return expected("an object"_L1, token);
        }
        // The token of each declared member; 0, the document itself, stands for "absent". A later one replaces an
        // earlier one of the same name before either is looked at.
        std::array<std::uint32_t, mostMembers> found{};
        Q_ASSERT(shape.members.size() <= found.size());
        std::size_t next = 0;
        for (std::uint32_t key = index + 1; key < token.next; key = m_tape.tokens[key + 1].next) {
            const std::size_t member = memberNamed(m_tape.tokens[key], shape.members, next);
            if (member < shape.members.size()) {
                found[member] = key + 1;
                next = member + 1;
            }
        }
        for (std::size_t i = 0; i < shape.members.size(); ++i) {
            const MemberShape& member = shape.members[i];
            const bool absent =
                found[i] == 0 || (!member.required && m_tape.tokens[found[i]].kind == Token::Kind::Null);
            std::optional<Error> error;
            if (!absent) {
                error = read(found[i], *member.type, member.place(value));
            } else if (member.required) {
                error = Error{{}, u"is missing"_s, false};
            }
            if (error) {
                return within(QString::fromLatin1(member.name), std::move(error));
            }
        }
        return {};
    }

    /// The index of the member that a key names, looked for from `first` on, as documents mostly keep one order.
    std::size_t memberNamed(const Token& key, std::span<const MemberShape> members, std::size_t first) const {
        std::array<char, longestKey> buffer{};
        std::string_view name = text(key);
        if (name.size() > buffer.size()) {
            return members.size();
        }
        if (m_keys == Keys::SnakeToCamel && name.find('_') != std::string_view::npos) {
            name = {buffer.data(), writeCamel(name, buffer.data())};
        }
        for (std::size_t tried = 0; tried < members.size(); ++tried) {
            const std::size_t i = first + tried < members.size() ? first + tried : first + tried - members.size();
            if (name == std::string_view(members[i].name, members[i].length)) {
                return i;
            }
        }
        return members.size();
    }

    static std::optional<Error> within(const QString& place, std::optional<Error> error) {
        if (!error) {
            return error;
        }
        const bool joint = !error->path.isEmpty() && !error->path.startsWith(u'[');
        error->path = place + (joint ? u"."_s : QString()) + error->path;
        return error;
    }

    const Tape& m_tape;
    Keys m_keys;
};

} // namespace

QString Error::description() const {
    return path.isEmpty() ? u"Unreadable document: %1."_s.arg(reason)
                          : u"Unreadable document: \"%1\" %2."_s.arg(path, reason);
}

QByteArray snakeToCamel(const QByteArray& key) {
    QByteArray camel(key.size(), Qt::Uninitialized);
    camel.truncate(
        static_cast<qsizetype>(writeCamel({key.constData(), static_cast<std::size_t>(key.size())}, camel.data())));
    return camel;
}

std::optional<Error> detail::decode(const QByteArray& bytes, const TypeShape& shape, void* value, Keys keys,
                                    Limits limits) {
    const auto tape = parseTape(bytes, limits);
    if (!tape) {
        return tape.error();
    }
    return Walker(*tape, keys).read(0, shape, value);
}

} // namespace tunedeck::json
