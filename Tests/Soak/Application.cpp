#include "TunedeckMenu/App/Application.h"

#include "Tests/Helpers/Views/Elements.h"
#include "TunedeckCore/Support/Async/Clock.h"
#include "TunedeckMenu/Platform/Log.h"
#include "TunedeckMenu/Platform/SingleInstance.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QSocketNotifier>

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <utility>

namespace tunedeck::soak {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using std::chrono::milliseconds;
using std::chrono::nanoseconds;

/// A clock that runs 60 times faster than the machine's.
class FastClock final : public Clock {
public:
    FastClock() { m_timer.start(); }

    [[nodiscard]] QDateTime now() const override { return m_start.addMSecs(uptime() / 1ms); }
    [[nodiscard]] nanoseconds elapsed() const override { return nanoseconds(m_timer.nsecsElapsed() * speed); }
    /// Starts with an hour: the application treats the first minutes after a login differently.
    [[nodiscard]] nanoseconds uptime() const override { return elapsed() + m_suspended; }
    QCoro::Task<bool> sleep(milliseconds duration, std::stop_token stop) override {
        m_polls += duration == 4s ? 1 : 0; // only the follow loop sleeps this long
        return m_machine.sleep(duration / speed + 1ms, std::move(stop));
    }
    QCoro::Task<bool> sleepThroughSuspend(milliseconds duration, std::stop_token stop) override {
        const auto end = uptime() + std::min<nanoseconds>(duration, 10'000h);
        while (uptime() < end && !stop.stop_requested()) {
            // Short naps, so that a suspension is noticed soon.
            const auto left = std::chrono::ceil<milliseconds>((end - uptime()) / speed);
            co_await m_machine.sleep(std::min(left, 200ms), stop);
        }
        co_return !stop.stop_requested();
    }

    /// Advances now() and uptime(), but not elapsed(), as if the machine had been suspended.
    void suspend(std::chrono::minutes duration) { m_suspended += duration; }
    /// How often the follow loop has polled the service.
    [[nodiscard]] int polls() const { return m_polls; }

private:
    static constexpr int speed = 60;
    SystemClock m_machine;
    QDateTime m_start = QDateTime::currentDateTimeUtc();
    QElapsedTimer m_timer;
    nanoseconds m_suspended = 1h;
    int m_polls = 0;
};

/// Presses one of the controls on the screen and returns its name; an empty one when there is no control.
QString pressControl(qsizetype number) {
    QList<test::Element> controls;
    for (QQuickWindow* window : test::openWindows()) {
        controls << test::elementsOf(*window);
    }
    // Don't quit the application or open a file dialog.
    controls.removeIf([](const test::Element& element) {
        return !element.isControl() || !element.isEnabled() || element.name.contains(u"Quit") ||
               element.name.startsWith(u"Change");
    });
    if (controls.isEmpty()) {
        return {};
    }
    const test::Element& control = controls[number % controls.size()];
    control.press();
    return control.name;
}

void closeWindows() {
    while (!test::openWindows().isEmpty()) {
        QWindow* const window = test::openWindows().first();
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
    FastClock clock;
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
