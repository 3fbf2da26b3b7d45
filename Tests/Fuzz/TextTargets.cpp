#include "Tests/Fuzz/Targets.h"
#include "TunedeckCore/Masking.h"
#include "TunedeckCore/Service/TunnelConfig.h"
#include "TunedeckCore/Support/Text/Time.h"
#include "TunedeckCore/Update/SemVer.h"

#include <QRegularExpression>

#include <cstdio>
#include <cstdlib>

namespace tunedeck::fuzz {

using namespace Qt::StringLiterals;

void require(bool promise, const char* what) {
    if (!promise) {
        static_cast<void>(std::fprintf(stderr, "broken promise: %s\n", what));
        std::abort();
    }
}

void mask(const QByteArray& input) {
    const QString text = QString::fromUtf8(input);
    const QString masked = Diagnostics::mask(text);
    require(Diagnostics::mask(masked) == masked, "a masked text has nothing left to mask");
    QString expected = text;
    for (const auto& rule :
         {uR"((?i)(bearer[\t-\r\x85\p{Z}]+)[^\t-\r\x85\p{Z}]+)"_s, uR"((?i)([?&]start=)[A-Za-z0-9_\-]+)"_s,
          uR"((?<![A-Za-z0-9_\-])([A-Za-z0-9_\-]{4})[A-Za-z0-9_\-]{20,}(?![A-Za-z0-9_\-]))"_s}) {
        expected.replace(QRegularExpression(rule), u"\\1…"_s);
    }
    require(masked == expected, "masking equals its three rules");
}

void semVer(const QByteArray& input) {
    // Two versions on two lines, so that they can be compared.
    const QString text = QString::fromUtf8(input);
    const auto a = SemVer::parse(text.section(u'\n', 0, 0));
    const auto b = SemVer::parse(text.section(u'\n', 1, 1));
    if (a) {
        // Spaces may end an identifier only where build metadata followed it.
        const QString description = a->description();
        require(SemVer::parse(description) == a || description.back().isSpace(), "a version survives its text");
        const SemVer& same = *a;
        require(!(same < *a), "no version precedes itself");
    }
    if (a && b) {
        require(!(*a < *b && *b < *a), "two versions have one order");
        require(a != b || qHash(*a, 0) == qHash(*b, 0), "equal versions have one hash");
    }
}

void timestamp(const QByteArray& input) {
    const auto moment = parseTimestamp(QString::fromUtf8(input));
    if (moment) {
        require(moment->isValid(), "a moment is valid");
        const int year = moment->toUTC().date().year(); // the form has four digits for it
        const auto again = parseTimestamp(isoTimestamp(*moment));
        require(year < 1 || year > 9999 || again == moment->addMSecs(-moment->time().msec()),
                "a moment survives its text");
    }
}

void tunnelConfig(const QByteArray& input) {
    const auto config = TunnelConfig::parse(QString::fromUtf8(input));
    require(!config || (!config->tunnelId.isEmpty() && !config->tunnelId.contains(u'\n')),
            "a tunnel has an id of one line");
}

} // namespace tunedeck::fuzz
