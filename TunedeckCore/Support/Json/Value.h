#pragma once

#include <QByteArray>
#include <QLatin1StringView>
#include <QString>

#include <concepts>
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

namespace tunedeck::json {

class Value;
using Array = std::vector<Value>;

/// Members in the order of the document. Of several with the same key, only the last counts.
class Object {
public:
    using Member = std::pair<QString, Value>;

    Object() = default;
    Object(std::initializer_list<Member> members);
    explicit Object(std::vector<Member> members);

    /// The member's value; null if there is none.
    [[nodiscard]] const Value* find(QLatin1StringView key) const;
    /// The member's text; nothing if there is none or if it isn't text.
    [[nodiscard]] std::optional<QString> text(QLatin1StringView key) const;
    void set(const QString& key, Value value);
    void remove(const QString& key);

    [[nodiscard]] auto begin() const { return m_members.begin(); }
    [[nodiscard]] auto end() const { return m_members.end(); }
    bool operator==(const Object& other) const;

private:
    std::vector<Member> m_members;
};

/// A number as text, so that writing it again doesn't change it: 18446744073709551615, 1e400, 0.10.
struct Number {
    QByteArray text;
    bool operator==(const Number&) const = default;
};

/// Any JSON value.
class Value {
public:
    explicit(false) Value(std::nullptr_t) {}
    explicit(false) Value(std::same_as<bool> auto boolean) : m_value(boolean) {}
    template<std::integral Type>
        requires(!std::same_as<Type, bool>)
    explicit(false) Value(Type integer) : m_value(Number{QByteArray::number(integer)}) {}
    explicit(false) Value(double number); ///< null if it isn't finite
    explicit(false) Value(Number number) : m_value(std::move(number)) {}
    explicit(false) Value(QString text) : m_value(std::move(text)) {}
    explicit(false) Value(Array array) : m_value(std::move(array)) {}
    explicit(false) Value(Object object) : m_value(std::move(object)) {}

    /// The value if it is a nullptr_t, bool, Number, QString, Array or Object as requested, otherwise null.
    template<class Type>
    [[nodiscard]] const Type* as() const {
        return std::get_if<Type>(&m_value);
    }
    template<class Type>
    [[nodiscard]] Type* as() {
        return std::get_if<Type>(&m_value);
    }

    bool operator==(const Value&) const = default;

    /// The type for error messages, as in "a number".
    [[nodiscard]] QLatin1StringView typeName() const;

private:
    std::variant<std::nullptr_t, bool, Number, QString, Array, Object> m_value;
};

/// The value on one line, in UTF-8: keys sorted, "/" not escaped.
QByteArray compactText(const Value& value);

/// One member per line, indented by two spaces, with a line feed at the end.
QByteArray prettyText(const Value& value);

} // namespace tunedeck::json
