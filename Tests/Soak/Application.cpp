#include "TunedeckMenu/App/Application.h"

#include "TunedeckCore/Support/Async/Clock.h"
#include "TunedeckCore/Support/Async/Wait.h"
#include "TunedeckMenu/Platform/Log.h"
#include "TunedeckMenu/Platform/SingleInstance.h"

#include <QAccessible>
#include <QApplication>
#include <QElapsedTimer>
#include <QSocketNotifier>
#include <QTimer>
#include <QWindow>

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

namespace tunedeck::soak {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using std::chrono::milliseconds;
using std::chrono::nanoseconds;

/// A clock that runs `speed` times faster than the machine's.
class FastClock final : public Clock {
public:
    explicit FastClock(double speed) : m_speed(speed) { m_timer.start(); }

    [[nodiscard]] QDateTime now() const override { return m_start.addMSecs(uptime() / 1ms); }
    [[nodiscard]] nanoseconds elapsed() const override {
        return nanoseconds(std::llround(static_cast<double>(m_timer.nsecsElapsed()) * m_speed));
    }
    /// Starts with an hour: the application treats the first minutes after a login differently.
    [[nodiscard]] nanoseconds uptime() const override { return elapsed() + m_suspended; }
    QCoro::Task<bool> sleep(milliseconds duration, std::stop_token stop) override {
        m_polls += duration == 4s ? 1 : 0; // only the follow loop sleeps this long
        return sleepUntil(&FastClock::elapsed, elapsed() + std::min<nanoseconds>(duration, 10'000h), stop);
    }
    QCoro::Task<bool> sleepThroughSuspend(milliseconds duration, std::stop_token stop) override {
        return sleepUntil(&FastClock::uptime, uptime() + std::min<nanoseconds>(duration, 10'000h), stop);
    }

    /// Advances now() and uptime(), but not elapsed(), as if the machine had been suspended.
    void suspend(std::chrono::minutes duration) { m_suspended += duration; }
    /// How often the follow loop has polled the service.
    [[nodiscard]] int polls() const { return m_polls; }

private:
    using Reading = nanoseconds (FastClock::*)() const;

    QCoro::Task<bool> sleepUntil(Reading reading, nanoseconds end, std::stop_token stop) {
        Wait wait(stop);
        QTimer timer;
        timer.setTimerType(Qt::PreciseTimer);
        timer.setSingleShot(true);
        QObject::connect(&timer, &QTimer::timeout, [&wait] { wait.wake(); });
        do {
            const auto left = static_cast<double>((end - (this->*reading)()).count()) / m_speed;
            // Short naps, so that a suspension is noticed soon.
            timer.start(std::clamp(milliseconds(std::llround(left / 1e6) + 1), 0ms, 200ms));
            const bool goesOn = co_await wait.next();
            if (!goesOn) {
                co_return false;
            }
        } while ((this->*reading)() < end);
        co_return true;
    }

    double m_speed;
    QDateTime m_start = QDateTime::currentDateTimeUtc();
    QElapsedTimer m_timer;
    nanoseconds m_suspended = 1h;
    int m_polls = 0;
};

/// The visible windows, or only the modal one, which blocks the others.
QList<QWindow*> openWindows() {
    QList<QWindow*> open;
    for (QWindow* window : QGuiApplication::topLevelWindows()) {
        if (window->isVisible() && window->inherits("QQuickWindow")) {
            if (window->modality() == Qt::ApplicationModal) {
                return {window};
            }
            open << window;
        }
    }
    return open;
}

/// "Press", "Toggle" or, when the control has neither, an empty name.
QString pressActionOf(QAccessibleInterface& control) {
    const auto names = control.actionInterface() ? control.actionInterface()->actionNames() : QStringList();
    const auto& press = QAccessibleActionInterface::pressAction();
    const auto& toggle = QAccessibleActionInterface::toggleAction();
    return names.contains(press) ? press : names.contains(toggle) ? toggle : QString();
}

/// Leaves out the controls that quit the application or open a file dialog.
void collectControls(QAccessibleInterface* control, QList<QAccessibleInterface*>& controls) {
    if (control == nullptr || !control->isValid() || control->rect().isEmpty()) {
        return;
    }
    const auto name = control->text(QAccessible::Name);
    if (!pressActionOf(*control).isEmpty() && !name.contains(u"Quit") && !name.startsWith(u"Change")) {
        controls << control;
    }
    for (int i = 0; i < control->childCount(); ++i) {
        collectControls(control->child(i), controls);
    }
}

/// Presses one of the controls on the screen and returns its name; an empty one when there is no control.
QString pressControl(qsizetype number) {
    QList<QAccessibleInterface*> controls;
    for (QWindow* window : openWindows()) {
        collectControls(QAccessible::queryAccessibleInterface(window), controls);
    }
    if (controls.isEmpty()) {
        return {};
    }
    QAccessibleInterface& control = *controls[number % controls.size()];
    const QString name = control.text(QAccessible::Name);
    control.actionInterface()->doAction(pressActionOf(control));
    return name;
}

void closeWindows() {
    while (!openWindows().isEmpty()) {
        QWindow* const window = openWindows().first();
        window->close();
        window->hide(); // a question may refuse to close
    }
}

/// Executes a command of the soak test and returns the one-line response.
QString execute(const QString& line, AppDelegate& delegate, FastClock& clock) {
    const QString command = line.section(u' ', 0, 0);
    const int argument = line.section(u' ', 1).toInt();
    if (command == u"press") {
        return pressControl(argument);
    }
    if (command == u"figures") {
        const auto heap = ::mallinfo2();
        return u"%1 %2"_s.arg((heap.uordblks + heap.hblkhd) / 1024).arg(clock.polls());
    }
    if (command == u"popover") {
        delegate.togglePopover();
    } else if (command == u"window") {
        delegate.showWindow();
    } else if (command == u"onboarding") {
        delegate.showOnboarding();
    } else if (command == u"close") {
        closeWindows();
    } else if (command == u"suspend") {
        clock.suspend(std::chrono::minutes(argument));
    } else if (command == u"quit") {
        QCoreApplication::quit();
    }
    return u"done"_s;
}

int run(int& argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    FastClock clock(qEnvironmentVariable("SOAK_SPEED").toDouble());
    Application menu(clock, systemFacts());
    // One response per request, so the buffer never holds a second line.
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, [&] {
        std::string line;
        if (std::getline(std::cin, line)) {
            std::puts(execute(QString::fromStdString(line), menu.delegate(), clock).toUtf8().constData());
            std::fflush(stdout);
        } else {
            QCoreApplication::quit();
        }
    });
    menu.launch();
    return QApplication::exec();
}

} // namespace
} // namespace tunedeck::soak

/// The real application on a fast clock, which takes commands on standard input.
int main(int argc, char** argv) {
    using namespace tunedeck;
    using namespace Qt::StringLiterals;
    QCoreApplication::setOrganizationName(u"Brightfold"_s);
    QCoreApplication::setOrganizationDomain(u"brightfold.com"_s);
    QCoreApplication::setApplicationName(u"Tunedeck"_s);
    QGuiApplication::setDesktopFileName(u"com.brightfold.tunedeck.menu"_s);
    installSystemLog();
    SingleInstance instance;
    const auto started = instance.start();
    if (started != SingleInstance::Start::First) {
        return started ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    return soak::run(argc, argv);
}
