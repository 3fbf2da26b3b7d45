#include "Tests/Menu/MenuFixture.h"
#include "TunedeckMenu/Model/MenuModel.h"

#include <memory>
#include <stdexcept>

namespace tunedeck::test {

namespace {

class MenuModelTest : public MenuTest {
protected:
    void refresh() { runToEnd(model->refresh(scope.token())); }
    void refreshLinks(MenuModel::LinksFetch fetch) { runToEnd(model->refreshLinks(fetch, scope.token())); }
    [[nodiscard]] const PanelState& state() const { return model->state(); }

    std::unique_ptr<MenuModel> model = std::make_unique<MenuModel>(services);
    TaskScope scope;
};

} // namespace

TEST_F(MenuModelTest, PollsWhileAPanelIsShownAndStopsAtOnceAfterTheLast) {
    model->panelAppeared();
    model->panelAppeared();
    ASSERT_TRUE(comes([&] { return clock.sleeping() == 1; }));
    EXPECT_EQ(count("GET /local/status"), 1);
    clock.advance(2999ms);
    settle();
    EXPECT_EQ(count("GET /local/status"), 1);
    server.on("GET /local/status", behave::hang());
    clock.advance(1ms);
    ASSERT_TRUE(comes([&] { return count("GET /local/status") == 2; }));
    model->panelDisappeared();
    settle();
    EXPECT_EQ(server.open(), 1) << "one panel is left";
    model->panelDisappeared();
    EXPECT_TRUE(comes([&] { return server.open() == 0; })) << "in mid-request";
    EXPECT_TRUE(state().service.isRunning()) << "a cancelled request says nothing about the service";

    serveStatus(R"("version":"5.1")");
    model->panelAppeared();
    ASSERT_TRUE(comes([&] { return clock.sleeping() == 1; }));
    EXPECT_EQ(state().service.status()->version, u"5.1"_s);
    model->panelDisappeared();
    EXPECT_EQ(clock.sleeping(), 0U) << "in mid-sleep";
}

TEST_F(MenuModelTest, DropsStaleReplies) {
    server.on("GET /local/status", behave::after(100ms, behave::answer(200, statusDocument(R"("version":"old")"))));
    const auto slow = endingOf(model->refresh(scope.token()));
    ASSERT_TRUE(comes([&] { return count("GET /local/status") == 1; }));
    serveStatus(R"("version":"new")");
    refresh();
    EXPECT_FALSE(slow->isThere()) << "the second wasn't delayed";
    ASSERT_TRUE(comes([&] { return slow->isThere(); }));
    EXPECT_EQ(state().service.status()->version, u"new"_s);
}

TEST_F(MenuModelTest, AStoppedServiceClearsTheToolReportAndKeepsTheLinks) {
    serveLinks(R"({"id":"a","kind":"claude"})");
    refresh();
    ASSERT_TRUE(comes([&] { return state().links.size() == 1; }));
    ASSERT_TRUE(state().toolbox);

    // A report requested before the service stopped arrives afterwards.
    server.on("GET /local/toolbox",
              behave::after(100ms, behave::answer(200, R"({"tools":[],"venvs":[],"installing":true})")));
    const auto late = endingOf(model->refreshToolbox(scope.token()));
    ASSERT_TRUE(comes([&] { return count("GET /local/toolbox") == 2; }));
    serve("GET /local/status", "{}", 500);
    refresh();
    EXPECT_TRUE(state().service.isNotRunning());
    ASSERT_TRUE(comes([&] { return late->isThere(); }));
    EXPECT_FALSE(state().toolbox);
    EXPECT_EQ(state().links.size(), 1U);
    EXPECT_EQ(count("GET /local/toolbox"), 2) << "a stopped service isn't asked for its tools";
}

TEST_F(MenuModelTest, FetchesLinksAgainWhenTheyAreStale) {
    const auto requests = [&] {
        settle();
        return count("GET /local/links");
    };
    refresh();
    EXPECT_EQ(requests(), 1);
    clock.advance(14999ms);
    refreshLinks(MenuModel::LinksFetch::IfStale);
    EXPECT_EQ(requests(), 1);
    refreshLinks(MenuModel::LinksFetch::Always);
    EXPECT_EQ(requests(), 2);

    serveLinks(R"({"id":"t","kind":"telegram","expiresAt":"2026-03-01T12:05:00Z"})");
    clock.advance(15s);
    refreshLinks(MenuModel::LinksFetch::IfStale);
    EXPECT_EQ(requests(), 3);
    EXPECT_TRUE(model->pairingTelegram());
    clock.advance(3s);
    refreshLinks(MenuModel::LinksFetch::IfStale);
    EXPECT_EQ(requests(), 4) << "while a pairing is pending";
    clock.advance(5min);
    EXPECT_FALSE(model->pairingTelegram()) << "its code has expired";

    serve("GET /local/links", "{}", 500);
    refreshLinks(MenuModel::LinksFetch::IfStale);
    refreshLinks(MenuModel::LinksFetch::IfStale);
    EXPECT_EQ(requests(), 5) << "a failed request counts as fresh";
    clock.advance(-1h);
    refreshLinks(MenuModel::LinksFetch::IfStale);
    EXPECT_EQ(requests(), 6) << "the clock was set back";
    EXPECT_EQ(state().links.size(), 1U);
    EXPECT_FALSE(state().actionError);
}

TEST_F(MenuModelTest, KeepsLinksThatArriveAfterThePanelClosed) {
    const auto list = behave::answer(200, R"({"links":[{"id":"a","kind":"claude"}]})");
    server.on("GET /local/links", behave::after(100ms, list));
    model->panelAppeared();
    ASSERT_TRUE(comes([&] { return count("GET /local/links") == 1; }));
    clock.advance(15s);
    refreshLinks(MenuModel::LinksFetch::IfStale); // one list at a time
    EXPECT_TRUE(state().links.empty());
    model->panelDisappeared();
    EXPECT_TRUE(comes([&] { return state().links.size() == 1; }));
    EXPECT_EQ(count("GET /local/links"), 1);
}

TEST_F(MenuModelTest, FetchesNoLinksWithoutTheCloud) {
    const auto cloud = [](const QByteArray& enabled, const QByteArray& connected) {
        return R"("cloud":{"base_url":"x","enabled":)" + enabled + R"(,"connected":)" + connected + '}';
    };
    refreshLinks(MenuModel::LinksFetch::Always);
    serveStatus(cloud("false", "true"));
    refresh();
    serveStatus(cloud("true", "false"));
    refresh();
    settle();
    EXPECT_EQ(count("GET /local/links"), 0);
    serveStatus(cloud("true", "null"));
    refresh();
    EXPECT_TRUE(comes([&] { return count("GET /local/links") == 1; })) << "unknown doesn't mean unreachable";
}

TEST_F(MenuModelTest, DropsAListRequestedBeforeALinkWasCreatedOrRemoved) {
    refresh();
    ASSERT_TRUE(comes([&] { return server.open() == 0 && count("GET /local/links") == 1; }));
    server.on("GET /local/links", behave::after(80ms, behave::answer(200, R"({"links":[]})")));
    const auto list = endingOf(model->refreshLinks(MenuModel::LinksFetch::Always, scope.token()));
    model->storeLink({.id = u"n"_s, .kind = u"claude"_s});
    ASSERT_TRUE(comes([&] { return list->isThere(); }));
    EXPECT_NE(model->link(u"n"_s), nullptr);
    server.on("GET /local/links",
              behave::after(80ms, behave::answer(200, R"({"links":[{"id":"n","kind":"claude"}]})")));
    const auto later = endingOf(model->refreshLinks(MenuModel::LinksFetch::Always, scope.token()));
    model->removeLink(u"n"_s);
    ASSERT_TRUE(comes([&] { return later->isThere(); }));
    EXPECT_EQ(model->link(u"n"_s), nullptr);
}

TEST_F(MenuModelTest, NotifiesOnlyOfChangesAndShowsOneLine) {
    loginItem.enabled = true;
    refresh();
    settle();
    EXPECT_TRUE(state().opensAtLogin);
    int changes = 0;
    int refreshes = 0;
    QObject::connect(model.get(), &MenuModel::changed, [&] { ++changes; });
    QObject::connect(model.get(), &MenuModel::refreshed, [&] { ++refreshes; });
    refresh();
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(refreshes, 1);

    model->showError(u"bad"_s);
    model->showNote(u"good"_s);
    EXPECT_FALSE(state().actionError);
    model->showError(u"bad"_s);
    EXPECT_FALSE(state().actionNote);
    model->showError(u"bad"_s);
    EXPECT_EQ(changes, 3);
}

TEST_F(MenuModelTest, TimedUpdateChecksAreRareAndFailSilently) {
    using Trigger = MenuModel::CheckTrigger;
    int checks = 0;
    UpdateCheck next{UpdateCheck::Failed{u"no"_s}};
    services.updates.check = [&](std::stop_token) {
        ++checks;
        return endedTask(next);
    };
    const auto check = [&](Trigger trigger) {
        model->checkForUpdates(trigger);
        return state().update;
    };
    EXPECT_EQ(check(Trigger::Timer), UpdateState{UpdateState::Idle{}});
    EXPECT_EQ(check(Trigger::Timer), UpdateState{UpdateState::Idle{}});
    EXPECT_EQ(checks, 1) << "a failed check is a check";
    EXPECT_EQ(check(Trigger::User), UpdateState{UpdateState::Failed{u"no"_s}});
    clock.advance(20h - 1s);
    check(Trigger::Timer);
    EXPECT_EQ(checks, 2);
    clock.advance(1s);
    next = {UpdateCheck::Available{{.version = u"1.3.0"_s}}};
    EXPECT_EQ(check(Trigger::Timer), UpdateState{UpdateState::Available{{.version = u"1.3.0"_s}}});
    next = {UpdateCheck::UpToDate{}};
    EXPECT_EQ(check(Trigger::User), UpdateState{UpdateState::UpToDate{clock.now()}});

    for (const auto& busy : {UpdateState{UpdateState::Checking{}}, UpdateState{UpdateState::Installing{}}}) {
        model->setUpdate(busy);
        EXPECT_EQ(check(Trigger::User), busy);
    }
    EXPECT_EQ(checks, 4);
    services.updates.check = [](std::stop_token) -> QCoro::Task<UpdateCheck> { throw std::runtime_error("broken"); };
    model->setUpdate({UpdateState::Idle{}});
    EXPECT_EQ(check(Trigger::User), UpdateState{UpdateState::Failed{u"broken"_s}});
}

} // namespace tunedeck::test
