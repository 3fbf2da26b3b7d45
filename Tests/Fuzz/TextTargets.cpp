#include "Tests/Fuzz/Targets.h"
#include "TunedeckCore/Diagnostics.h"
#include "TunedeckCore/Service/TunnelConfig.h"
#include "TunedeckCore/Support/Text/Time.h"
#include "TunedeckCore/Update/SemVer.h"

#include <QFile>

#include <cstdio>
#include <cstdlib>

namespace tunedeck::fuzz {

void require(bool promise, const char* what) {
    if (!promise) {
        static_cast<void>(std::fprintf(stderr, "broken promise: %s\n", what));
        std::abort();
    }
}

void mask(const QByteArray& input) {
    constexpr int shortestSecret = 24;
    const QString masked = Diagnostics::mask(QString::fromUtf8(input));
    require(Diagnostics::mask(masked) == masked, "a masked text has nothing left to mask");
    int run = 0;
    for (const QChar c : masked) {
        const bool token = c.unicode() < 128 && (c.isLetterOrNumber() || c == u'_' || c == u'-');
        run = token ? run + 1 : 0;
        require(run < shortestSecret, "no long run is left");
    }
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
        const auto same = SemVer::parse(text.section(u'\n', 0, 0));
        require(same && !(*same < *a) && !(*a < *same), "no version comes before itself");
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
    require(!config || !config->tunnelId.isEmpty(), "a tunnel has an id");
    require(!config || !config->tunnelId.contains(u'\n'), "a value is of one line");
}

} // namespace tunedeck::fuzz
