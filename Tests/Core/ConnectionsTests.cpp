#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Service/CloudHealth.h"
#include "TunedeckCore/Service/TunnelConfig.h"
#include "TunedeckCore/Update/Appcast.h"

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {

TEST(TunnelConfig, ReadsTheFirstHostAndServiceAtAnyDepth) {
    const QString text = uR"(# tunnel: commented
tunnel:	 6ff42ae2-765d-4adf-8112-31c55c1551ef 
credentials-file: /home/me/.cloudflared/x.json

  ingress :
    # hostname: commented.example
    - hostname: one.example
      service: http://localhost:8000
    - hostname: two.example
      service: http_status:404
just a line
-  service: third)"_s;
    const TunnelConfig expected{u"6ff42ae2-765d-4adf-8112-31c55c1551ef"_s, u"one.example"_s,
                                u"http://localhost:8000"_s};
    EXPECT_EQ(TunnelConfig::parse(text), expected);
    const test::TemporaryHome home;
    EXPECT_EQ(TunnelConfig::load(TunnelConfig::standardURL()), std::nullopt);
    const QString path = home.write(u".cloudflared/config.yml"_s, text.toUtf8());
    EXPECT_EQ(TunnelConfig::load(TunnelConfig::standardURL()), expected);
    home.write(u".cloudflared/config.yml"_s, "tunnel: a\nhostname: \xFF");
    EXPECT_EQ(TunnelConfig::load(path), std::nullopt);
    EXPECT_EQ(TunnelConfig::load(home.path()), std::nullopt);
}

TEST(TunnelConfig, RequiresATunnelId) {
    for (const auto& text : {u""_s, u"#tunnel: a"_s, u"  # tunnel: a"_s, u"tunnel:"_s, u"tunnel: \t"_s, u"tunnel a"_s,
                             u"Tunnel: a"_s, u"hostname: a\nservice: b"_s, u"tunnel: a\ntunnel:"_s, u"-tunnel: a"_s}) {
        EXPECT_EQ(TunnelConfig::parse(text), std::nullopt) << text.toStdString();
    }
    EXPECT_EQ(TunnelConfig::parse(u"tunnel: a\ntunnel: b: c\nhostname:\nhostname: d"_s),
              (TunnelConfig{u"b: c"_s, QString(u""_s), {}}));
    EXPECT_EQ(TunnelConfig::parse(u"- tunnel: a"_s), (TunnelConfig{u"a"_s, {}, {}}));
}

TEST(CloudHealth, RequiresAllButAgentAndQueue) {
    const auto full = CloudHealth::decode(
        R"({"status":"ok","version":"1","protocol":"3","agent":{"online":true,"last_seen":"t","version":"2"},"queued":4})");
    ASSERT_TRUE(full);
    EXPECT_EQ(*full, (CloudHealth{u"ok"_s, u"1"_s, u"3"_s, CloudHealth::Agent{true, u"t"_s, u"2"_s}, 4}));
    EXPECT_TRUE(CloudHealth::decode(R"({"status":"ok","version":"1","protocol":"3"})"));
    EXPECT_FALSE(CloudHealth::decode(R"({"status":"ok","version":"1"})"));
    EXPECT_FALSE(CloudHealth::decode(R"({"status":"ok","version":"1","protocol":3})"));
    EXPECT_FALSE(CloudHealth::decode(R"({"status":"ok","version":"1","protocol":"3","agent":{}})"));
}

TEST(Appcast, AcceptsSnakeAndCamelCase) {
    const auto feed =
        Appcast::decode(R"({"extra":1,"latest":{"version":"2.0.0","min_macos":"14","url":"https://a/b.zip",
        "sha256":"ab","size":5000000000,"published_at":"p","notes":"n","dmg_url":"d"}})");
    ASSERT_TRUE(feed);
    EXPECT_EQ(feed->latest,
              (Release{u"2.0.0"_s, u"14"_s, u"https://a/b.zip"_s, u"ab"_s, 5000000000, u"p"_s, u"n"_s, u"d"_s}));
    const auto camel = Appcast::decode(R"({"latest":{"version":"2","minMacos":"14","url":"u","sha256":"s"}})");
    ASSERT_TRUE(camel);
    EXPECT_EQ(camel->latest, (Release{u"2"_s, u"14"_s, u"u"_s, u"s"_s, {}, {}, {}, {}}));
    const auto bad = Appcast::decode(R"({"latest":{"version":"2","url":"u","sha256":"s","size":"1"}})");
    ASSERT_FALSE(bad);
    EXPECT_EQ(bad.error().description(), u"Unreadable document: \"latest.size\" expected an integer, found text."_s);
    EXPECT_FALSE(Appcast::decode(R"({"latest":{"version":"2","url":"u"}})"));
}

} // namespace
