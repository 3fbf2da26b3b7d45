#include "TunedeckCore/Support/Json/Value.h"

#include <QLocale>

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

namespace tunedeck::json {

using namespace Qt::StringLiterals;

namespace {

void write(auto& writer, const Value& value) {
    const auto size = [](const QByteArray& text) { return static_cast<rapidjson::SizeType>(text.size()); };
    if (const auto* object = value.as<Object>()) {
        std::map<QByteArray, const Value*> members;
        for (const auto& [key, member] : *object) {
            members.insert_or_assign(key.toUtf8(), &member);
        }
        writer.StartObject();
        for (const auto& [key, member] : members) {
            writer.Key(key.constData(), size(key));
            write(writer, *member);
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

Object::Object(std::initializer_list<Member> members) : m_members(members) {}

Object::Object(std::vector<Member> members) : m_members(std::move(members)) {}

const Value* Object::find(QLatin1StringView key) const {
    const auto found =
        std::find_if(m_members.rbegin(), m_members.rend(), [key](const Member& member) { return member.first == key; });
    return found == m_members.rend() ? nullptr : &found->second;
}

std::optional<QString> Object::text(QLatin1StringView key) const {
    const auto* value = find(key);
    const auto* text = value == nullptr ? nullptr : value->as<QString>();
    return text == nullptr ? std::nullopt : std::optional(*text);
}

void Object::set(const QString& key, Value value) {
    m_members.emplace_back(key, std::move(value));
}

void Object::remove(const QString& key) {
    std::erase_if(m_members, [&key](const Member& member) { return member.first == key; });
}

bool Object::operator==(const Object& other) const {
    return m_members == other.m_members;
}

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
