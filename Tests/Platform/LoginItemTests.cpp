#include "Tests/Helpers/Test.h"
#include "TunedeckMenu/Platform/Linux/Desktop/LinuxLoginItem.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>

namespace tunedeck::test {
namespace {

class LoginItemTest : public testing::Test {
protected:
    [[nodiscard]] QString path(const QString& name) const { return m_home.path(name); }
    [[nodiscard]] QString entry() const { return path(relative); }
    [[nodiscard]] QByteArray read() const { return m_home.read(relative); }
    void write(const QByteArray& text) const { m_home.write(relative, text); }

    const QString relative = u"config/autostart/app.desktop"_s;
    TemporaryHome m_home;
};

TEST_F(LoginItemTest, StartsProgramsAtUnusualPaths) {
    const auto launcher = QStandardPaths::findExecutable(u"gio"_s);
    int number = 0;
    for (const auto& name :
         {u"Tunedeck"_s, u"Tune deck"_s, u"100% %U %%f"_s, u"a=b"_s, u"$HOME `id`"_s, u"back\\slash\\n"_s,
          u"quo\"te 'x'"_s, u"Größe → 音楽"_s, u" begins with; & | > * ? # ~ ("_s, u"line\nfeed\ttab"_s}) {
        const auto program = u"%1/%2/Tunedeck"_s.arg(++number).arg(name);
        m_home.writeScript(program, "[ $# -eq 0 ] && : > \"$0.started\"");
        LinuxLoginItem item(entry(), path(program), u"icon"_s);
        ASSERT_TRUE(item.setEnabled(true).has_value());
        EXPECT_TRUE(item.isEnabled()) << name.toStdString();
        if (!launcher.isEmpty()) {
            QProcess::execute(launcher, {u"launch"_s, entry()});
            EXPECT_TRUE(runUntil([&] { return QFile::exists(path(program) + u".started"_s); })) << read().toStdString();
        }
        ASSERT_TRUE(item.setEnabled(false).has_value());
        EXPECT_FALSE(item.isEnabled());
        EXPECT_FALSE(QFile::exists(entry()));
    }
}

TEST_F(LoginItemTest, FollowsTheDesktopsSettingUntilEnabledAgain) {
    m_home.writeScript(u"Tunedeck"_s, {});
    LinuxLoginItem item(entry(), path(u"Tunedeck"_s), {});
    EXPECT_FALSE(item.isEnabled());
    ASSERT_TRUE(item.setEnabled(true).has_value());
    const auto good = read();
    EXPECT_TRUE(good.contains("\nTerminal=false\nX-GNOME-Autostart-enabled=true\n"));
    for (const QByteArray line : {"Hidden=true\n", "Hidden = TRUE\n", "X-GNOME-Autostart-enabled=false\n"}) {
        write(good + line);
        EXPECT_FALSE(item.isEnabled()) << line.toStdString();
        ASSERT_TRUE(item.setEnabled(true).has_value());
        EXPECT_TRUE(item.isEnabled());
    }
    write(good + "[Desktop Action x]\nHidden=true\n"); // another group
    EXPECT_TRUE(item.isEnabled());
    write("[Desktop Entry]\nExec=true\n"); // no TryExec
    EXPECT_TRUE(item.isEnabled());
    write("[Other]\n" + good.mid(good.indexOf('\n') + 1));
    EXPECT_FALSE(item.isEnabled());
    write("");
    EXPECT_FALSE(item.isEnabled());
    write(good);
    QFile::remove(path(u"Tunedeck"_s)); // a session can't start it
    EXPECT_FALSE(item.isEnabled());
}

TEST_F(LoginItemTest, ReportsFailures) {
    LinuxLoginItem item(entry(), u"/bin/true"_s, {});
    EXPECT_TRUE(item.setEnabled(false).has_value()); // already disabled
    QFile inTheWay(m_home.write(u"config/autostart"_s, {}));
    const auto blocked = item.setEnabled(true);
    ASSERT_FALSE(blocked.has_value());
    EXPECT_GT(blocked.error().size(), 5);
    EXPECT_TRUE(item.setEnabled(false).has_value());

    inTheWay.remove();
    ASSERT_TRUE(QDir().mkpath(entry())); // a folder in place of the entry
    EXPECT_FALSE(item.isEnabled());
    EXPECT_FALSE(item.setEnabled(true).has_value());
    EXPECT_FALSE(item.setEnabled(false).has_value());
}

TEST_F(LoginItemTest, UsesTheUsersConfigurationFolder) {
    const auto name = u"/autostart/com.brightfold.tunedeck.menu.desktop"_s;
    qputenv("XDG_CONFIG_HOME", "relative");
    EXPECT_EQ(LinuxLoginItem::defaultEntryPath(u"/h"_s), u"/h/.config"_s + name);
    qputenv("XDG_CONFIG_HOME", "/elsewhere");
    EXPECT_EQ(LinuxLoginItem::defaultEntryPath(u"/h"_s), u"/elsewhere"_s + name);
}

} // namespace
} // namespace tunedeck::test
