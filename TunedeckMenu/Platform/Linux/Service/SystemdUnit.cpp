#include "TunedeckMenu/Platform/Linux/Service/SystemdUnit.h"

#include <QFileInfo>

#include <algorithm>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

template<class T>
const T* member(const PropertyDictionary& plist, const QString& key) {
    const auto found = plist.find(key);
    return found == plist.end() ? nullptr : found->second.as<T>();
}

/// Escapes specifiers, which start with "%".
QString literal(QString text) {
    return text.replace(u'%', u"%%"_s);
}

/// Quotes one word of a setting that systemd splits into words.
QString word(QString text) {
    text.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s);
    return u'"' + literal(text) + u'"';
}

/// The command line. ":" turns off the expansion of variables.
QString command(const QStringList& words) {
    // systemd rejects these characters in the program's path, but not in arguments: use a shell.
    static constexpr QStringView rejected = u"'\"\\";
    const bool needsShell =
        std::any_of(rejected.begin(), rejected.end(), [&](QChar c) { return words[0].contains(c); });
    QString line = needsShell ? u":/bin/sh -c \"exec \\\"$0\\\" \\\"$@\\\"\""_s : QString();
    for (const auto& text : words) {
        line += (line.isEmpty() ? u":"_s : u" "_s) + word(text);
    }
    return line;
}

/// True when a line can hold this value. A trailing backslash would join it with the next line.
bool fits(const QString& text) {
    const auto isControl = [](QChar character) { return character < u' ' || character == QChar(0x7f); };
    return std::none_of(text.begin(), text.end(), isControl) && !text.endsWith(u'\\') && text.trimmed() == text;
}

/// Collects the lines of a unit, and a value that doesn't fit into a line.
class Lines {
public:
    void add(const QString& line) { m_text += line.toUtf8() + '\n'; }

    void set(const QString& key, const QString& value) {
        if (!fits(value)) {
            m_invalidValue = value;
        }
        add(key + u'=' + value);
    }

    [[nodiscard]] const QByteArray& text() const { return m_text; }
    [[nodiscard]] const QString& invalidValue() const { return m_invalidValue; }

private:
    QByteArray m_text;
    QString m_invalidValue;
};

QStringList programOf(const PropertyDictionary& plist) {
    QStringList words;
    if (const auto* arguments = member<PropertyArray>(plist, u"ProgramArguments"_s)) {
        for (const auto& argument : *arguments) {
            const auto* text = argument.as<QString>();
            words << (text ? *text : QString());
        }
    }
    return words;
}

void addLog(const PropertyDictionary& plist, const QString& key, const QString& setting, Lines& lines,
            QStringList& folders) {
    if (const auto path = textValue(plist, key)) {
        lines.set(setting, u"append:"_s + literal(*path));
        folders << QFileInfo(*path).path();
    }
}

} // namespace

std::expected<SystemdUnit, QString> systemdUnit(const PropertyDictionary& plist) {
    const auto program = programOf(plist);
    if (program.isEmpty() || !program.front().startsWith(u'/')) {
        return std::unexpected(u"The property list names no program."_s);
    }
    QStringList folders;
    Lines lines;
    lines.add(u"# Made by Tunedeck from its LaunchAgent property list; changes made here are lost."_s);
    lines.add(u"[Unit]"_s);
    lines.set(u"Description"_s, u"Tunedeck background service"_s);
    // Restart without a limit.
    lines.set(u"StartLimitIntervalSec"_s, u"0"_s);
    lines.add(u"\n[Service]"_s);
    // "simple" would report success even when the program can't be executed.
    lines.set(u"Type"_s, u"exec"_s);
    lines.set(u"ExecStart"_s, command(program));
    if (const auto folder = textValue(plist, u"WorkingDirectory"_s)) {
        lines.set(u"WorkingDirectory"_s, literal(*folder));
    }
    if (const auto* environment = member<PropertyDictionary>(plist, u"EnvironmentVariables"_s)) {
        for (const auto& [name, value] : *environment) {
            if (const auto* text = value.as<QString>()) {
                lines.set(u"Environment"_s, word(name + u'=' + *text));
            }
        }
    }
    if (const auto* keepAlive = member<bool>(plist, u"KeepAlive"_s); keepAlive && *keepAlive) {
        lines.set(u"Restart"_s, u"always"_s);
    }
    if (const auto* interval = member<std::int64_t>(plist, u"ThrottleInterval"_s)) {
        lines.set(u"RestartSec"_s, QString::number(*interval));
    }
    lines.set(u"TimeoutStopSec"_s, u"20"_s);
    addLog(plist, u"StandardOutPath"_s, u"StandardOutput"_s, lines, folders);
    addLog(plist, u"StandardErrorPath"_s, u"StandardError"_s, lines, folders);
    lines.add(u"\n[Install]"_s);
    lines.set(u"WantedBy"_s, u"default.target"_s);
    if (!lines.invalidValue().isEmpty()) {
        return std::unexpected(u"A systemd unit can't hold this: "_s + lines.invalidValue());
    }
    folders.removeDuplicates();
    return SystemdUnit{.text = lines.text(), .folders = folders};
}

} // namespace tunedeck
