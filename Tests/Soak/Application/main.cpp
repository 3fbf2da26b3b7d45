#include "Tests/Soak/Application/FastClock.h"
#include "Tests/Soak/Application/Hand.h"
#include "Tests/Soak/Application/Rounds.h"
#include "TunedeckMenu/App/Application.h"
#include "TunedeckMenu/App/QuitSignals.h"
#include "TunedeckMenu/Platform/Log.h"
#include "TunedeckMenu/Platform/SingleInstance.h"

#include <QApplication>
#include <QSocketNotifier>

#include <malloc.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

using namespace std::chrono_literals;
using namespace tunedeck;

namespace {

/// Carries out the orders that come as lines, and answers each with one.
class Orders {
public:
    Orders(Application& application, soak::FastClock& clock) : m_delegate(application.delegate()), m_clock(clock) {}

    void read() {
        std::array<char, 4096> buffer{};
        const auto count = ::read(STDIN_FILENO, buffer.data(), buffer.size());
        if (count <= 0) {
            QCoreApplication::quit();
            return;
        }
        m_unread.append(buffer.data(), static_cast<std::size_t>(count));
        for (auto end = m_unread.find('\n'); end != std::string::npos; end = m_unread.find('\n')) {
            const auto order = QString::fromStdString(m_unread.substr(0, end));
            m_unread.erase(0, end + 1);
            const auto answer = obey(order.section(u' ', 0, 0), order.section(u' ', 1)).toUtf8();
            std::puts(answer.constData());
            std::fflush(stdout);
        }
    }

private:
    QString obey(const QString& order, const QString& detail) {
        if (order == u"press") {
            return soak::Hand::press(detail.toUInt());
        }
        if (order == u"memory") {
            const auto memory = ::mallinfo2();
            return QString::number(memory.uordblks + memory.hblkhd);
        }
        if (order == u"panel") {
            m_delegate.togglePopover();
        } else if (order == u"window") {
            m_delegate.showWindow();
        } else if (order == u"onboarding") {
            m_delegate.showOnboarding();
        } else if (order == u"close") {
            soak::Hand::closeAll();
        } else if (order == u"woke") {
            Q_EMIT m_clock.woke();
        } else if (order == u"quit") {
            QCoreApplication::quit();
        }
        return QStringLiteral("done");
    }

    AppDelegate& m_delegate;
    soak::FastClock& m_clock;
    std::string m_unread;
};

int run(int& argc, char** argv) {
    QuitSignals quitSignals;
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QObject::connect(&quitSignals, &QuitSignals::received, &application, &QCoreApplication::quit);
    quitSignals.listen();

    const auto facts = systemFacts();
    const soak::Files files{facts.home.toStdString()};
    const soak::Timeline timeline(files.timeline());
    soak::Rounds rounds(files);
    // Only the follow loop sleeps for 4 s.
    soak::FastClock clock(timeline, {.marked = 4s,
                                     .asked = [&rounds] { rounds.end(); },
                                     .wakes = [&rounds](const std::function<void()>& wake) { rounds.begin(wake); }});
    Application menu(clock, facts);
    Orders orders(menu, clock);
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, [&orders] { orders.read(); });
    rounds.begin([&menu] { menu.launch(); });
    return QApplication::exec();
}

} // namespace

/// The application as it is, on the time of the soak in its home folder, with a hand that takes orders.
int main(int argc, char** argv) {
    QCoreApplication::setOrganizationName(QStringLiteral("Brightfold"));
    QCoreApplication::setOrganizationDomain(QStringLiteral("brightfold.com"));
    QCoreApplication::setApplicationName(QStringLiteral("Tunedeck"));
    QGuiApplication::setDesktopFileName(QStringLiteral("com.brightfold.tunedeck.menu"));
    installSystemLog();
    SingleInstance instance;
    const auto started = instance.start();
    if (started != SingleInstance::Start::First) {
        return started ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    return run(argc, argv);
}
