#include "Tests/Program/Accessibility.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QUuid>

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
QList<QPair<QString, QString>> childrenIn(const QDBusMessage& reply) {
    QList<QPair<QString, QString>> children;
    if (reply.type() != QDBusMessage::ReplyMessage) {
        return children;
    }
    const auto list = reply.arguments().value(0).value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        QString program;
        QDBusObjectPath path;
        list.beginStructure();
        list >> program >> path;
        list.endStructure();
        children.append({program, path.path()});
    }
    list.endArray();
    return children;
}

bool isShowing(const QDBusMessage& reply) {
    QList<uint> states;
    if (reply.type() == QDBusMessage::ReplyMessage) {
        reply.arguments().value(0).value<QDBusArgument>() >> states;
    }
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
    QList<QPair<QString, QString>> level;
    for (const auto& [program, path] : childrenIn(root)) {
        level += childrenIn(m_bus.call(call(program, path, accessible, u"GetChildren"_s)));
    }
    for (bool isWindow = true; !level.isEmpty(); isWindow = false) {
        struct Calls {
            QDBusPendingCall name, states, children;
        };
        std::vector<Calls> pending; // in parallel: one call after the other takes a second for a panel
        pending.reserve(static_cast<std::size_t>(level.size()));
        for (const auto& [program, path] : level) {
            pending.push_back({m_bus.asyncCall(call(program, path, u"org.freedesktop.DBus.Properties"_s, u"Get"_s,
                                                    {accessible, u"Name"_s})),
                               m_bus.asyncCall(call(program, path, accessible, u"GetState"_s)),
                               m_bus.asyncCall(call(program, path, accessible, u"GetChildren"_s))});
        }
        QList<QPair<QString, QString>> below;
        for (std::size_t i = 0; i < pending.size(); ++i) {
            auto& [name, states, children] = pending[i];
            name.waitForFinished();
            states.waitForFinished();
            children.waitForFinished();
            if (isWindow && !isShowing(states.reply())) {
                continue;
            }
            const auto text = name.reply().arguments().value(0).value<QDBusVariant>().variant().toString();
            found.append({level[static_cast<qsizetype>(i)].first, level[static_cast<qsizetype>(i)].second, text});
            below += childrenIn(children.reply());
        }
        level = below;
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
