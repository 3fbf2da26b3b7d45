#include "TunedeckCore/Support/Json/Parse.h"

#include <QByteArrayView>
#include <QStringDecoder>
#include <QStringList>

#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <iterator>
#include <limits>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tunedeck::json {

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView byteOrderMark = "\xEF\xBB\xBF";
constexpr unsigned parseFlags =
    rapidjson::kParseInsituFlag | rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;

/// Builds the tree from the events of RapidJSON's reader.
class TreeBuilder : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, TreeBuilder> {
public:
    /// `buffer` is the copy of `document` that is parsed in place.
    TreeBuilder(const QByteArray& document, const char* buffer, int depth, Keys keys)
        : m_document(document), m_buffer(buffer), m_depth(depth), m_keys(keys) {}

    [[nodiscard]] Value result() { return std::move(m_values.front().second); }
    std::optional<Error> error;

    bool Null() { return add(nullptr); }
    bool Bool(bool value) { return add(value); }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        return add(Number{m_document.sliced(text - m_buffer, length)});
    }
    bool String(const char* text, rapidjson::SizeType length, bool /*copy*/) { return add(decode({text, length})); }
    bool Key(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        QString& key = m_knownKeys[{text, length}];
        if (key.isNull()) {
            key = decode({text, length});
            key = m_keys == Keys::SnakeToCamel ? snakeToCamel(key) : key;
        }
        m_hasKey = true;
        m_values.emplace_back(key, nullptr);
        return !error;
    }
    bool StartObject() { return open(); }
    bool EndObject(rapidjson::SizeType count) { return add(Object(close(count))); }
    bool StartArray() { return open(); }
    bool EndArray(rapidjson::SizeType count) {
        Array array;
        array.reserve(count);
        for (auto& [key, value] : close(count)) {
            array.push_back(std::move(value));
        }
        return add(std::move(array));
    }

private:
    /// Fails on invalid UTF-8 and on lone surrogates, which escapes can produce.
    QString decode(QByteArrayView utf8) {
        using Flag = QStringDecoder::Flag;
        QStringDecoder decoder(QStringDecoder::Utf8, Flag::Stateless | Flag::ConvertInitialBom);
        QString text = decoder(utf8);
        if (decoder.hasError()) {
            error = Error{.reason = u"a text is not valid Unicode"_s};
        }
        return text;
    }

    bool add(Value value) {
        if (std::exchange(m_hasKey, false)) {
            m_values.back().second = std::move(value);
        } else {
            m_values.emplace_back(QString(), std::move(value));
        }
        return !error;
    }

    bool open() {
        if (std::ssize(m_open) >= m_depth) {
            error =
                Error{.reason = u"the document is nested deeper than %1 levels"_s.arg(m_depth), .beyondLimits = true};
        }
        m_open.push_back(std::exchange(m_hasKey, false));
        return !error;
    }

    std::vector<Object::Member> close(rapidjson::SizeType count) {
        const auto first = m_values.end() - count;
        std::vector<Object::Member> values(std::make_move_iterator(first), std::make_move_iterator(m_values.end()));
        m_values.erase(first, m_values.end());
        m_hasKey = m_open.back();
        m_open.pop_back();
        return values;
    }

    const QByteArray& m_document;
    const char* m_buffer;
    int m_depth;
    Keys m_keys;
    std::vector<Object::Member> m_values; ///< of the open containers
    std::vector<bool> m_open;             ///< whether each open container is the value of a key in m_values
    bool m_hasKey = false;                ///< whether the next value belongs to the last key in m_values
    std::unordered_map<std::string_view, QString> m_knownKeys; ///< so that equal keys share their text
};

/// Zeroes the exponent of the number at `offset`; false if it has none. RapidJSON rejects exponents beyond those of a
/// double even where it only passes on a number's text.
bool clearExponent(QByteArray& document, qsizetype offset) {
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const auto start = std::find_if_not(document.begin() + offset, document.end(),
                                        [&](char c) { return isDigit(c) || c == '-' || c == '.'; });
    if (start == document.end() || (*start != 'e' && *start != 'E')) {
        return false;
    }
    const auto digits = start[1] == '+' ? start + 2 : start + 1;
    std::fill(digits, std::find_if_not(digits, document.end(), isDigit), '0');
    return true;
}

std::unexpected<Error> rejected(QString reason, bool beyondLimits) {
    return std::unexpected(Error{.reason = std::move(reason), .beyondLimits = beyondLimits});
}

} // namespace

std::expected<Value, Error> parse(const QByteArray& bytes, Limits limits, Keys keys) {
    constexpr int attempts = 16;
    if (bytes.size() > std::min<std::int64_t>(limits.bytes, std::numeric_limits<std::int32_t>::max())) {
        return rejected(u"the document is larger than %1 bytes"_s.arg(limits.bytes), true);
    }
    const QByteArray document = bytes.startsWith(byteOrderMark) ? bytes.sliced(byteOrderMark.size()) : bytes;
    QByteArray withoutHugeNumbers = document;
    for (int attempt = 1;; ++attempt) {
        QByteArray buffer = withoutHugeNumbers;
        rapidjson::InsituStringStream stream(buffer.data());
        TreeBuilder builder(document, buffer.constData(), limits.depth, keys);
        const auto result = rapidjson::Reader().Parse<parseFlags>(stream, builder);
        if (builder.error) {
            return std::unexpected(std::move(*builder.error));
        }
        const auto offset = static_cast<qsizetype>(result.IsError() ? result.Offset() : stream.Tell());
        const bool tooBig = result.Code() == rapidjson::kParseErrorNumberTooBig;
        if (tooBig && attempt < attempts && clearExponent(withoutHugeNumbers, offset)) {
            continue;
        }
        if (result.IsError() || offset != document.size()) {
            const char* const reason = result.IsError() ? rapidjson::GetParseError_En(result.Code()) : "a zero byte";
            return rejected(u"no JSON at byte %1: %2"_s.arg(QString::number(offset), QString::fromLatin1(reason)),
                            tooBig);
        }
        return builder.result();
    }
}

std::expected<Object, Error> parseObject(const QByteArray& document) {
    auto value = parse(document);
    if (!value) {
        return std::unexpected(std::move(value.error()));
    }
    auto* object = value->as<Object>();
    if (object == nullptr) {
        return rejected(u"expected an object, found %1"_s.arg(value->typeName()), false);
    }
    return std::move(*object);
}

QString snakeToCamel(const QString& key) {
    qsizetype first = 0;
    while (first < key.size() && key[first] == u'_') {
        ++first;
    }
    qsizetype end = key.size();
    while (end > first && key[end - 1] == u'_') {
        --end;
    }
    const QStringList words = key.sliced(first, end - first).split(u'_', Qt::SkipEmptyParts);
    if (words.size() < 2) {
        return key;
    }
    QString camel = key.first(first) + words.first().toLower();
    for (const QString& word : words.sliced(1)) {
        camel += word.first(1).toUpper() + word.sliced(1).toLower();
    }
    return camel + key.sliced(end);
}

} // namespace tunedeck::json
