#include "Tests/Program/Accessibility.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QUuid>

#include <utility>
#include <vector>

namespace tunedeck::test {

using namespace Qt::StringLiterals;

namespace {

const QString accessible = u"org.a11y.atspi.Accessible"_s;
constexpr uint showing = 1U << 25; // ATSPI_STATE_SHOWING of AtspiStateType

QDBusMessage call(const QString& program, const QString& path, const QString& interface, const QString& member,
                  const QVariantList& arguments = {}) {
    auto message = QDBusMessage::createMethodCall(program, path, interface, member);
    message.setArguments(arguments);
    return message;
}

QDBusConnection accessibilityBus(const QString& sessionBusAddress, const QString& name) {
    const auto session = QDBusConnection::connectToBus(sessionBusAddress, name + u"-session"_s);
    const auto reply = session.call(call(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s, u"org.a11y.Bus"_s, u"GetAddress"_s));
    QDBusConnection::disconnectFromBus(name + u"-session"_s);
    return QDBusConnection::connectToBus(reply.arguments().value(0).toString(), name);
}

/// The elements in a reply to GetChildren: bus name and path.
using Children = QList<std::pair<QString, QDBusObjectPath>>;

Children childrenIn(const QDBusMessage& reply) {
    return qdbus_cast<Children>(reply.arguments().value(0));
}

bool isShowing(const QDBusMessage& reply) {
    const auto states = qdbus_cast<QList<uint>>(reply.arguments().value(0));
    return !states.isEmpty() && (states.first() & showing) != 0;
}

} // namespace

Accessibility::Accessibility(const QString& sessionBusAddress)
    : m_name(QUuid::createUuid().toString()), m_bus(accessibilityBus(sessionBusAddress, m_name)) {}

Accessibility::~Accessibility() {
    QDBusConnection::disconnectFromBus(m_name);
}

QList<Accessibility::Element> Accessibility::elements() const {
    const auto root = m_bus.call(
        call(u"org.a11y.atspi.Registry"_s, u"/org/a11y/atspi/accessible/root"_s, accessible, u"GetChildren"_s));
    QList<Element> found;
    Children level;
    for (const auto& [program, path] : childrenIn(root)) {
        level += childrenIn(m_bus.call(call(program, path.path(), accessible, u"GetChildren"_s)));
    }
    for (bool isWindow = true; !level.isEmpty(); isWindow = false) {
        struct Visit {
            Element element;
            QDBusPendingCall name, states, children;
        };
        std::vector<Visit> visits; // in parallel: one call after the other takes a second for a panel
        for (const auto& [program, object] : std::exchange(level, {})) {
            const auto path = object.path();
            visits.push_back({{program, path, {}},
                              m_bus.asyncCall(call(program, path, u"org.freedesktop.DBus.Properties"_s, u"Get"_s,
                                                   {accessible, u"Name"_s})),
                              m_bus.asyncCall(call(program, path, accessible, u"GetState"_s)),
                              m_bus.asyncCall(call(program, path, accessible, u"GetChildren"_s))});
        }
        for (auto& [element, name, states, children] : visits) {
            for (auto* reply : {&name, &states, &children}) {
                reply->waitForFinished();
            }
            if (!isWindow || isShowing(states.reply())) {
                element.name = name.reply().arguments().value(0).value<QDBusVariant>().variant().toString();
                found.append(element);
                level += childrenIn(children.reply());
            }
        }
    }
    return found;
}

QStringList Accessibility::texts() const {
    QStringList names;
    for (const auto& element : elements()) {
        if (!element.name.isEmpty()) {
            names.append(element.name);
        }
    }
    return names;
}

bool Accessibility::press(const QString& name) const {
    for (const auto& element : elements()) {
        const auto done =
            element.name == name
                ? m_bus.call(call(element.program, element.path, u"org.a11y.atspi.Action"_s, u"DoAction"_s, {0}))
                : QDBusMessage();
        if (done.arguments().value(0).toBool()) {
            return true;
        }
    }
    return false;
}

} // namespace tunedeck::test
