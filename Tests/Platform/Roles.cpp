#include "Tests/Platform/Roles.h"

#include "Tests/Helpers/FakePlatform.h"
#include "TunedeckMenu/Platform/Linux/Desktop/LinuxAppearanceSource.h"
#include "TunedeckMenu/Platform/Linux/Desktop/SessionBus.h"
#include "TunedeckMenu/Platform/Linux/Instance/LinuxReopenListener.h"
#include "TunedeckMenu/Platform/Linux/Notifications/LinuxNotificationCenter.h"
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

void print(const QString& line) {
    std::puts(line.toUtf8().constData());
    std::fflush(stdout);
}

/// Calls back with each line of the input and quits at its end.
void readCommands(QObject* parent, std::function<void(const QString&)> onCommand = {}) {
    auto* notifier = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, parent);
    QObject::connect(notifier, &QSocketNotifier::activated, parent, [onCommand = std::move(onCommand)] {
        std::string line;
        if (std::getline(std::cin, line)) {
            onCommand(QString::fromStdString(line));
        } else {
            QCoreApplication::quit();
        }
    });
}

int runInstance(int argc, char** argv) {
    SingleInstance instance(QString::fromLocal8Bit(argv[2]));
    const auto started = instance.start(std::chrono::milliseconds(QByteArray(argv[3]).toInt()));
    if (started != SingleInstance::Start::First) {
        print(started ? u"handed over"_s : started.error());
        return 0;
    }
    const QCoreApplication application(argc, argv);
    SessionBus bus;
    LinuxReopenListener listener(bus);
    QObject::connect(&listener, &ReopenListener::reopenRequested, &application,
                     [] { print(QString(u"reopen "_s + qEnvironmentVariable("XDG_ACTIVATION_TOKEN")).trimmed()); });
    listener.start();
    readCommands(&listener);
    print(u"first"_s);
    return QCoreApplication::exec();
}

void click(QWidget* widget, Qt::MouseButton button) {
    if (widget->accessibleName() != u"Tunedeck" || widget->accessibleDescription() != u"Tunedeck: fine") {
        print(u"the icon has no name or no description"_s);
    }
    const QPointF middle = widget->rect().center();
    QMouseEvent press(QEvent::MouseButtonPress, middle, widget->mapToGlobal(middle), button, button, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &press);
    QMouseEvent second(QEvent::MouseButtonDblClick, middle, widget->mapToGlobal(middle), button, button,
                       Qt::NoModifier); // of a double click, which counts as one
    QCoreApplication::sendEvent(widget, &second);
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
    const auto printPlace = [&item] {
        const auto place = item.placement();
        print((item.isAvailable() ? u"there "_s : u"gone "_s) +
              (place ? u"%1 %2 of %3"_s.arg(place->itemMinX).arg(place->itemWidth).arg(place->screenWidth)
                     : u"unplaced"_s));
    };
    QObject::connect(&item, &StatusItem::availabilityChanged, &item, printPlace);
    QObject::connect(&item, &StatusItem::activated, &item, [] { print(u"activated"_s); });
    QObject::connect(&item, &StatusItem::selected, &item, [](TrayMenuEntry::Kind kind) {
        print(kind == TrayMenuEntry::Kind::Open ? u"open"_s : u"quit"_s);
    });
    item.setMenu({{TrayMenuEntry::Kind::Open, u"Open"_s}, {TrayMenuEntry::Kind::Quit, u"Quit"_s}});
    item.setSymbol(u"music.note.list"_s, u"Tunedeck: fine"_s);
    item.install();
    printPlace();
    readCommands(&item, [&](const QString& command) {
        if (command == u"warn") {
            item.setSymbol(u"exclamationmark.triangle"_s, u"Attention"_s);
        } else if (command == u"gnome") {
            qputenv("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
            appearance.set({});
        } else if (command == u"dark") {
            appearance.set({.dark = true});
        }
        if (command != u"click" && command != u"menu") {
            printPlace();
            return;
        }
        for (auto* widget : QApplication::topLevelWidgets()) {
            if (widget->inherits("QSystemTrayIconSys")) {
                click(widget, command == u"menu" ? Qt::RightButton : Qt::LeftButton);
            }
        }
    });
    return QApplication::exec();
}

int runDesktop(int argc, char** argv) {
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    SessionBus bus;
    LinuxAppearanceSource appearance(bus);
    LinuxNotificationCenter center(bus, {u"Tunedeck"_s, u"entry"_s, u"icon"_s});
    LinuxReopenListener listener(bus);
    QObject::connect(&appearance, &AppearanceSource::changed, &appearance,
                     [&appearance] { print(appearance.current().dark ? u"dark"_s : u"light"_s); });
    QObject::connect(&center, &NotificationCenter::opened, &center,
                     [](const QString& identifier) { print(u"opened "_s + identifier); });
    QObject::connect(&listener, &ReopenListener::reopenRequested, &listener, [] { print(u"reopen"_s); });
    center.start();
    listener.start();
    readCommands(&center, [&center](const QString& command) {
        center.post({.identifier = command.mid(5), .thread = {}, .title = command, .body = {}});
    });
    print(u"ready"_s);
    return QApplication::exec();
}

} // namespace

int runRole(int argc, char** argv) {
    const std::string role = argv[1];
    if (role == "--instance") {
        return runInstance(argc, argv);
    }
    return role == "--status-item" ? runStatusItem(argc, argv) : runDesktop(argc, argv);
}

} // namespace tunedeck::test
