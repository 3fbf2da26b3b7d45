#include "Peers/NotificationServer.h"
#include "Tests/Helpers/RunTask.h"
#include "TunedeckMenu/Platform/Linux/LinuxNotificationCenter.h"
#include "TunedeckMenu/Platform/Linux/SessionBus.h"

#include <gtest/gtest.h>

namespace tunedeck {
namespace {

using namespace std::chrono_literals;
using test::NotificationServer;
using test::runUntil;

const QStringList usual{QStringLiteral("body"), QStringLiteral("actions")};

UserNotification note(const QString& identifier, const QString& body = {}) {
    return {.identifier = identifier, .thread = {}, .title = identifier.toUpper(), .body = body};
}

class NotificationTest : public testing::Test {
protected:
    void SetUp() override {
        if (!m_bus.connection().isConnected()) {
            GTEST_SKIP() << "there is no session bus; tools/lib/desktop makes one";
        }
        QObject::connect(&m_center, &NotificationCenter::opened, &m_center,
                         [this](const QString& identifier) { m_opened << identifier; });
        m_center.start();
    }

    void startServer(const QStringList& capabilities = usual) {
        m_server = std::make_unique<NotificationServer>(capabilities);
    }

    // Posts and waits until the server has it.
    const NotificationServer::Call& shown(const UserNotification& notification) {
        const auto before = m_server->calls.size();
        m_center.post(notification);
        EXPECT_TRUE(runUntil([&] { return m_server->calls.size() > before; }));
        runUntil([] { return false; }, 20ms); // the reply
        return m_server->calls.back();
    }

    SessionBus m_bus;
    LinuxNotificationCenter m_center{m_bus,
                                     {QStringLiteral("Tunedeck"), QStringLiteral("entry"), QStringLiteral("icon")}};
    std::unique_ptr<NotificationServer> m_server;
    QStringList m_opened;
};

TEST_F(NotificationTest, ALaterOneWithTheSameIdentifierReplacesTheEarlierUntilThatIsClosed) {
    startServer();
    const auto first = shown(note(QStringLiteral("a"), QStringLiteral("“x” <b>")));
    EXPECT_EQ(first.name, QStringLiteral("Tunedeck"));
    EXPECT_EQ(first.title, QStringLiteral("A"));
    EXPECT_EQ(first.body, QStringLiteral("“x” <b>"));
    EXPECT_EQ(first.hints.value(QStringLiteral("desktop-entry")), QStringLiteral("entry"));
    EXPECT_EQ(first.replaces, 0U);
    EXPECT_EQ(shown(note(QStringLiteral("b"))).replaces, 0U);
    EXPECT_EQ(shown(note(QStringLiteral("a"))).replaces, first.id);
    Q_EMIT m_server->NotificationClosed(first.id, 2);
    EXPECT_EQ(shown(note(QStringLiteral("c"))).replaces, 0U);
    EXPECT_EQ(shown(note(QStringLiteral("a"))).replaces, 0U);
}

TEST_F(NotificationTest, TextIsNoMarkupAndNoActionIsOfferedWhereTheServerHasNone) {
    startServer({QStringLiteral("body"), QStringLiteral("body-markup")});
    const auto call = shown(note(QStringLiteral("a"), QStringLiteral("<b> & \"c\" > d")));
    EXPECT_EQ(call.body, QStringLiteral("&lt;b&gt; &amp; \"c\" &gt; d"));
    EXPECT_TRUE(call.actions.isEmpty());
}

TEST_F(NotificationTest, WithoutAServerNothingHappensAndOneThatComesOrRestartsIsMetAnew) {
    m_center.post(note(QStringLiteral("lost")));
    runUntil([] { return false; }, 50ms);
    startServer({QStringLiteral("body-markup")});
    EXPECT_EQ(shown(note(QStringLiteral("a"), QStringLiteral("<"))).body, QStringLiteral("&lt;"));
    EXPECT_EQ(m_server->calls.size(), 1U);

    m_server.reset();
    m_center.post(note(QStringLiteral("lost")));
    runUntil([] { return false; }, 50ms);
    startServer(usual);
    const auto again = shown(note(QStringLiteral("a"), QStringLiteral("<")));
    EXPECT_EQ(again.body, QStringLiteral("<"));
    EXPECT_EQ(again.replaces, 0U); // the number meant a notification of the server that went
    EXPECT_EQ(m_server->calls.size(), 1U);
}

TEST_F(NotificationTest, WhatComesWhileTheServerIsStillSilentIsKeptInOrderAndBounded) {
    startServer();
    m_server->holdsBack = true;
    for (int i = 0; i < 100; ++i) {
        m_center.post(note(QString::number(i)));
    }
    ASSERT_TRUE(runUntil([this] { return m_server->heldBack.has_value(); }));
    EXPECT_TRUE(m_server->calls.empty());
    m_server->answerCapabilities();
    ASSERT_TRUE(runUntil([this] { return m_server->calls.size() == 64; }));
    for (int i = 0; i < 64; ++i) {
        EXPECT_EQ(m_server->calls.at(static_cast<std::size_t>(i)).title, QString::number(36 + i));
    }
}

TEST_F(NotificationTest, AClickOpensItAndBringsTheActivationToken) {
    startServer();
    const auto call = shown(note(QStringLiteral("a")));
    ASSERT_EQ(call.actions.value(0), QStringLiteral("default"));
    NotificationServer stranger(usual); // on the bus, but not the server
    Q_EMIT stranger.ActionInvoked(call.id, QStringLiteral("default"));
    Q_EMIT m_server->ActionInvoked(call.id + 1, QStringLiteral("default"));
    Q_EMIT m_server->ActionInvoked(call.id, QStringLiteral("other"));
    qunsetenv("XDG_ACTIVATION_TOKEN");
    Q_EMIT m_server->ActivationToken(call.id, QStringLiteral("token-9"));
    Q_EMIT m_server->ActionInvoked(call.id, QStringLiteral("default"));
    ASSERT_TRUE(runUntil([this] { return !m_opened.isEmpty(); }));
    runUntil([] { return false; }, 20ms);
    EXPECT_EQ(m_opened, QStringList{QStringLiteral("a")});
    EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "token-9");
    qunsetenv("XDG_ACTIVATION_TOKEN");
    qunsetenv("DESKTOP_STARTUP_ID");
}

} // namespace
} // namespace tunedeck
