#include "Tests/Fuzz/Targets.h"
#include "TunedeckCore/Masking.h"

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

} // namespace tunedeck::fuzz
