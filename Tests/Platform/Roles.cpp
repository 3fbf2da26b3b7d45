#include "Tests/Platform/Roles.h"

#include "Tests/Helpers/FakePlatform.h"
#include "Tests/Peers/TrayHost.h"
#include "TunedeckMenu/Platform/Linux/Desktop/SessionBus.h"
#include "TunedeckMenu/Platform/Linux/Tray/LinuxStatusItem.h"
#include "TunedeckMenu/Platform/SingleInstance.h"

#include <QApplication>
#include <QMouseEvent>
#include <QSocketNotifier>

#include <unistd.h>

#include <cstdio>
#include <functional>
#include <iostream>
#include <string>

using namespace Qt::StringLiterals;

namespace tunedeck::test {
namespace {

void say(const QString& line) {
    std::puts(line.toUtf8().constData());
    std::fflush(stdout);
}

// Calls back with each line of the input; the program ends with it.
void followInput(QObject* parent, std::function<void(const std::string&)> onLine) {
    auto* notifier = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, parent);
    QObject::connect(notifier, &QSocketNotifier::activated, parent, [onLine = std::move(onLine)] {
        std::string line;
        if (std::getline(std::cin, line)) {
            onLine(line);
        } else {
            QCoreApplication::quit();
        }
    });
}

int runInstance(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const auto arguments = QCoreApplication::arguments();
    SingleInstance instance(arguments.at(2));
    const auto role = instance.acquire(arguments.at(3).toUtf8(), std::chrono::milliseconds(arguments.at(4).toInt()));
    if (role != SingleInstance::Role::first) {
        say(role == SingleInstance::Role::handedOver ? u"handed over"_s : u"unanswered"_s);
        return 0;
    }
    QObject::connect(&instance, &SingleInstance::requested, &application, [](const QByteArray& request) {
        say(QString::fromUtf8((request + ' ' + qgetenv("XDG_ACTIVATION_TOKEN")).trimmed()));
        if (request == "quit") {
            QCoreApplication::quit();
        }
    });
    instance.answer();
    say(u"first"_s);
    return QCoreApplication::exec();
}

void click(QWidget* widget, Qt::MouseButton button) {
    const QPointF middle = widget->rect().center();
    QMouseEvent press(QEvent::MouseButtonPress, middle, widget->mapToGlobal(middle), button, button, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &press);
    // Chooses each entry of the menu that may be open now.
    if (const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
        for (auto* entry : menu->actions()) {
            entry->trigger();
        }
    }
}

int runStatusItem(int argc, char** argv) {
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    SessionBus bus;
    FakeAppearanceSource appearance;
    LinuxStatusItem item(bus, appearance);
    const auto tell = [&item] {
        const auto place = item.placement();
        say((item.isAvailable() ? u"there "_s : u"gone "_s) +
            (place ? u"%1 %2 of %3"_s.arg(place->itemMinX).arg(place->itemWidth).arg(place->screenWidth)
                   : u"unplaced"_s));
    };
    QObject::connect(&item, &StatusItem::availabilityChanged, &item, tell);
    QObject::connect(&item, &StatusItem::activated, &item, [] { say(u"activated"_s); });
    QObject::connect(&item, &StatusItem::openRequested, &item, [] { say(u"open"_s); });
    QObject::connect(&item, &StatusItem::quitRequested, &item, [] { say(u"quit"_s); });
    item.setSymbol(u"music.note.list"_s, u"Tunedeck"_s);
    item.install();
    tell();
    followInput(&item, [tell](const std::string& line) {
        if (line == "where") {
            tell();
            return;
        }
        for (auto* widget : QApplication::topLevelWidgets()) {
            if (widget->inherits("QSystemTrayIconSys")) {
                click(widget, line == "menu" ? Qt::RightButton : Qt::LeftButton);
            }
        }
    });
    return QApplication::exec();
}

int runTrayHost(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    TrayHost host;
    QObject::connect(&host, &TrayHost::said, &host, [](const QString& line) { say(line); });
    followInput(&host, [&host](const std::string& line) { host.obey(QByteArray::fromStdString(line)); });
    say(u"ready"_s);
    return QCoreApplication::exec();
}

} // namespace

int runRole(int argc, char** argv) {
    const std::string role = argv[1];
    if (role == "--instance") {
        return runInstance(argc, argv);
    }
    return role == "--status-item" ? runStatusItem(argc, argv) : runTrayHost(argc, argv);
}

} // namespace tunedeck::test
