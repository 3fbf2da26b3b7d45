#pragma once

#include "Tests/Helpers/FakePlatform.h"
#include "Tests/Helpers/StatusDocument.h"
#include "Tests/Helpers/Test.h"
#include "Tests/Helpers/TestServer.h"
#include "TunedeckMenu/Model/MenuServices.h"

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

namespace tunedeck::test {

/// The `rekordbox_db` member of a status document, with one backup of this version.
inline QByteArray libraryMember(const QByteArray& backup, bool rekordboxRunning = false) {
    return R"("rekordbox_db":{"db_path":"/db","pending":[],"failed":[],"rekordbox_running":)" +
           QByteArray(rekordboxRunning ? "true" : "false") + R"(,"backups":[{"version":")" + backup +
           R"(","created_at":"2026-02-28T10:00:00Z","reason":"before import","size_bytes":1}]})";
}

/// A task that has already ended. The value is kept by the coroutine.
template<class T>
QCoro::Task<T> endedTask(T value) {
    co_return value;
}

/// The services of a model and its actions: a fake service over real HTTP, and a fake desktop that records its calls.
class MenuWorld {
protected:
    MenuWorld() {
        serveStatus();
        serve("GET /local/toolbox", R"({"tools":[],"venvs":[],"installing":false})");
        serveLinks({});
    }

    void serve(const QByteArray& route, const QByteArray& body, int status = 200) {
        server.on(route, behave::answer(status, body));
    }
    /// `changes`: see statusDocument().
    void serveStatus(const QByteArray& changes = {}) { serve("GET /local/status", statusDocument(changes)); }
    /// `links`: JSON objects, separated by commas.
    void serveLinks(const QByteArray& links) { serve("GET /local/links", R"({"links":[)" + links + "]}"); }

    /// The number of requests for a route.
    [[nodiscard]] int count(const QByteArray& route) const {
        const auto requests = server.requests();
        return static_cast<int>(std::ranges::count(
            requests, route, [](const ServedRequest& each) { return each.method + ' ' + each.target; }));
    }
    /// The body of the last request for a route.
    [[nodiscard]] QByteArray bodyOf(const QByteArray& route) const {
        QByteArray body;
        for (const auto& request : server.requests()) {
            body = request.method + ' ' + request.target == route ? request.body : body;
        }
        return body;
    }
    /// Waits for a condition; false on timeout.
    static bool comes(const std::function<bool()>& condition) { return runUntil(condition, std::chrono::seconds(5)); }
    /// Waits long enough for an unexpected request to arrive.
    static void settle() {
        runUntil([] { return false; }, std::chrono::milliseconds(40));
    }

    TemporaryHome home;
    TestServer server;
    ManualClock clock;
    FakeWorkspace workspace;
    FakePasteboard pasteboard;
    FakeFolderPicker picker;
    FakeLoginItem loginItem;
    FakeRelauncher relauncher;
    std::vector<std::pair<Confirmation, std::function<void(bool)>>> questions;
    std::vector<QStringList> launchctlCalls;
    std::vector<int> launchctlStatus; ///< exit statuses of the next calls; 0 afterwards
    int quits = 0;

    QCoro::Task<std::int32_t> launchctl(QStringList arguments) {
        launchctlCalls.push_back(arguments);
        const auto call = launchctlCalls.size() - 1;
        co_return call < launchctlStatus.size() ? launchctlStatus[call] : 0;
    }

    MenuServices services{
        .clock = clock,
        .workspace = workspace,
        .pasteboard = pasteboard,
        .folderPicker = picker,
        .loginItem = loginItem,
        .relauncher = relauncher,
        .facts = {.home = home.path(), .uid = 501, .bundle = home.path(u"Tunedeck.app"_s), .appVersion = u"1.2.0"_s},
        .settings = SettingsFile(home.path(u".tunedeck/settings.json"_s)),
        .launchctl = [this](QStringList arguments, std::stop_token) { return launchctl(std::move(arguments)); },
        .status = {server.url("/local/status")},
        .toolbox = {server.url()},
        .library = {server.url()},
        .links = {server.url()},
        .confirm =
            [this](Confirmation question, std::function<void(bool)> answer) {
                questions.emplace_back(std::move(question), std::move(answer));
            },
        .quit = [this] { ++quits; },
    };
};

class MenuTest : public testing::Test, protected MenuWorld {};

} // namespace tunedeck::test
