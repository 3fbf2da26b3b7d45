#include "Tests/Soak/Driver/Desk.h"
#include "Tests/Soak/Driver/Judge.h"
#include "Tests/Soak/Driver/Ledger.h"
#include "Tests/Soak/Driver/Subject.h"
#include "Tests/Soak/Driver/Unit.h"
#include "Tests/Soak/Driver/Weather.h"
#include "Tests/Soak/Timeline.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>

namespace tunedeck::soak {
namespace {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

struct Wishes {
    double minutes = 60;
    std::uint64_t seed = 0;
    double speed = 60;
    int openings = 0; ///< of the panel, and nothing else happens; 0: everything happens
    bool limitsMemory = true;

    /// How many times the ordinary limits of memory; nothing without limits. The heap has its size once the windows
    /// were at their fullest together, which takes about ten minutes: until then all is warm-up.
    [[nodiscard]] std::optional<int> memoryScale() const {
        const int scale = openings > 0 || minutes >= 40 ? 1 : minutes < 10 ? 4 : 2;
        return limitsMemory ? std::optional(scale) : std::nullopt;
    }
};

/// How long the panel stays open when only that happens: some six refreshes at 60 times the speed.
constexpr int shownFor = 350;

void say(const QString& line) {
    std::puts(line.toUtf8().constData());
    std::fflush(stdout);
}

/// The bundle as it is built, with the application on the clock of the soak and its service.
QString makeBundle(const Files& files) {
    const auto bundle = files.home / "Applications" / "Tunedeck.app";
    fs::create_directories(bundle.parent_path());
    fs::copy(TUNEDECK_BUNDLE, bundle, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    fs::copy_file(SOAK_APPLICATION, bundle / "Contents/MacOS/Tunedeck", fs::copy_options::overwrite_existing);
    fs::copy_file(SOAK_SERVICE, bundle / "Contents/Helpers/tunedeck", fs::copy_options::overwrite_existing);
    return QString::fromStdString((bundle / "Contents/MacOS/Tunedeck").string());
}

void furnish(const Files& files, std::uint64_t seed) {
    for (const auto& folder : {files.folder(), files.home / "tmp", files.home / "bin", files.home / ".tunedeck"}) {
        fs::create_directories(folder);
    }
    std::ofstream(files.seed()) << seed;
    std::ofstream(files.home / ".tunedeck" / "settings.json") << R"({"onboarded": true})";
    // Whatever is opened goes to a program that does nothing.
    fs::create_symlink("/bin/true", files.home / "bin" / "xdg-open");
}

/// What the stand-in for the service leaves when it is killed while it writes.
bool isHalfWritten(const QString& file) {
    static const QRegularExpression name(u"/\\.tunedeck-[0-9a-z]+\\.new$"_s);
    return name.match(file).hasMatch();
}

/// One run from beginning to end.
class Soak {
public:
    Soak(Wishes wishes, Files files)
        : m_wishes(wishes)
        , m_files(std::move(files))
        , m_timeline(Timeline::begin(m_files.timeline(), wishes.speed))
        , m_judge(m_files)
        , m_unit(m_files)
        , m_desk(m_files)
        , m_program(makeBundle(m_files))
        , m_subject(m_program, m_files)
        , m_weather({m_subject, m_desk, m_unit, m_timeline, m_program}, m_files, wishes.seed) {}

    /// True when all is well.
    bool run() {
        tour();
        if (m_wishes.openings > 0) {
            open(m_wishes.openings);
        } else {
            live();
        }
        m_minutes = minute();
        finish();
        report();
        return m_faults.isEmpty();
    }

private:
    [[nodiscard]] double minute() const { return std::chrono::duration<double>(realTime() - m_begin).count() / 60; }

    void live() {
        const auto length = std::chrono::duration<double>(m_wishes.minutes * 60);
        const auto interval =
            std::clamp(length / 60, std::chrono::duration<double>(4), std::chrono::duration<double>(60));
        auto nextSample = m_begin;
        while (m_faults.isEmpty() && realTime() - m_begin < length) {
            if (!m_weather.blow()) {
                m_faults << u"the application doesn't do as it is told: %1"_s.arg(m_subject.ending());
            } else if (realTime() >= nextSample) {
                nextSample = realTime() + std::chrono::duration_cast<std::chrono::nanoseconds>(interval);
                sample(minute() / m_wishes.minutes);
            }
        }
    }

    /// The panel is opened and closed so often, with twenty looks at the memory.
    void open(int times) {
        const int apart = std::max(times / 20, 1);
        for (int opening = 0; m_faults.isEmpty() && opening <= times; ++opening) {
            if (opening % apart == 0) {
                sample(static_cast<double>(opening) / times);
            }
            if (opening < times) {
                (void)m_subject.order(u"panel"_s);
                pass(shownFor);
                (void)m_subject.order(u"close"_s);
                pass(shownFor / 10);
            }
        }
    }

    /// Everything that is loaded at the first need is there from the beginning.
    void tour() {
        pass(1500);
        for (const auto& view : {u"window"_s, u"onboarding"_s, u"panel"_s}) {
            (void)m_subject.order(view);
            pass(500);
        }
    }

    /// `progress` from 0 to 1.
    void sample(double progress) {
        const auto figures = m_weather.settle() ? m_subject.figures() : std::nullopt;
        if (!figures) {
            m_faults << u"the application doesn't answer: %1"_s.arg(m_subject.ending());
            return;
        }
        m_ledger.add(minute(), *figures);
        say(u"%1 min  %2 KiB of its own, malloc %3 KiB, %4 descriptors, %5 announced"_s.arg(minute(), 6, 'f', 1)
                .arg(figures->own, 0, 'f', 0)
                .arg(figures->memory, 0, 'f', 0)
                .arg(figures->files, 0, 'f', 0)
                .arg(m_judge.announcements().size()));
        judge(false);
        if (progress >= 0.25 && m_filesBefore.isEmpty()) {
            m_filesBefore = leftFiles();
            m_unitsBefore = Unit::all();
        }
    }

    void judge(bool finally) {
        if (!m_judge.proceed(finally)) {
            m_faults << u"announcements: "_s + QString::fromStdString(m_judge.fault());
            return;
        }
        const auto shown = m_desk.compare(m_judge.announcements(), finally);
        if (!shown.empty()) {
            m_faults << u"notifications: "_s + QString::fromStdString(shown);
        }
    }

    void finish() {
        if (m_subject.isRunning() && m_faults.isEmpty()) {
            m_weather.settle();
            pass(3000);
            const auto units = Unit::all();
            for (const auto& unit : units) {
                if (!m_unitsBefore.contains(unit)) {
                    m_faults << u"a unit was left: "_s + unit;
                }
            }
            if (units.filter(u"tunedeck"_s) != QStringList{u"com.brightfold.tunedeck.service active"_s}) {
                m_faults << u"the service's unit: "_s + units.filter(u"tunedeck"_s).join(u", "_s);
            }
        }
        if (m_subject.isRunning()) {
            if (const auto ending = m_subject.quit(); !ending.isEmpty()) {
                m_faults << u"told to quit, "_s + ending;
            }
        }
        if (m_faults.isEmpty()) {
            pass(500);
            judge(true);
        }
        const bool isWhole = m_faults.isEmpty(); // of a run that was cut short nothing can be said
        for (const auto& row : m_ledger.rows(m_wishes.memoryScale())) {
            if (isWhole && !row.isWell()) {
                m_faults << row.what + u": %1 became %2"_s.arg(row.early).arg(row.late);
            }
        }
        for (const auto& file : leftFiles()) {
            if (!m_filesBefore.isEmpty() && !m_filesBefore.contains(file)) {
                m_faults << u"a file was left: "_s + file;
            }
        }
        if (m_judge.announcements().empty()) {
            m_faults << u"nothing was announced"_s;
        }
        complaints();
    }

    /// What the application's libraries warned of; its own lines are the category "app".
    void complaints() {
        QFile file(QString::fromStdString(m_files.complaints().string()));
        (void)file.open(QIODevice::ReadOnly);
        while (!file.atEnd()) {
            const auto line = QString::fromUtf8(file.readLine()).trimmed();
            if (!line.contains(u":app: "_s) && !m_complaints.contains(line)) {
                m_complaints << line;
            }
        }
    }

    /// What is in the home and the runtime folder, but for the soak's own.
    QStringList leftFiles() const {
        const auto home = QString::fromStdString(m_files.home.string());
        auto found = filesBelow({home, qEnvironmentVariable("XDG_RUNTIME_DIR")});
        found.removeIf([&](const QString& file) {
            return file.startsWith(home + u"/.soak/"_s) || file.startsWith(home + u"/Applications/"_s) ||
                   file.startsWith(home + u"/.config/autostart/"_s) || // the user switches it on and off
                   isHalfWritten(file);
        });
        return found;
    }

    void row(const QString& what, const QString& figure) const { say(u"  %1 %2"_s.arg(what, -42).arg(figure)); }

    void report() {
        const auto counts = m_judge.counts();
        const auto hours = std::chrono::duration<double>(m_timeline.uptime()).count() / 3600 - 1;
        std::map<std::string, int> kinds;
        for (const auto& one : m_judge.announcements()) {
            ++kinds[one.kind];
        }
        say(u"\nSeed %1, %2 minutes at %3 times the speed: %4 hours of its time, sleep included"_s.arg(m_wishes.seed)
                .arg(m_minutes, 0, 'f', 1)
                .arg(m_wishes.speed)
                .arg(hours, 0, 'f', 1));
        row(u"status documents served"_s, QString::number(counts.served));
        row(u"rounds of the follow loop"_s, u"%1, %2 with a good document, %3 uncertain"_s.arg(counts.rounds)
                                                .arg(counts.answered)
                                                .arg(counts.uncertain));
        row(u"different jobs seen"_s, QString::number(counts.jobs));
        for (const auto& [kind, count] : kinds) {
            row(u"announced: "_s + QString::fromStdString(kind), QString::number(count));
        }
        row(u"shown by a notification server"_s, QString::number(m_desk.shown()));
        row(u"starts of the service"_s, QString::number(m_unit.starts()));
        for (const auto& [what, count] : m_weather.tally()) {
            row(what, QString::number(count));
        }
        row(u"longest answer to an order"_s, u"%1 ms"_s.arg(m_subject.longestAnswer(), 0, 'f', 0));
        say(u"\n  %1 %2 %3 %4 %5"_s.arg(u"held by the application"_s, -30)
                .arg(u"early"_s, 10)
                .arg(u"late"_s, 10)
                .arg(u"growth"_s, 10)
                .arg(u"may"_s, 8));
        for (const auto& one : m_ledger.rows(m_wishes.memoryScale())) {
            say(u"  %1 %2 %3 %4 %5"_s.arg(one.what, -30)
                    .arg(one.early, 10, 'f', 0)
                    .arg(one.late, 10, 'f', 0)
                    .arg(one.late - one.early, 10, 'f', 0)
                    .arg(one.limit ? QString::number(*one.limit) : u"-"_s, 8));
        }
        say(u"  (lower quartiles of thirds of %1 samples, after a warm-up of the first quarter)"_s.arg(
            m_ledger.samples()));
        for (const auto& line : m_complaints.mid(0, 20)) {
            say(u"  the application said: "_s + line);
        }
        if (m_faults.isEmpty()) {
            say(u"\nAll is well."_s);
            return;
        }
        say(u"\nThe last that happened:"_s);
        for (const auto& line : m_weather.trail()) {
            say(u"  "_s + line);
        }
        for (const auto& fault : m_faults) {
            say(u"\nFAULT "_s + fault);
        }
        const auto length =
            m_wishes.openings > 0 ? u"--openings %1"_s.arg(m_wishes.openings) : u"--minutes %1"_s.arg(m_wishes.minutes);
        say(u"\nThe same again: ./tools/soak %1 --speed %2 --seed %3"_s.arg(length)
                .arg(m_wishes.speed)
                .arg(m_wishes.seed));
    }

    Wishes m_wishes;
    Files m_files;
    Timeline m_timeline;
    Judge m_judge;
    Unit m_unit;
    Desk m_desk;
    QString m_program;
    Subject m_subject;
    Weather m_weather;
    Ledger m_ledger;
    QStringList m_faults;
    QStringList m_complaints;
    QStringList m_filesBefore;
    QStringList m_unitsBefore;
    std::chrono::nanoseconds m_begin = realTime();
    double m_minutes = 0;
};

Wishes wishesOf(const QCoreApplication& application) {
    QCommandLineParser parser;
    parser.addOption({u"minutes"_s, u"How long it takes."_s, u"M"_s, u"60"_s});
    parser.addOption({u"seed"_s, u"Of the chance that is at work."_s, u"N"_s});
    parser.addOption({u"speed"_s, u"Of the application's clock."_s, u"X"_s, u"60"_s});
    parser.addOption({u"openings"_s, u"The panel is opened so often and nothing else happens."_s, u"N"_s, u"0"_s});
    parser.addOption({u"any-memory"_s, u"Memory may grow, as it does under a sanitizer."_s});
    parser.process(application);
    const bool isSet = parser.isSet(u"seed"_s);
    return {.minutes = parser.value(u"minutes"_s).toDouble(),
            .seed = isSet ? parser.value(u"seed"_s).toULongLong() : std::random_device()() % 1'000'000,
            .speed = parser.value(u"speed"_s).toDouble(),
            .openings = parser.value(u"openings"_s).toInt(),
            .limitsMemory = !parser.isSet(u"any-memory"_s)};
}

} // namespace
} // namespace tunedeck::soak

/// Runs on a private desktop with a user manager and an empty home of its own; tools/soak sees to that.
int main(int argc, char** argv) {
    using namespace tunedeck::soak;
    using namespace Qt::StringLiterals;
    const QCoreApplication application(argc, argv);
    const auto wishes = wishesOf(application);
    const Files files{QDir::homePath().toStdString()};
    if (QFileInfo::exists(QDir::homePath() + u"/.tunedeck"_s)) {
        std::fputs("soak: not in a home that is used; run ./tools/soak\n", stderr);
        return 2;
    }
    furnish(files, wishes.seed);
    return Soak(wishes, files).run() ? 0 : 1;
}
