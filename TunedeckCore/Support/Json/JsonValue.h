#pragma once

#include "TunedeckCore/Support/Json/Json.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <map>
#include <optional>
#include <variant>
#include <vector>

namespace tunedeck::json {

class Value;
/// An object; equality ignores the order in the document. Of several members with one name the last counts.
using Object = std::map<QString, Value>;
using Array = std::vector<Value>;

/// A number as its document writes it, so that writing it again changes nothing: 18446744073709551615, 1e300, 0.10.
struct Number {
    QByteArray text;
    bool operator==(const Number&) const = default;
};

/// Any JSON value, for documents that are not ours alone and for small ones that we write. Documents of our own
/// shape are read with decode().
class Value {
public:
    using Storage = std::variant<std::nullptr_t, bool, Number, QString, Array, Object>;

    explicit(false) Value(Storage value) : m_value(std::move(value)) {}
    explicit(false) Value(QString text) : m_value(std::move(text)) {}
    explicit(false) Value(std::int64_t integer);
    /// Null when it is no finite number.
    explicit(false) Value(double number);

    /// The value when it is of that type of Storage, else null.
    template<class Type>
    [[nodiscard]] const Type* as() const {
        return std::get_if<Type>(&m_value);
    }

    /// The number when it is written as an integer, without fraction or exponent, and fits.
    [[nodiscard]] std::optional<std::int64_t> integer() const;

    bool operator==(const Value&) const = default;

private:
    Storage m_value;
};

/// The nesting that parseObject() accepts where nothing else is said.
inline constexpr Limits objectLimits{.bytes = 16 * 1024 * 1024, .depth = 512};

/// Reads a document that must be an object, keeping everything in it.
std::expected<Object, Error> parseObject(const QByteArray& document, Limits limits = objectLimits);

/// The object on one line: keys sorted, "/" unescaped, text in UTF-8.
QByteArray compactText(const Object& object);

/// The object as people read it: keys sorted, one member a line, indented by two spaces, a line feed at the end.
QByteArray prettyText(const Object& object);

} // namespace tunedeck::json
