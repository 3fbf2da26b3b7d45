#include "TunedeckMenu/Platform/Linux/Desktop/DesktopEntry.h"

#include <QStringList>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

/// An argument of the Exec key, quoted.
QString quoted(const QString& argument) {
    QString text = u"\""_s;
    for (const auto c : argument) {
        if (c == u'"' || c == u'`' || c == u'$' || c == u'\\') {
            text += u'\\';
        } else if (c == u'%') {
            text += u'%'; // a single one starts a field code
        }
        text += c;
    }
    return text + u'"';
}

} // namespace

QString execValue(const QString& program) {
    // GLib searches for the program before it decodes "%%", and the standard forbids "=" in its name: run such programs
    // through a shell.
    const bool isPlain = !program.contains(u'%') && !program.contains(u'=');
    return escapedValue(isPlain ? quoted(program)
                                : u"/bin/sh -c "_s + quoted(u"exec \"$0\""_s) + u' ' + quoted(program));
}

QString escapedValue(const QString& text) {
    QString value;
    for (const auto c : text) {
        switch (c.unicode()) {
        case u'\\':
            value += u"\\\\"_s;
            break;
        case u'\n':
            value += u"\\n"_s;
            break;
        case u'\r':
            value += u"\\r"_s;
            break;
        case u'\t':
            value += u"\\t"_s;
            break;
        case u' ':
            value += value.isEmpty() ? u"\\s"_s : u" "_s;
            break;
        default:
            value += c;
        }
    }
    return value;
}

QString unescapedValue(const QString& value) {
    QString text;
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] != u'\\' || i + 1 == value.size()) {
            text += value[i];
            continue;
        }
        switch (value[++i].unicode()) {
        case u'n':
            text += u'\n';
            break;
        case u'r':
            text += u'\r';
            break;
        case u't':
            text += u'\t';
            break;
        case u's':
            text += u' ';
            break;
        default:
            text += value[i];
        }
    }
    return text;
}

QMap<QString, QString> desktopEntryKeys(const QString& text) {
    QMap<QString, QString> keys;
    bool isInGroup = false;
    for (const auto& rawLine : text.split(u'\n')) {
        const auto line = rawLine.trimmed();
        if (line.startsWith(u'[')) {
            isInGroup = line == u"[Desktop Entry]";
        } else if (const auto equals = line.indexOf(u'='); isInGroup && equals > 0 && !line.startsWith(u'#')) {
            keys.insert(line.left(equals).trimmed(), line.mid(equals + 1).trimmed());
        }
    }
    return keys;
}

} // namespace tunedeck
