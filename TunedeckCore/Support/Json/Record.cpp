#include "TunedeckCore/Support/Json/Record.h"

#include <cmath>

namespace tunedeck::json {

using namespace Qt::StringLiterals;

namespace {

template<class Type>
std::optional<Error> readExactly(QLatin1StringView name, const Value& from, Type& to) {
    const auto* value = from.as<Type>();
    if (value == nullptr) {
        return wrongType(name, from);
    }
    to = *value;
    return {};
}

} // namespace

Error wrongType(QLatin1StringView expected, const Value& found) {
    return {.reason = u"expected %1, found %2"_s.arg(expected, found.typeName())};
}

std::optional<Error> within(const QString& parent, std::optional<Error> error) {
    if (error) {
        const bool isMember = !error->path.isEmpty() && !error->path.startsWith(u'[');
        error->path = parent + (isMember ? u"."_s : QString()) + error->path;
    }
    return error;
}

std::optional<Error> read(const Value& from, QString& to) {
    return readExactly("text"_L1, from, to);
}

std::optional<Error> read(const Value& from, bool& to) {
    return readExactly("a boolean"_L1, from, to);
}

std::optional<Error> read(const Value& from, double& to) {
    Number number;
    auto error = readExactly("a number"_L1, from, number);
    bool isValid = false;
    to = number.text.toDouble(&isValid);
    if (!error && !isValid) {
        error = Error{.reason = u"holds a number out of range"_s, .beyondLimits = true};
    }
    return error;
}

std::optional<Error> read(const Value& from, std::int64_t& to) {
    constexpr double mostExact = 9007199254740991.0;
    Number number;
    if (auto error = readExactly("an integer"_L1, from, number)) {
        return error;
    }
    bool isValid = false;
    to = number.text.toLongLong(&isValid);
    if (isValid) {
        return {};
    }
    const double inexact = number.text.toDouble(&isValid);
    if (!isValid || inexact != std::trunc(inexact) || std::abs(inexact) > mostExact) {
        return Error{.reason = u"expected an integer of 64 bits, found another number"_s};
    }
    to = static_cast<std::int64_t>(inexact);
    return {};
}

QString keyOf(QLatin1StringView name, Form form) {
    QString key = name;
    for (qsizetype i = 0; form == Form::SnakeCase && i < key.size(); ++i) {
        if (key[i].isUpper()) {
            key.replace(i, 1, u'_' + QString(key[i].toLower()));
        }
    }
    return key;
}

} // namespace tunedeck::json
