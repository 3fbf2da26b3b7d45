#include "TunedeckCore/Support/Json/JsonValue.h"

#include "TunedeckCore/Support/Json/JsonTape.h"

#include <array>
#include <charconv>
#include <cmath>

namespace tunedeck::json {

using namespace Qt::StringLiterals;

namespace {

/// The value at a token. Its recursion is bounded by the depth that the tape was parsed with.
Value valueAt(const Tape& tape, std::uint32_t index) {
    const Token& token = tape.tokens[index];
    switch (token.kind) {
    case Token::Kind::Null:
        return Value::Storage(nullptr);
    case Token::Kind::False:
    case Token::Kind::True:
        return Value::Storage(token.kind == Token::Kind::True);
    case Token::Kind::Number:
        return Value::Storage(Number{tape.text(token).toByteArray()});
    case Token::Kind::Text:
        return tape.string(token);
    case Token::Kind::List: {
        Array array;
        for (std::uint32_t at = index + 1; at < token.next; at = tape.tokens[at].next) {
            array.push_back(valueAt(tape, at));
        }
        return Value::Storage(std::move(array));
    }
    case Token::Kind::Map: {
        Object object;
        for (std::uint32_t key = index + 1; key < token.next; key = tape.tokens[key + 1].next) {
            object.insert_or_assign(tape.string(tape.tokens[key]), valueAt(tape, key + 1));
        }
        return Value::Storage(std::move(object));
    }
    }
    Q_UNREACHABLE();
}

class Writer {
public:
    explicit Writer(bool pretty) : m_pretty(pretty) {}

    void write(const Value& value) {
        if (const auto* object = value.as<Object>()) {
            write(*object);
        } else if (const auto* array = value.as<Array>()) {
            open('[');
            for (const Value& element : *array) {
                nextLine();
                write(element);
            }
            close(']');
        } else if (const auto* text = value.as<QString>()) {
            write(*text);
        } else if (const auto* number = value.as<Number>()) {
            m_out += number->text;
        } else if (const auto* boolean = value.as<bool>()) {
            m_out += *boolean ? "true" : "false";
        } else {
            m_out += "null";
        }
    }

    void write(const Object& object) {
        open('{');
        for (const auto& [key, value] : object) {
            nextLine();
            write(key);
            m_out += m_pretty ? ": " : ":";
            write(value);
        }
        close('}');
    }

    QByteArray out() && { return std::move(m_out); }

private:
    void write(const QString& text) {
        m_out += '"';
        for (const char c : text.toUtf8()) {
            switch (c) {
            case '"':
                m_out += "\\\"";
                break;
            case '\\':
                m_out += "\\\\";
                break;
            case '\n':
                m_out += "\\n";
                break;
            case '\t':
                m_out += "\\t";
                break;
            case '\r':
                m_out += "\\r";
                break;
            default:
                if (static_cast<unsigned char>(c) < 0x20) {
                    m_out += "\\u00" + QByteArray(1, c).toHex();
                } else {
                    m_out += c;
                }
            }
        }
        m_out += '"';
    }

    void open(char bracket) {
        m_out += bracket;
        ++m_depth;
        m_first = true;
    }

    void nextLine() {
        if (!m_first) {
            m_out += ',';
        }
        m_first = false;
        breakLine();
    }

    void close(char bracket) {
        --m_depth;
        if (!m_first) {
            breakLine();
        }
        m_first = false;
        m_out += bracket;
    }

    void breakLine() {
        if (m_pretty) {
            m_out += '\n';
            m_out.append(2 * m_depth, ' ');
        }
    }

    QByteArray m_out;
    qsizetype m_depth = 0;
    bool m_first = true;
    bool m_pretty;
};

} // namespace

Value::Value(std::int64_t integer) : m_value(Number{QByteArray::number(qlonglong{integer})}) {}

Value::Value(double number) : m_value(nullptr) {
    if (std::isfinite(number)) {
        std::array<char, 32> digits{};
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
        m_value = Number{QByteArray(digits.data(), end - digits.data())};
    }
}

std::optional<std::int64_t> Value::integer() const {
    const auto* number = as<Number>();
    if (number == nullptr) {
        return {};
    }
    std::int64_t integer = 0;
    const auto end = number->text.cend();
    const auto read = std::from_chars(number->text.cbegin(), end, integer);
    return read.ec == std::errc() && read.ptr == end ? std::optional(integer) : std::nullopt;
}

std::expected<Object, Error> parseObject(const QByteArray& document, Limits limits) {
    const auto tape = parseTape(document, limits);
    if (!tape) {
        return std::unexpected(tape.error());
    }
    if (tape->tokens.front().kind != Token::Kind::Map) {
        return std::unexpected(Error{{}, u"expected an object"_s, false});
    }
    return *valueAt(*tape, 0).as<Object>();
}

QByteArray compactText(const Object& object) {
    Writer writer(false);
    writer.write(object);
    return std::move(writer).out();
}

QByteArray prettyText(const Object& object) {
    Writer writer(true);
    writer.write(object);
    return std::move(writer).out() + '\n';
}

} // namespace tunedeck::json
