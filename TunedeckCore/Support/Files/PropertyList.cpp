#include "TunedeckCore/Support/Files/PropertyList.h"

#include "TunedeckCore/Support/Text/Time.h"

#include <QXmlStreamReader>

#include <charconv>
#include <cmath>
#include <limits>

namespace tunedeck {

namespace {

constexpr int deepest = 64;
constexpr qsizetype longest = 1024 * 1024;

/// Reads values off the stream; an error is an empty result, and nothing is read after it.
class Reader {
public:
    explicit Reader(const QByteArray& xml) : m_xml(xml) { m_xml.setNamespaceProcessing(false); }

    std::optional<PropertyDictionary> root() {
        if (!nextElement() || m_xml.name() != u"plist" || !nextElement()) {
            return std::nullopt;
        }
        const auto value = this->value(0);
        // Behind the root's end there must be the list's, and behind that nothing.
        if (!value || nextElement() || !m_xml.isEndElement() || nextElement() || !m_xml.atEnd() || m_xml.hasError()) {
            return std::nullopt;
        }
        const auto* dictionary = value->as<PropertyDictionary>();
        return dictionary ? std::optional(*dictionary) : std::nullopt;
    }

private:
    /// Goes to the next start of an element. False at the end of the enclosing one, and at what has no place here.
    bool nextElement() {
        for (;;) {
            switch (m_xml.readNext()) {
            case QXmlStreamReader::StartElement:
                return true;
            case QXmlStreamReader::DTD:
                // The usual line names a definition on the web. One that brings entities along wants them expanded.
                if (!m_xml.entityDeclarations().isEmpty() || !m_xml.notationDeclarations().isEmpty()) {
                    m_xml.raiseError();
                }
                break;
            case QXmlStreamReader::StartDocument:
            case QXmlStreamReader::Comment:
            case QXmlStreamReader::ProcessingInstruction:
                break;
            case QXmlStreamReader::Characters:
                if (!m_xml.isWhitespace()) {
                    m_xml.raiseError();
                }
                break;
            default:
                return false;
            }
        }
    }

    /// The text of the present element, which may hold nothing else: a reference to an unknown entity is no text.
    std::optional<QString> text() {
        QString text;
        for (;;) {
            switch (m_xml.readNext()) {
            case QXmlStreamReader::Characters:
                text += m_xml.text();
                break;
            case QXmlStreamReader::Comment:
            case QXmlStreamReader::ProcessingInstruction:
                break;
            case QXmlStreamReader::EndElement:
                return text;
            default:
                return std::nullopt;
            }
        }
    }

    /// The value that the present element is, up to its end.
    std::optional<PropertyValue> value(int depth) {
        const auto type = m_xml.name().toString();
        if (depth >= deepest) {
            return std::nullopt;
        }
        if (type == u"dict") {
            return dictionary(depth);
        }
        if (type == u"array") {
            return array(depth);
        }
        const auto content = text();
        return content ? scalar(type, *content) : std::nullopt;
    }

    std::optional<PropertyValue> dictionary(int depth) {
        PropertyDictionary dictionary;
        while (nextElement()) {
            if (m_xml.name() != u"key") {
                return std::nullopt;
            }
            const auto key = text();
            if (!key || !nextElement()) {
                return std::nullopt;
            }
            auto member = value(depth + 1);
            if (!member) {
                return std::nullopt;
            }
            dictionary.insert_or_assign(*key, std::move(*member));
        }
        return m_xml.hasError() ? std::nullopt : std::optional<PropertyValue>(std::move(dictionary));
    }

    std::optional<PropertyValue> array(int depth) {
        PropertyArray array;
        while (nextElement()) {
            auto element = value(depth + 1);
            if (!element) {
                return std::nullopt;
            }
            array.push_back(std::move(*element));
        }
        return m_xml.hasError() ? std::nullopt : std::optional<PropertyValue>(std::move(array));
    }

