#include "Tests/Helpers/Test.h"
#include "Tests/Peers/NotificationServer.h"
#include "TunedeckMenu/Platform/Linux/Desktop/SessionBus.h"
#include "TunedeckMenu/Platform/Linux/Notifications/LinuxNotificationCenter.h"

#include <QElapsedTimer>

namespace tunedeck::test {
namespace {

const QStringList usual{u"body"_s, u"actions"_s};

UserNotification note(const QString& identifier, const QString& body = {}) {
    return {.identifier = identifier, .thread = {}, .title = identifier.toUpper(), .body = body};
}

class NotificationTest : public testing::Test {
protected:
    void SetUp() override {
        if (!m_bus.connection().isConnected()) {
            GTEST_SKIP() << "no session bus; use tools/lib/desktop";
        }
        QObject::connect(&m_center, &NotificationCenter::opened, &m_center,
                         [this](const QString& identifier) { m_opened << identifier; });
        m_center.start();
    }

    void startServer(const QStringList& capabilities = usual) {
        m_server = std::make_unique<NotificationServer>(capabilities);
    }

    /// Posts and waits until the server has received it.
    const NotificationServer::Call& shown(const UserNotification& notification) {
        const auto before = m_server->calls.size();
        m_center.post(notification);
        EXPECT_TRUE(runUntil([&] { return m_server->calls.size() > before; }));
        runUntil([] { return false; }, 20ms); // the reply
        return m_server->calls.back();
    }

