#include "TunedeckCore/Masking.h"

#include "TunedeckCore/Diagnostics.h"
#include "TunedeckCore/Support/Text/Text.h"

#include <QStringView>

#include <algorithm>
#include <array>

// The three replacements are those of the regular expressions quoted at each. They are scanned by hand: a matcher that
// recurses or backtracks would take a long line of somebody's log for an attack, and rightly.
namespace tunedeck::Diagnostics {

using namespace Qt::StringLiterals;

namespace {

constexpr QChar ellipsis = u'…';

/// Letters, digits, "_" and "-" of ASCII.
constexpr std::array<bool, 128> tokenCharacters = [] {
    std::array<bool, 128> table{};
    for (char16_t c = 0; c < 128; ++c) {
        table[c] =
            (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || c == u'_' || c == u'-';
    }
    return table;
}();

bool isToken(char16_t c) {
    return c < tokenCharacters.size() && tokenCharacters[c];
}

/// The characters that differ from a small ASCII letter only in case: capitals, the long s and the Kelvin sign.
char16_t folded(char16_t c) {
    if (c >= u'A' && c <= u'Z') {
        return static_cast<char16_t>(c - u'A' + u'a');
    }
    return c == u'\u017F' ? u's' : c == u'\u212A' ? u'k' : c;
}

/// White space as Unicode has it.
bool isSpace(char16_t c) {
    if (c < 0x80) {
        return c == u' ' || (c >= u'\t' && c <= u'\r');
    }
    return c == 0x85 || c == 0xA0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200A) || c == 0x2028 || c == 0x2029 ||
           c == 0x202F || c == 0x205F || c == 0x3000;
}

/// A text that is copied with parts of it replaced; costs nothing as long as there are none.
class Replacing {
public:
    explicit Replacing(const QString& text) : m_text(text) {}

    void replace(qsizetype from, qsizetype to) {
        m_out += QStringView(m_text).sliced(m_copied, from - m_copied);
        m_out += ellipsis;
        m_copied = to;
    }

    QString result() && {
        if (m_copied == 0) {
            return m_text;
        }
        m_out += QStringView(m_text).sliced(m_copied);
        return std::move(m_out);
    }

private:
    const QString& m_text;
    QString m_out;
    qsizetype m_copied = 0;
};

template<class Predicate>
qsizetype endOf(QStringView text, qsizetype from, Predicate belongs) {
    const auto* const end = text.utf16() + text.size();
    return std::find_if_not(text.utf16() + from, end, belongs) - text.utf16();
}

bool continuesWith(QStringView text, qsizetype at, QStringView word) {
    return text.size() - at >= word.size() &&
           std::equal(word.utf16(), word.utf16() + word.size(), text.utf16() + at,
                      [](char16_t expected, char16_t c) { return folded(c) == expected; });
}

/// (?i)(bearer\s+)\S+
QString maskingBearers(const QString& text) {
    Replacing result(text);
    const char16_t* const units = QStringView(text).utf16();
    for (qsizetype at = 0; at < text.size(); ++at) {
        if ((units[at] | 0x20) != u'b' || !continuesWith(text, at, u"bearer")) {
            continue;
        }
        const qsizetype word = at + 6;
        const qsizetype token = endOf(text, word, isSpace);
        if (token == word) {
            continue; // looking for a token's end all the same would take quadratic time on "bearerbearer…"
        }
        const qsizetype end = endOf(text, token, [](char16_t c) { return !isSpace(c); });
        if (end > token) {
            result.replace(token, end);
        }
        at = end - 1;
    }
    return std::move(result).result();
}

/// (?i)([?&]start=)[A-Za-z0-9_\-]+
QString maskingStartCodes(const QString& text) {
    Replacing result(text);
    const char16_t* const units = QStringView(text).utf16();
    for (qsizetype at = 0; at < text.size(); ++at) {
        if ((units[at] != u'?' && units[at] != u'&') || !continuesWith(text, at + 1, u"start=")) {
            continue;
        }
        const qsizetype code = at + 7;
        const qsizetype end = endOf(text, code, [](char16_t c) { return isToken(folded(c)); });
        if (end > code) {
            result.replace(code, end);
            at = end - 1;
        }
    }
    return std::move(result).result();
}

/// (?<![A-Za-z0-9_\-])([A-Za-z0-9_\-]{4})[A-Za-z0-9_\-]{20,}(?![A-Za-z0-9_\-])
QString maskingTokens(const QString& text) {
    constexpr qsizetype shown = 4;
    constexpr qsizetype shortest = 24;
    Replacing result(text);
    const char16_t* const units = QStringView(text).utf16();
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (!isToken(units[at])) {
            continue;
        }
        const qsizetype end = endOf(text, at, isToken);
        if (end - at >= shortest) {
            result.replace(at + shown, end);
        }
        at = end;
    }
    return std::move(result).result();
}

} // namespace

QString mask(const QString& text) {
    return maskingTokens(maskingStartCodes(maskingBearers(text)));
}

} // namespace tunedeck::Diagnostics

namespace tunedeck {

using namespace Qt::StringLiterals;

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