    static std::optional<PropertyValue> scalar(const QString& type, const QString& content) {
        bool valid = true;
        if (type == u"string") {
            return PropertyValue(content);
        }
        if ((type == u"true" || type == u"false") && content.isEmpty()) {
            return PropertyValue(type == u"true");
        }
        if (type == u"integer") {
            const std::int64_t number = content.trimmed().toLongLong(&valid, 10);
            return valid ? std::optional<PropertyValue>(number) : std::nullopt;
        }
        if (type == u"real") {
            const double number = content.trimmed().toDouble(&valid);
            return valid ? std::optional<PropertyValue>(number) : std::nullopt;
        }
        if (type == u"date") {
            const auto date = parseTimestamp(content.trimmed());
            return date ? std::optional<PropertyValue>(*date) : std::nullopt;
        }
        if (type == u"data") {
            auto base64 = content.toLatin1();
            base64.removeIf(
                [](char character) { return character == ' ' || (character >= '\t' && character <= '\r'); });
            auto decoded = QByteArray::fromBase64Encoding(base64, QByteArray::AbortOnBase64DecodingErrors);
            return decoded ? std::optional<PropertyValue>(std::move(decoded.decoded)) : std::nullopt;
        }
        return std::nullopt;
    }

    QXmlStreamReader m_xml;
};

QByteArray escaped(const QString& text) {
    QString result;
    for (const auto character : text) {
        switch (character.unicode()) {
        case u'&':
            result += QStringLiteral("&amp;");
            break;
        case u'<':
            result += QStringLiteral("&lt;");
            break;
        case u'>':
            result += QStringLiteral("&gt;");
            break;
        case u'\r':
            result += QStringLiteral("&#13;");
            break; // a bare one would be read as a line feed
        case u'\t':
        case u'\n':
            result += character;
            break;
        default:
            // The other control characters have no form in XML.
            result += character < u' ' || character == QChar(0xfffe) || character == QChar(0xffff)
                          ? QChar(QChar::ReplacementCharacter)
                          : character;
        }
    }
    return result.toUtf8();
}

/// The shortest form that reads back as the same number.
QByteArray realText(double number) {
    if (std::isinf(number)) {
        return number < 0 ? "-inf" : "inf";
    }
    return std::isnan(number) ? QByteArrayLiteral("nan")
                              : QByteArray::number(number, 'g', QLocale::FloatingPointShortest);
}

/// Appends values in their XML form, one element a line.
class Writer {
public:
    explicit Writer(QByteArray& xml) : m_xml(xml) {}

    void write(const PropertyValue& value, int depth) const {
        value.visit([this, depth](const auto& content) { append(content, depth); });
    }

    void append(const PropertyDictionary& dictionary, int depth) const {
        line(depth, dictionary.empty() ? "<dict/>" : "<dict>");
        for (const auto& [key, value] : dictionary) {
            line(depth + 1, "<key>" + escaped(key) + "</key>");
            write(value, depth + 1);
        }
        if (!dictionary.empty()) {
            line(depth, "</dict>");
        }
    }

private:
    void append(const PropertyArray& array, int depth) const {
        line(depth, array.empty() ? "<array/>" : "<array>");
        for (const auto& value : array) {
            write(value, depth + 1);
        }
        if (!array.empty()) {
            line(depth, "</array>");
        }
    }
    void append(const QString& text, int depth) const { line(depth, "<string>" + escaped(text) + "</string>"); }
    void append(bool value, int depth) const { line(depth, value ? "<true/>" : "<false/>"); }
    void append(std::int64_t value, int depth) const {
        line(depth, "<integer>" + QByteArray::number(qint64(value)) + "</integer>");
    }
    void append(double value, int depth) const { line(depth, "<real>" + realText(value) + "</real>"); }
    void append(const QDateTime& value, int depth) const {
        line(depth, "<date>" + isoTimestamp(value).toLatin1() + "</date>");
    }
    void append(const QByteArray& value, int depth) const { line(depth, "<data>" + value.toBase64() + "</data>"); }

    void line(int depth, const QByteArray& text) const { m_xml += QByteArray(depth, '\t') + text + '\n'; }

    QByteArray& m_xml;
};

} // namespace

std::optional<PropertyDictionary> parsePropertyList(const QByteArray& xml) {
    if (xml.size() > longest) {
        return std::nullopt;
    }
    return Reader(xml).root();
}

QByteArray xmlPropertyList(const PropertyDictionary& dictionary) {
    QByteArray xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                     "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                     "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                     "<plist version=\"1.0\">\n";
    Writer(xml).append(dictionary, 0);
    return xml + "</plist>\n";
}

std::optional<QString> textValue(const PropertyDictionary& dictionary, const QString& key) {
    const auto found = dictionary.find(key);
    const auto* text = found == dictionary.end() ? nullptr : found->second.as<QString>();
    return text ? std::optional(*text) : std::nullopt;
}

} // namespace tunedeck
