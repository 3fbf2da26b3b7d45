#include "TunedeckCore/Masking.h"

#include "TunedeckCore/Support/Text/Text.h"

#include <QRegularExpression>
#include <QStringList>
#include <QStringView>

#include <array>
#include <numeric>

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

QString Diagnostics::maskCredentials(const QString& text) {
    static const std::array patterns{
        // Before the others, because it spans lines.
        QRegularExpression(
            uR"((-----BEGIN [A-Z ]{0,20}PRIVATE KEY-----)(?!…)[^-]++(?:-----END [A-Z ]{0,20}KEY-----)?)"_s),
        QRegularExpression(uR"((?i)((?<![a-z0-9+.\-])[a-z][a-z0-9+.\-]{0,20}://)[^\s/@…]++(?=@))"_s),
        QRegularExpression(
            uR"re((?i)((?:password|passwd|passphrase|secret|api_?key|token)(?:=|"\s{0,9}:\s{0,9})"?)[^\s"&;,…]++)re"_s),
        QRegularExpression(uR"((?i)((?<![a-z])(?:set-)?cookie:[ \t]{0,9})[^\s][^\r\n]*+)"_s),
        QRegularExpression(uR"((?i)((?<![a-z])authorization:[ \t]{0,9})(?!bearer …)[^\s][^\r\n]*+)"_s),
        QRegularExpression(uR"((?<![A-Za-z0-9])(AKIA|ASIA|AIza|sk-|gh[opsu]_|xox[abp]-)[A-Za-z0-9_\-]{12,}+)"_s),
        // The secret is the component before "mcp".
        QRegularExpression(uR"((https?://(?!127\.)[^\s/]++/(?:[^\s/]++/(?!mcp\b))*+)[^\s/…]++(?=/mcp\b))"_s),
    };
    return std::accumulate(patterns.begin(), patterns.end(), text, &masking);
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
