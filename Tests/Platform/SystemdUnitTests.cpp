#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Installation/ServiceInstaller.h"
#include "TunedeckMenu/Platform/Linux/Service/SystemdUnit.h"

namespace tunedeck::test {
namespace {

std::expected<SystemdUnit, QString> unitFor(const QString& home) {
    ManualClock clock;
    return systemdUnit(ServiceInstaller(home, {}, 501, {}, clock).plist());
}

TEST(SystemdUnitTest, TranslatesThePropertyList) {
    const auto unit = unitFor(u"/home/dj"_s);
    ASSERT_TRUE(unit);
    EXPECT_EQ(unit->folders, QStringList(u"/home/dj/Library/Logs"_s));
    // SupervisorTests run the service with the other settings.
    for (const auto* line : {"StartLimitIntervalSec=0", "RestartSec=30", "TimeoutStopSec=20", "Restart=always"}) {
        EXPECT_TRUE(unit->text.contains(QByteArray("\n") + line + '\n')) << line;
    }
}

TEST(SystemdUnitTest, OmitsWhatThePropertyListOmits) {
    const PropertyArray program{PropertyValue(u"/bin/true"_s), PropertyValue(u"an \"argument\" of 5%"_s)};
    const auto unit =
        systemdUnit({{u"ProgramArguments"_s, PropertyValue(program)}, {u"KeepAlive"_s, PropertyValue(false)}});
    ASSERT_TRUE(unit);
    EXPECT_TRUE(unit->folders.isEmpty());
    EXPECT_TRUE(unit->text.contains("ExecStart=:\"/bin/true\" \"an \\\"argument\\\" of 5%%\"\n"));
    for (const auto* absent : {"Restart=", "RestartSec=", "WorkingDirectory=", "Environment=", "Standard"}) {
        EXPECT_FALSE(unit->text.contains(absent)) << absent;
    }
}

TEST(SystemdUnitTest, RejectsWhatAUnitCannotContain) {
    EXPECT_FALSE(systemdUnit({}));
    EXPECT_FALSE(systemdUnit({{u"ProgramArguments"_s, PropertyValue(PropertyArray())}}));
    EXPECT_FALSE(systemdUnit({{u"ProgramArguments"_s, PropertyValue(PropertyArray{PropertyValue(u"true"_s)})}}));
    EXPECT_FALSE(unitFor(u"/home/a\nExecStartPre=/bin/evil"_s));
    EXPECT_FALSE(unitFor(u"/home/\x7f"_s));
    const PropertyArray program{PropertyValue(u"/bin/true"_s)};
    for (const auto& log : {u"/var/log/back\\"_s, u"/var/log/space "_s}) {
        EXPECT_FALSE(
            systemdUnit({{u"ProgramArguments"_s, PropertyValue(program)}, {u"StandardOutPath"_s, PropertyValue(log)}}));
    }
}

} // namespace
} // namespace tunedeck::test
