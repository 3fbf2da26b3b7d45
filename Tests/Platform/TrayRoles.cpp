#include "Tests/Platform/TrayRoles.h"

#include "Peers/TrayHost.h"
#include "Tests/Helpers/FakePlatform.h"
#include "TunedeckMenu/Platform/Linux/LinuxStatusItem.h"
#include "TunedeckMenu/Platform/Linux/SessionBus.h"

#include <QApplication>
#include <QMouseEvent>
#include <QSocketNotifier>

#include <unistd.h>

#include <cstdio>
#include <functional>
#include <iostream>
#include <string>

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

void click(QWidget* widget, Qt::MouseButton button) {
    const QPointF middle = widget->rect().center();
    QMouseEvent press(QEvent::MouseButtonPress, middle, widget->mapToGlobal(middle), button, button, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &press);
}

// Chooses each entry of the menu that is open.
void chooseAll() {
    if (const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
        for (auto* entry : menu->actions()) {
            entry->trigger();
        }
    }
}

} // namespace

int runStatusItem(int argc, char** argv) {
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    SessionBus bus;
    FakeAppearanceSource appearance;
    LinuxStatusItem item(bus, appearance);
    const auto tell = [&item] {
        const auto place = item.placement();
        say((item.isAvailable() ? QStringLiteral("there ") : QStringLiteral("gone ")) +
            (place ? QStringLiteral("%1 %2 of %3").arg(place->itemMinX).arg(place->itemWidth).arg(place->screenWidth)
                   : QStringLiteral("unplaced")));
    };
    QObject::connect(&item, &StatusItem::availabilityChanged, &item, tell);
    QObject::connect(&item, &StatusItem::activated, &item, [] { say(QStringLiteral("activated")); });
    QObject::connect(&item, &StatusItem::openRequested, &item, [] { say(QStringLiteral("open")); });
    QObject::connect(&item, &StatusItem::quitRequested, &item, [] { say(QStringLiteral("quit")); });
    item.setSymbol(QStringLiteral("music.note.list"), QStringLiteral("Tunedeck"));
    item.install();
    tell();
    followInput(&item, [tell](const std::string& line) {
        if (line == "where") {
            tell();
        }
        for (auto* widget : QApplication::topLevelWidgets()) {
            if (line != "where" && widget->inherits("QSystemTrayIconSys")) {
                click(widget, line == "menu" ? Qt::RightButton : Qt::LeftButton);
            }
        }
        chooseAll();
    });
    return QApplication::exec();
}

int runTrayHost(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    TrayHost host;
    QObject::connect(&host, &TrayHost::said, &host, [](const QString& line) { say(line); });
    followInput(&host, [&host](const std::string& line) { host.obey(QByteArray::fromStdString(line)); });
    say(QStringLiteral("ready"));
    return QCoreApplication::exec();
}

} // namespace tunedeck::test
