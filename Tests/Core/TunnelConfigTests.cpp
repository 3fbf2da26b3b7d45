#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Service/TunnelConfig.h"

namespace tunedeck::test {
namespace {

TEST(TunnelConfig, ReadsTheFirstHostAndServiceAtAnyDepth) {
    const QString text = uR"(# tunnel: commented
tunnel:	 6ff42ae2 
  ingress :
    # hostname: commented.example
    - hostname: one.example
      service: http://localhost:8000
    - hostname: two.example
      service: http_status:404
just a line
-  service: third)"_s;
    const TunnelConfig expected{u"6ff42ae2"_s, u"one.example"_s, u"http://localhost:8000"_s};
    const TemporaryHome home;
    EXPECT_EQ(TunnelConfig::load(TunnelConfig::standardURL()), std::nullopt);
    home.write(u".cloudflared/config.yml"_s, text.toUtf8());
    EXPECT_EQ(TunnelConfig::load(TunnelConfig::standardURL()), expected);
    home.write(u".cloudflared/config.yml"_s, "tunnel: a\nhostname: \xFF");
    EXPECT_EQ(TunnelConfig::load(TunnelConfig::standardURL()), std::nullopt);
}

TEST(TunnelConfig, RequiresATunnelId) {
    for (const auto& text : {u"  # tunnel: a"_s, u"tunnel: \t"_s, u"tunnel a"_s, u"Tunnel: a"_s, u"hostname: a"_s,
                             u"tunnel: a\ntunnel:"_s, u"-tunnel: a"_s}) {
        EXPECT_EQ(TunnelConfig::parse(text), std::nullopt) << text.toStdString();
    }
    EXPECT_EQ(TunnelConfig::parse(u"tunnel: a\ntunnel: b: c\nhostname:\nhostname: d"_s),
              (TunnelConfig{u"b: c"_s, QString(u""_s), {}}));
}

} // namespace
} // namespace tunedeck::test