    SessionBus m_bus;
    LinuxNotificationCenter m_center{m_bus, {u"Tunedeck"_s, u"entry"_s, u"icon"_s}};
    std::unique_ptr<NotificationServer> m_server;
    QStringList m_opened;
};

TEST_F(NotificationTest, ReplacesByIdentifierUntilClosed) {
    startServer();
    const auto first = shown(note(u"a"_s, u"“x” <b>"_s));
    EXPECT_EQ(first.name, u"Tunedeck"_s);
    EXPECT_EQ(first.title, u"A"_s);
    EXPECT_EQ(first.body, u"“x” <b>"_s);
    EXPECT_EQ(first.hints.value(u"desktop-entry"_s), u"entry"_s);
    EXPECT_EQ(first.icon, u"icon"_s);
    EXPECT_EQ(first.hints.value(u"category"_s), u"transfer"_s);
    EXPECT_TRUE(first.hints.contains(u"sound-name"_s));
    EXPECT_EQ(first.hints.value(u"urgency"_s), 1);
    EXPECT_EQ(first.replaces, 0U);
    EXPECT_EQ(shown(note(u"b"_s)).replaces, 0U);
    EXPECT_EQ(shown(note(u"a"_s)).replaces, first.id);
    m_server->renumbers = true;
    const auto renumbered = shown(note(u"a"_s));
    EXPECT_EQ(shown(note(u"a"_s)).replaces, renumbered.id);
    const auto last = m_server->calls.back().id;
    NotificationServer stranger(usual); // on the bus, but doesn't own the name
    Q_EMIT stranger.NotificationClosed(last, 2);
    EXPECT_EQ(shown(note(u"c"_s)).replaces, 0U);
    EXPECT_EQ(shown(note(u"a"_s)).replaces, last);
    Q_EMIT m_server->NotificationClosed(m_server->calls.back().id, 2);
    shown(note(u"d"_s));
    EXPECT_EQ(shown(note(u"a"_s)).replaces, 0U);
}

TEST_F(NotificationTest, IgnoresTheLateReplyOfAnEarlierServer) {
    startServer();
    shown(note(u"first"_s));
    m_server->holdsBack = true;
    m_center.post(note(u"a"_s));
    ASSERT_TRUE(runUntil([this] { return m_server->heldBack.has_value(); }));
    const auto earlier = std::move(m_server);
    earlier->releaseName();
    startServer();
    earlier->replyToHeldBackCall();
    EXPECT_EQ(shown(note(u"a"_s)).replaces, 0U);
}

TEST_F(NotificationTest, IgnoresTheLateCapabilitiesOfAnEarlierServer) {
    startServer();
    m_server->holdsBack = true;
    m_center.post(note(u"a"_s, u"<"_s));
    ASSERT_TRUE(runUntil([this] { return m_server->heldBack.has_value(); }));
    const auto earlier = std::move(m_server);
    earlier->releaseName();
    startServer({u"body-markup"_s});
    runUntil([] { return false; }, 50ms); // until the center has noticed the server
    earlier->replyToHeldBackCall();
    ASSERT_TRUE(runUntil([this] { return !m_server->calls.empty(); }));
    EXPECT_EQ(m_server->calls.back().body, u"&lt;"_s);
}

TEST_F(NotificationTest, AssumesMarkupAndNoActionsAfterFiveSecondsAndAsksAgain) {
    startServer();
    runUntil([] { return false; }, 50ms); // until the center has noticed the server
    m_server->holdsBack = true;
    QElapsedTimer watch;
    watch.start();
    m_center.post(note(u"a"_s, u"<"_s));
    ASSERT_TRUE(runUntil([this] { return m_server->heldBack && m_server->heldBack->member() == u"Notify"; }));
    EXPECT_GE(watch.elapsed(), 4500);
    EXPECT_EQ(m_server->calls.back().body, u"&lt;"_s);
    EXPECT_TRUE(m_server->calls.back().actions.isEmpty());
    m_server->replyToHeldBackCall();
    runUntil([] { return false; }, 50ms); // the queue is empty once the reply has arrived
    EXPECT_EQ(shown(note(u"b"_s)).actions, (QStringList{u"default"_s, u"Open Tunedeck"_s}));
}

TEST_F(NotificationTest, DropsWithoutAServerAndStartsAfreshWithANewOne) {
    m_center.post(note(u"lost"_s));
    runUntil([] { return false; }, 50ms);
    startServer({u"body-markup"_s});
    const auto markedUp = shown(note(u"a"_s, u"<b> & \"c\" > d"_s));
    EXPECT_EQ(markedUp.body, u"&lt;b&gt; &amp; \"c\" &gt; d"_s);
    EXPECT_TRUE(markedUp.actions.isEmpty()) << "the server supports none";
    EXPECT_EQ(m_server->calls.size(), 1U);

    m_server.reset();
    m_center.post(note(u"lost"_s));
    runUntil([] { return false; }, 50ms);
    startServer(usual);
    const auto again = shown(note(u"a"_s, u"<"_s));
    EXPECT_EQ(again.body, u"<"_s);
    EXPECT_EQ(again.replaces, 0U); // the id belonged to the earlier server
    EXPECT_EQ(m_server->calls.size(), 1U);
}

TEST_F(NotificationTest, QueuesInOrderUpToALimitWhileTheServerHangs) {
    startServer();
    m_server->holdsBack = true;
    for (int i = 0; i < 100; ++i) {
        m_center.post(note(QString::number(i)));
    }
    ASSERT_TRUE(runUntil([this] { return m_server->heldBack.has_value(); }));
    EXPECT_TRUE(m_server->calls.empty());
    m_server->replyToHeldBackCall();
    ASSERT_TRUE(runUntil([this] { return m_server->calls.size() == 64; }));
    for (int i = 0; i < 64; ++i) {
        EXPECT_EQ(m_server->calls.at(static_cast<std::size_t>(i)).title, QString::number(36 + i));
    }
}

TEST_F(NotificationTest, ReportsClicksWithTheActivationToken) {
    startServer();
    const auto call = shown(note(u"a"_s));
    ASSERT_EQ(call.actions.value(0), u"default"_s);
    NotificationServer stranger(usual); // on the bus, but doesn't own the name
    Q_EMIT stranger.ActionInvoked(call.id, u"default"_s);
    Q_EMIT m_server->ActionInvoked(call.id + 1, u"default"_s);
    Q_EMIT m_server->ActionInvoked(call.id, u"other"_s);
    qunsetenv("XDG_ACTIVATION_TOKEN");
    for (const auto& [id, token] :
         {std::pair(call.id + 1, u"of-another"_s), {call.id, u"two words"_s}, {call.id, QString(300, u'x')}}) {
        Q_EMIT m_server->ActivationToken(id, token);
        Q_EMIT m_server->ActionInvoked(call.id, u"default"_s);
        ASSERT_TRUE(runUntil([this] { return !m_opened.isEmpty(); }));
        runUntil([] { return false; }, 20ms);
        EXPECT_EQ(std::exchange(m_opened, {}), QStringList{u"a"_s});
        EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN")) << token.toStdString();
    }
    Q_EMIT m_server->ActivationToken(call.id, u"token-9"_s);
    Q_EMIT stranger.ActivationToken(call.id, u"token-of-a-stranger"_s);
    runUntil([] { return false; }, 20ms);
    Q_EMIT m_server->ActionInvoked(call.id, u"default"_s);
    ASSERT_TRUE(runUntil([this] { return !m_opened.isEmpty(); }));
    EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "token-9");
    EXPECT_EQ(qgetenv("DESKTOP_STARTUP_ID"), "token-9");
    qunsetenv("XDG_ACTIVATION_TOKEN");
    qunsetenv("DESKTOP_STARTUP_ID");
}

} // namespace
} // namespace tunedeck::test
