#include "DemoService/Files/Log.h"

#include "TunedeckCore/Support/Files/FileDescriptor.h"

#include <QByteArray>
#include <QChar>
#include <QDateTime>

#include <unistd.h>

#include <array>
#include <cstddef>

namespace tunedeck::demo {

using namespace Qt::StringLiterals;

Log::Level Log::levelFor(QStringView filter) {
    const auto word = filter.mid(filter.lastIndexOf(u'=') + 1);
    if (word == "debug"_L1 || word == "trace"_L1) {
        return Level::Debug;
    }
    if (word == "warn"_L1) {
        return Level::Warn;
    }
    return word == "error"_L1 ? Level::Error : Level::Info;
}

void Log::write(const Line& line) const {
    static constexpr std::array words{"DEBUG"_L1, " INFO"_L1, " WARN"_L1, "ERROR"_L1};
    if (line.level < m_minimum) {
        return;
    }
    QString text = QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs) + u' ' +
                   words.at(static_cast<std::size_t>(line.level)) + u' ' + line.target + u": "_s + line.message;
    for (QChar& character : text) {
        if (character.category() == QChar::Other_Control) {
            character = u' '; // keeps a message with line breaks on one line
        }
    }
    const QByteArray bytes = text.toUtf8() + '\n';
    writeAll(STDERR_FILENO, bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

} // namespace tunedeck::demo
