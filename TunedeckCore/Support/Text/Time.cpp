#include "TunedeckCore/Support/Text/Time.h"

#include <QDate>
#include <QStringView>
#include <QTime>

namespace tunedeck {

namespace {

/// Takes texts off the front, one form after another; once something doesn't fit, nothing fits any more.
class Scanner {
public:
    explicit Scanner(QStringView text) : m_rest(text) {}

    int digits(qsizetype count) {
        int value = 0;
        for (qsizetype index = 0; index < count; ++index) {
            value = value * 10 + digit();
        }
        return value;
    }

    /// As many digits as there are, at least one, in thousandths; finer ones are dropped.
    int thousandths() {
        int value = digit() * 100;
        for (int place = 10; !m_rest.isEmpty() && isDigit(m_rest.front()); place /= 10) {
            value += digit() * place;
        }
        return value;
    }

    /// The next character, which is none at the end.
    QChar take() {
        if (m_rest.isEmpty()) {
            m_failed = true;
            return {};
        }
        const auto first = m_rest.front();
        m_rest = m_rest.mid(1);
        return first;
    }

    void expect(QChar character) { m_failed |= take() != character; }
    [[nodiscard]] bool startsWith(QChar character) const { return m_rest.startsWith(character); }
    [[nodiscard]] bool complete() const { return !m_failed && m_rest.isEmpty(); }

private:
    static bool isDigit(QChar character) { return character >= u'0' && character <= u'9'; }

    int digit() {
        const auto character = take();
        m_failed |= !isDigit(character);
        return m_failed ? 0 : character.unicode() - u'0';
    }

    QStringView m_rest;
    bool m_failed = false;
};

} // namespace

std::optional<QDateTime> parseTimestamp(const std::optional<QString>& text) {
    if (!text) {
        return std::nullopt;
    }
    Scanner scanner(*text);
    const int year = scanner.digits(4);
    scanner.expect(u'-');
    const int month = scanner.digits(2);
    scanner.expect(u'-');
    const int day = scanner.digits(2);
    scanner.expect(u'T');
    const int hour = scanner.digits(2);
    scanner.expect(u':');
    const int minute = scanner.digits(2);
    scanner.expect(u':');
    const int second = scanner.digits(2);
    int millisecond = 0;
    if (scanner.startsWith(u'.')) {
        scanner.expect(u'.');
        millisecond = scanner.thousandths();
    }
    int offset = 0; // in minutes
    if (const auto zone = scanner.take(); zone == u'+' || zone == u'-') {
        const int hours = scanner.digits(2);
        scanner.expect(u':');
        const int minutes = scanner.digits(2);
        if (hours > 23 || minutes > 59) {
            return std::nullopt;
        }
        offset = (zone == u'+' ? 1 : -1) * (hours * 60 + minutes);
    } else if (zone != u'Z') {
        return std::nullopt;
    }
    const QDate date(year, month, day);
    const QTime time(hour, minute, second, millisecond);
    if (!scanner.complete() || !date.isValid() || !time.isValid()) {
        return std::nullopt;
    }
    return QDateTime(date, time, Qt::UTC).addSecs(-60 * offset);
}

QString isoTimestamp(const QDateTime& moment) {
    return moment.toUTC().toString(Qt::ISODate);
}

} // namespace tunedeck
