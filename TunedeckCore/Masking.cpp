#include "TunedeckCore/Masking.h"

#include "TunedeckCore/Support/Text/Text.h"

#include <QRegularExpression>
#include <QStringList>
#include <QStringView>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

constexpr QChar ellipsis = u'…';

/// Keeps the first group of each match and replaces the rest of it. Where the regular-expression engine gives up, the
/// remaining text is hidden.
QString masking(const QString& text, const QRegularExpression& pattern) {
    QString masked;
    qsizetype end = 0;
    auto matches = pattern.globalMatch(text);
    while (matches.hasNext()) {
        const auto match = matches.next();
        masked += QStringView(text).sliced(end, match.capturedEnd(1) - end);
        masked += ellipsis;
        end = match.capturedEnd();
    }
    return masked + (matches.isValid() ? text.sliced(end) : QString(ellipsis));
}

} // namespace

QString Diagnostics::mask(const QString& text) {
    // Possessive quantifiers keep these linear. \s would include U+180E, which is no longer white space.
    static const QRegularExpression bearer(uR"((?i)(bearer\p{White_Space}++)\P{White_Space}++)"_s);
    static const QRegularExpression startCode(uR"((?i)([?&]start=)[A-Za-z0-9_\-]++)"_s);
    static const QRegularExpression token(
        uR"((?<![A-Za-z0-9_\-])([A-Za-z0-9_\-]{4})[A-Za-z0-9_\-]{20,}+(?![A-Za-z0-9_\-]))"_s);
    return masking(masking(masking(text, bearer), startCode), token);
}

QString maskingSecretPath(const QString& url) {
    constexpr int shortestSecret = 16;
    constexpr int shown = 4;
    QStringList parts = url.split(u'/');
    if (parts.size() < 2 || parts.last() != "mcp"_L1) {
        return url;
    }
    QString& secret = parts[parts.size() - 2];
    if (cut(secret, shortestSecret - 1) == secret) {
        return url;
    }
    secret = cut(secret, shown) + u'…';
    return parts.join(u'/');
}

} // namespace tunedeck
