#include "TunedeckCore/Support/Json/Value.h"

#include <QLocale>

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <array>
#include <cmath>

namespace tunedeck::json {

using namespace Qt::StringLiterals;

namespace {

void write(auto& writer, const Value& value) {
    const auto size = [](const QByteArray& text) { return static_cast<rapidjson::SizeType>(text.size()); };
    if (const auto* object = value.as<Object>()) {
        writer.StartObject();
        for (const auto& [key, member] : *object) {
            const QByteArray utf8 = key.toUtf8();
            writer.Key(utf8.constData(), size(utf8));
            write(writer, member);
        }
        writer.EndObject();
    } else if (const auto* array = value.as<Array>()) {
        writer.StartArray();
        for (const Value& element : *array) {
            write(writer, element);
        }
        writer.EndArray();
    } else if (const auto* text = value.as<QString>()) {
        const QByteArray utf8 = text->toUtf8();
        writer.String(utf8.constData(), size(utf8));
    } else if (const auto* number = value.as<Number>()) {
        writer.RawValue(number->text.constData(), size(number->text), rapidjson::kNumberType);
    } else if (const auto* boolean = value.as<bool>()) {
        writer.Bool(*boolean);
    } else {
        writer.Null();
    }
}

} // namespace

Value::Value(double number) {
    if (std::isfinite(number)) {
        m_value = Number{QByteArray::number(number, 'g', QLocale::FloatingPointShortest)};
    }
}

QLatin1StringView Value::typeName() const {
    return std::array{"null"_L1, "a boolean"_L1, "a number"_L1, "text"_L1, "a list"_L1, "an object"_L1}.at(
        m_value.index());
}

QByteArray compactText(const Value& value) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer writer(buffer);
    write(writer, value);
    return buffer.GetString();
}

QByteArray prettyText(const Value& value) {
    rapidjson::StringBuffer buffer;
    rapidjson::PrettyWriter writer(buffer);
    writer.SetIndent(' ', 2);
    write(writer, value);
    return QByteArray(buffer.GetString()) + '\n';
}

} // namespace tunedeck::json
