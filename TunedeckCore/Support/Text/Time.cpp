#include "TunedeckCore/Support/Text/Time.h"

#include <QDate>
#include <QRegularExpression>
#include <QTime>

namespace tunedeck {

using namespace Qt::StringLiterals;

std::optional<QDateTime> parseTimestamp(const std::optional<QString>& text) {
    // Qt would accept 24:00:00.
    static const QRegularExpression pattern(QRegularExpression::anchoredPattern(
        uR"((\d{4}-\d\d-\d\d)T((?!24)\d\d:\d\d:\d\d)(?:\.(\d++))?(?:Z|([+-])([01]\d|2[0-3]):([0-5]\d)))"_s));
    const auto match = pattern.match(text.value_or(QString()));
    const auto date = QDate::fromString(match.captured(1), Qt::ISODate);
    const auto time = QTime::fromString(match.captured(2), Qt::ISODate);
    if (!date.isValid() || !time.isValid()) {
        return std::nullopt;
    }
    const int milliseconds = match.captured(3).leftJustified(3, u'0', true).toInt();
    const int offset = match.captured(5).toInt() * 3600 + match.captured(6).toInt() * 60;
    return QDateTime(date, time.addMSecs(milliseconds), Qt::UTC)
        .addSecs(match.captured(4) == "-"_L1 ? offset : -offset);
}

QString isoTimestamp(const QDateTime& time) {
    return time.toUTC().toString(Qt::ISODate);
}

} // namespace tunedeck
