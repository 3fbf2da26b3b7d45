// Presses every action that sends a request, with a service that succeeds, fails or is gone.
#include "Tests/Journeys/PanelJourney.h"

using namespace Qt::StringLiterals;

namespace tunedeck::test {

namespace {

struct Action {
    QStringList way;         ///< the controls to press
    QByteArray route;        ///< its request
    Behaviour good;          ///< a successful reply
    QString confirm = {};    ///< the confirming button of its question
    QString done = {};       ///< the note after success; empty if there is none
    QString failed = {};     ///< the error before the reason
    QString anyway = {};     ///< the error, whatever the reason
    QString copied = {};     ///< on the clipboard after success
    bool readsAnswer = true; ///< a malformed body is a failure
};

const Behaviour fine = behave::answer(200, R"({"ok":true})");

QList<Action> actions() {
    const QByteArray links = "POST /local/links";
    return {
        {.way = {u"Apply Now"_s}, .route = "POST /local/rekordbox/apply", .good = fine},
        {.way = {u"Retry"_s}, .route = "POST /local/rekordbox/retry", .good = fine},
        {.way = {u"Dismiss"_s}, .route = "POST /local/rekordbox/dismiss", .good = fine},
        {.way = {u"Restore"_s}, .route = "POST /local/rekordbox/restore", .good = fine, .confirm = u"Restore"_s},
        {.way = {u"Repair Tools"_s},
         .route = "POST /local/toolbox/install",
         .good = behave::answer(202, "{}"),
         .anyway = u"Couldn't reach tunedeck to repair its tools."_s},
        {.way = {u"Claude"_s},
         .route = links,
         .good = behave::answer(201, R"({"id":"n","kind":"claude","url":"https://x.example/n"})"),
         .done = u"Copied Claude's URL. "_s + info(Assistant::claude).setupSteps.join(u' '),
         .failed = u"Couldn't connect Claude: "_s,
         .copied = u"https://x.example/n"_s},
        {.way = {u"More of Studio"_s, u"New URL…"_s},
         .route = links + "/a/rotate",
         .good = behave::answer(200, R"({"id":"a","kind":"chatgpt","url":"https://x.example/2"})"),
         .confirm = u"New URL"_s,
         .done = u"New URL copied. Paste it into Studio"_s,
         .failed = u"Couldn't make a new URL: "_s,
         .copied = u"https://x.example/2"_s},
        {.way = {u"More of iPhone"_s, u"New Key…"_s},
         .route = links + "/i/rotate",
         .good = behave::answer(200, R"({"id":"i","kind":"shortcut","token":"fresh"})"),
         .confirm = u"New Key"_s,
         .done = u"New key copied. Paste it into your Shortcut's Authorization header."_s,
         .failed = u"Couldn't make a new key: "_s,
         .copied = u"fresh"_s},
        {.way = {u"New Code"_s},
         .route = links + "/t/rotate",
         .good = behave::answer(200, R"({"id":"t","kind":"telegram","url":"https://t.me/b?start=2"})"),
         .confirm = u"New Code"_s,
         .done = u"New code ready. Scan it with your phone."_s,
         .failed = u"Couldn't make a new code: "_s},
        {.way = {u"More of iPhone"_s, u"Disconnect"_s},
         .route = "DELETE /local/links/i",
         .good = behave::answer(204, {}),
         .confirm = u"Disconnect"_s,
         .failed = u"Couldn't disconnect: "_s,
         .readsAnswer = false},
    };
}

class ActionJourney : public PanelJourney {
protected:
    ActionJourney() {
        serveStatus(R"("rekordbox_db":{"db_path":"/db","rekordbox_running":false,
            "pending":[{"id":"p","created_at":"2026-02-28T10:00:00Z","summary":"Add 2 tracks"}],
            "failed":[{"id":"f","summary":"Rename it","error":"locked"}],
            "backups":[{"version":"1.4.0","created_at":"2026-02-28T10:00:00Z","reason":"r","size_bytes":1}]})");
        serveLinks(links);
        serve("GET /local/toolbox",
              R"({"tools":[{"name":"ffmpeg","wanted":"1","ready":false}],"venvs":[],"installing":false})");
    }

    void SetUp() override {
        open();
        ASSERT_TRUE(comes([this] { return hasText(u"Studio"_s); }));
        go({u"Backups (1)"_s});
    }

    const QByteArray links = R"({"id":"a","kind":"chatgpt","label":"Studio","url":"https://x.example/1"},
        {"id":"i","kind":"shortcut","apiUrl":"https://x.example/api","token":"old"},
        {"id":"t","kind":"telegram","url":"https://t.me/b?start=1"})";

    /// Presses the controls and answers the question, if there is one.
    void perform(const Action& action, const QString& answer = {}) {
        go(action.way);
        if (!action.confirm.isEmpty()) {
            ASSERT_TRUE(comes([this] { return isAsked() && front().isActive(); })) << qPrintable(action.way.last());
            go({answer.isEmpty() ? action.confirm : answer});
            ASSERT_TRUE(comes([this] { return !isAsked(); }));
        }
    }
    /// Waits until the action has ended with that line, or without one if `wanted` is empty.
    void expectLine(const Action& action, const QString& wanted) {
        const auto shown = [&] { return state().actionError.value_or(state().actionNote.value_or(QString())); };
        EXPECT_TRUE(comes([&] { return !isBusy() && shown() == wanted && line().value_or(QString()) == wanted; }))
            << qPrintable(action.way.join(u" > "_s)) << ": " << qPrintable(line().value_or(u"no line"_s));
    }
};

} // namespace

TEST_F(ActionJourney, ShowsTheReasonOfAFailureEvenAfterThePanelWasClosed) {
    const struct {
        Behaviour behaviour;
        QString reason;
        bool isLate = false;        ///< arrives while the panel is closed
        bool inAGoodAnswer = false; ///< with a successful status
    } misbehaviours[] = {
        {behave::after(80ms, behave::answer(500, R"({"ok":false,"error":"It is locked."})")), u"It is locked."_s, true},
        {behave::raw("what?\r\n\r\n"), u"tunedeck isn't running."_s},
        {behave::resetAfter("HTTP/1.1 200 OK\r\nContent-Le"), u"tunedeck isn't running."_s},
        {behave::answer(200, "{]"), u"Unexpected reply from tunedeck."_s, false, true},
    };
    for (const Action& action : actions()) {
        int sent = 0;
        for (const auto& bad : misbehaviours) {
            if (bad.inAGoodAnswer && !action.readsAnswer) {
                continue;
            }
            server.on(action.route, bad.behaviour);
            perform(action);
            if (bad.isLate) {
                ASSERT_TRUE(comes([&] { return count(action.route) == 1; })) << action.route.toStdString();
                front().close();
                EXPECT_TRUE(comes([this] { return state().actionError.has_value(); })) << action.route.toStdString();
                open();
            }
            expectLine(action, action.anyway.isEmpty() ? action.failed + bad.reason : action.anyway);
            EXPECT_EQ(count(action.route), ++sent) << action.route.toStdString();
            if (controls(u"Restore"_s).isEmpty()) {
                go({u"Backups (1)"_s});
            }
        }
        model().clearError();
    }
    EXPECT_TRUE(pasteboard.text.isEmpty()) << "a failure copies nothing";
}

TEST_F(ActionJourney, SendsNothingWhenCancelled) {
    const auto before = server.requests().size();
    for (const Action& action : actions()) {
        if (!action.confirm.isEmpty()) {
            perform(action, u"Cancel"_s);
        }
    }
    settle();
    EXPECT_EQ(server.requests().size(), before);
    EXPECT_FALSE(line() || state().actionError || state().actionNote);
}

TEST_F(ActionJourney, SendsOneRequestForADoublePressAndShowsItsNote) {
    for (const Action& action : actions()) {
        pasteboard.text.clear();
        serveLinks(action.way.first() == u"Claude"_s ? links + R"(,{"id":"n","kind":"claude"})" : links);
        server.on(action.route, behave::after(60ms, action.good));
        go(action.way.mid(0, action.way.size() - 1));
        const Element last = ready(action.way.last());
        last.press();
        last.press(); // before the panel can change
        if (!action.confirm.isEmpty()) {
            ASSERT_TRUE(comes([this] { return isAsked() && front().isActive(); }));
            const Element yes = ready(action.confirm);
            yes.press();
            yes.press();
            ASSERT_TRUE(comes([this] { return !isAsked(); })) << "asked twice";
        }
        ASSERT_TRUE(comes([&] { return count(action.route) > 0 && !isBusy(); })) << action.route.toStdString();
        // An action without a note keeps the earlier one.
        expectLine(action, action.done.isEmpty() ? line().value_or(QString()) : action.done);
        EXPECT_FALSE(state().actionError) << qPrintable(*state().actionError);
        EXPECT_EQ(pasteboard.text, action.copied);
        EXPECT_TRUE(pasteboard.isSecret || action.copied.isEmpty());
        ASSERT_TRUE(comes([this] { return hasText(u"Studio"_s) && hasText(u"iPhone"_s) && hasText(u"Claude"_s); }));
        poll();
        EXPECT_EQ(count(action.route), 1) << action.route.toStdString();
    }
}

} // namespace tunedeck::test
