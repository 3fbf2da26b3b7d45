#include "Tests/Program/Accessibility.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QUuid>

namespace tunedeck::test {

namespace {

const QString accessible = QStringLiteral("org.a11y.atspi.Accessible");
constexpr uint showing = 1U << 25; // a bit of the states (AtspiStateType)

QDBusMessage call(const QString& program, const QString& path, const QString& interface, const QString& member,
                  const QVariantList& arguments = {}) {
    auto message = QDBusMessage::createMethodCall(program, path, interface, member);
    message.setArguments(arguments);
    return message;
}

QDBusConnection accessibilityBus(const QString& sessionBus, const QString& name) {
    const auto session = QDBusConnection::connectToBus(sessionBus, name + QStringLiteral("-session"));
    const auto reply = session.call(call(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                         QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress")));
    QDBusConnection::disconnectFromBus(name + QStringLiteral("-session"));
    return QDBusConnection::connectToBus(reply.arguments().value(0).toString(), name);
}

/// The programs and paths in the answer to GetChildren.
QList<QPair<QString, QString>> childrenIn(const QDBusMessage& reply) {
    QList<QPair<QString, QString>> children;
    const auto list = reply.arguments().value(0).value<QDBusArgument>();
    if (reply.type() != QDBusMessage::ReplyMessage) {
        return children;
    }
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

Accessibility::Accessibility(const QString& sessionBus)
    : m_name(QUuid::createUuid().toString()), m_bus(accessibilityBus(sessionBus, m_name)) {}

Accessibility::~Accessibility() {
    QDBusConnection::disconnectFromBus(m_name);
}

QList<Accessibility::Element> Accessibility::look() const {
    const auto root =
        m_bus.call(call(QStringLiteral("org.a11y.atspi.Registry"), QStringLiteral("/org/a11y/atspi/accessible/root"),
                        accessible, QStringLiteral("GetChildren")));
    QList<Element> found;
    QList<QPair<QString, QString>> level;
    for (const auto& [program, path] : childrenIn(root)) {
        level += childrenIn(m_bus.call(call(program, path, accessible, QStringLiteral("GetChildren"))));
    }
    for (bool isWindow = true; !level.isEmpty(); isWindow = false) {
        struct Questions {
            QDBusPendingCall name, states, children;
        };
        std::vector<Questions> asked; // all at once: one after the other would take a second for a panel
        asked.reserve(static_cast<std::size_t>(level.size()));
        for (const auto& [program, path] : level) {
            asked.push_back({m_bus.asyncCall(call(program, path, QStringLiteral("org.freedesktop.DBus.Properties"),
                                                  QStringLiteral("Get"), {accessible, QStringLiteral("Name")})),
                             m_bus.asyncCall(call(program, path, accessible, QStringLiteral("GetState"))),
                             m_bus.asyncCall(call(program, path, accessible, QStringLiteral("GetChildren")))});
        }
        QList<QPair<QString, QString>> below;
        for (std::size_t i = 0; i < asked.size(); ++i) {
            auto& [name, states, children] = asked[i];
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
    for (const auto& element : look()) {
        if (!element.name.isEmpty()) {
            names.append(element.name);
        }
    }
    return names;
}

bool Accessibility::press(const QString& name) const {
    for (const auto& element : look()) {
        const auto done = element.name == name
                              ? m_bus.call(call(element.program, element.path, QStringLiteral("org.a11y.atspi.Action"),
                                                QStringLiteral("DoAction"), {0}))
                              : QDBusMessage();
        if (done.arguments().value(0).toBool()) {
            return true;
        }
    }
    return false;
}

} // namespace tunedeck::test
