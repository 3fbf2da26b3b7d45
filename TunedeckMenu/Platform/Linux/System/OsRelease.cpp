#include "TunedeckMenu/Platform/Linux/System/OsRelease.h"

#include <QStringList>

namespace tunedeck {
namespace {

// A value in the shell's quoting: bare, or in single or double quotes, with backslashes before special characters.
QString unquoted(const QString& value) {
    const bool isQuoted =
        value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') && value.back() == value.front();
    const bool hasEscapes = !isQuoted || value.front() == u'"';
    const auto inner = isQuoted ? value.mid(1, value.size() - 2) : value;
    QString text;
    for (qsizetype i = 0; i < inner.size(); ++i) {
        if (hasEscapes && inner[i] == u'\\' && i + 1 < inner.size()) {
            ++i;
        }
        text += inner[i];
    }
    return text;
}

} // namespace

OsRelease OsRelease::parse(const QByteArray& text) {
    OsRelease release;
    QString name;
    for (const auto& line : QString::fromUtf8(text).split(u'\n')) {
        const auto equals = line.indexOf(u'=');
        const auto key = line.left(equals).trimmed();
        const auto value = unquoted(line.mid(equals + 1).trimmed());
        if (equals < 1) {
            continue;
        }
        if (key == u"PRETTY_NAME") {
            release.name = value;
        } else if (key == u"NAME") {
            name = value;
        } else if (key == u"VERSION_ID") {
            const auto numbers = value.split(u'.');
            for (std::size_t i = 0; i < release.version.size() && i < static_cast<std::size_t>(numbers.size()); ++i) {
                release.version[i] = numbers[static_cast<qsizetype>(i)].toInt();
            }
        }
    }
    if (release.name.isEmpty()) {
        release.name = name.isEmpty() ? QStringLiteral("Linux") : name;
    }
    return release;
}

} // namespace tunedeck
