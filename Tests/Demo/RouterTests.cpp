#include "DemoService/Files.h"
#include "DemoService/Record.h"
#include "DemoService/Router.h"
#include "Tests/Demo/TempHome.h"
#include "Tests/Demo/TestWorld.h"

#include <gtest/gtest.h>

namespace tunedeck::demo {

namespace {

/// A world with an interface, on a home folder of its own.
struct Asked {
    explicit Asked(std::string_view scenario) : test(scenario) {}

    Reply operator()(std::string method, std::string target, std::string body = {}) {
        return answer(test.world, {.version = "1.2.3", .paths = home.paths, .port = 8123},
                      {.method = std::move(method), .target = std::move(target), .body = std::move(body)}, test.now);
    }

    TempHome home;
    TestWorld test;
};

bool hasError(const Reply& reply) {
    const auto body = parseObject(reply.body);
    return body && body->HasMember("error") && (*body)["error"].IsString();
}

} // namespace

TEST(DemoRouter, WrongAddressesMethodsAndBodiesAreRefusedWithAReason) {
    Asked ask("quiet");
    const std::string before = stateText(ask.test.state());
    for (const char* target : {"", "/local", "/status", "/local/", "/local/status/more", "/local/rekordbox/explode",
                               "/local/links/x/y", "*"}) {
        const Reply reply = ask("GET", target);
        EXPECT_EQ(reply.status, 404) << target;
        EXPECT_TRUE(hasError(reply)) << target;
    }
    const auto allowed = [&](const char* method, const char* target) {
        const Reply reply = ask(method, target);
        EXPECT_EQ(reply.status, 405) << method << " " << target;
        EXPECT_TRUE(hasError(reply));
        return reply.allow;
    };
    EXPECT_EQ(allowed("POST", "/local/status"), "GET");
    EXPECT_EQ(allowed("PUT", "/local/links"), "GET, POST");
    EXPECT_EQ(allowed("GET", "/local/links/x"), "DELETE");
    EXPECT_EQ(allowed("DELETE", "/local/links/x/rotate"), "POST");
    for (const char* body : {"{", "[]", "\"x\"", "{} x", "\xff", "{\"kind\":5}", "{}"}) {
        EXPECT_EQ(ask("POST", "/local/links", body).status, 400) << body;
        const Reply restore = ask("POST", "/local/rekordbox/restore", body);
        EXPECT_EQ(restore.status, 400) << body;
        EXPECT_TRUE(hasError(restore) && restore.body.starts_with(R"({"ok":false,)")) << restore.body;
    }
    EXPECT_EQ(stateText(ask.test.state()), before);
}

TEST(DemoRouter, TheFolderForDownloadsIsTheChosenOneAndIsNotMadeWhenItIsMissing) {
    Asked ask("quiet");
    const auto folder = [&] {
        const auto status = parseObject(ask("GET", "/local/status").body);
        return std::string((*status)["download_dir_source"].GetString()) + " " +
               ((*status)["download_dir_writable"].GetBool() ? "" : (*status)["download_dir_error"].GetString());
    };
    EXPECT_EQ(folder(), "default ");
    EXPECT_TRUE(std::filesystem::is_empty(ask.home.paths.home / "Music" / "Tunedeck"))
        << "trying leaves nothing behind";
    const std::string chosen = ask.home.paths.home / "Gigs";
    writeFileAtomically(ask.home.paths.settingsFile(), R"({"onboarded":true,"download_dir":")" + chosen + "\"}");
    EXPECT_EQ(folder(), "settings The folder doesn't exist. Is its drive connected?");
    EXPECT_FALSE(std::filesystem::exists(chosen)) << "its drive may come back";
    std::filesystem::create_directory(chosen);
    EXPECT_EQ(folder(), "settings ");
}

} // namespace tunedeck::demo
