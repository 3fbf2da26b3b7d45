#include "UpdateHelper/SandboxProfile.h"

#include <gtest/gtest.h>

namespace tunedeck::test {

TEST(SandboxProfileTest, AllowsEachStepWhatItNeedsAfterDenyingTheRest) {
    const auto position = [](const std::string& profile, const char* rule) {
        return static_cast<int>(profile.find(rule)); // -1 if it isn't there
    };
    const auto fetch = helper::sandboxProfile({.network = true});
    EXPECT_EQ(position(fetch, "network"), -1);
    EXPECT_EQ(position(fetch, "file-read"), -1);
    EXPECT_GT(position(fetch, "(deny file-write* "), 0);

    const auto verify = helper::sandboxProfile({.files = {"/a/feed", R"(/a/"\\q)"}});
    EXPECT_GT(position(verify, "(deny network*)"), 0);
    EXPECT_GT(position(verify, R"((allow file-read-data (literal "/a/feed")))"),
              position(verify, "(deny file-read-data)"));
    EXPECT_GT(position(verify, R"((literal "/a/\"\\\\q"))"), 0) << verify;
    EXPECT_EQ(position(verify, "(allow file-write* (subpath"), -1);

    const auto unpack = helper::sandboxProfile({.files = {"/a/zip"}, .folder = "/a/unpacked"});
    EXPECT_GT(position(unpack, R"((allow file-write* (subpath "/a/unpacked")))"),
              position(unpack, "(deny file-write* "));
    EXPECT_GT(position(unpack, R"((allow file-read-data (subpath "/a/unpacked")))"),
              position(unpack, "(deny file-read-data)"));
    for (const auto& profile : {fetch, verify, unpack}) {
        EXPECT_GT(position(profile, "(deny process-exec* process-fork)"), position(profile, "(allow default)"));
    }
}

} // namespace tunedeck::test
