#include "Tests/Helpers/Test.h"
#include "Tests/Platform/BusPeer.h"
#include "TunedeckMenu/Platform/Linux/Desktop/LinuxWorkspace.h"
#include "TunedeckMenu/Platform/Linux/Desktop/SessionBus.h"

#include <QFile>

namespace tunedeck::test {
namespace {

/// A file manager that keeps what it was asked to show, or refuses.
class FileManager final : public BusPeer {
public:
    FileManager() : BusPeer(u"org.freedesktop.FileManager1"_s, u"/org/freedesktop/FileManager1"_s) {}
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (refuses || message.member() != u"ShowItems") {
            return false;
        }
        shown += message.arguments().value(0).toStringList();
        return connection.send(message.createReply());
    }

    QStringList shown;
    bool refuses = false;
};

/// With an empty folder as PATH.
class WorkspaceTest : public testing::Test {
protected:
    void SetUp() override { qputenv("PATH", QFile::encodeName(m_home.path())); }
    void TearDown() override { qputenv("PATH", m_path); }

    /// Installs a program that records its arguments.
    void installOpener(const QString& name) {
        m_home.writeScript(name, "for a in \"$@\"; do echo \"$a\" >> '" + QFile::encodeName(m_opened) + "'; done");
    }
    [[nodiscard]] QStringList opened() const {
        return QString::fromUtf8(m_home.read(u"opened"_s)).split(u'\n', Qt::SkipEmptyParts);
    }

    testing::AssertionResult opens(const QStringList& expected) {
        runUntil([&] { return opened().size() >= expected.size(); });
        const auto seen = opened();
        QFile::remove(m_opened);
        return seen == expected ? testing::AssertionSuccess()
                                : testing::AssertionFailure() << seen.join(u'|').toStdString();
    }

    const QByteArray m_path = qgetenv("PATH");
    const TemporaryHome m_home;
    const QString m_opened = m_home.path(u"opened"_s);
    SessionBus m_bus;
    LinuxWorkspace m_workspace{m_bus};
};

TEST_F(WorkspaceTest, OpensWithTheFirstInstalledOpener) {
    EXPECT_FALSE(m_workspace.open(QUrl(u"https://tunedeck.example/x"_s)));
    installOpener(u"gio"_s);
    EXPECT_TRUE(m_workspace.open(QUrl(u"https://tunedeck.example/x?y=a%20b"_s)));
    EXPECT_TRUE(opens({u"open"_s, u"https://tunedeck.example/x?y=a%20b"_s}));
    installOpener(u"xdg-open"_s);
    for (const auto& path : {u"/srv/a b/100%/#1?/ü.log"_s, u"/no/such/file"_s}) {
        EXPECT_TRUE(m_workspace.open(QUrl::fromLocalFile(path)));
        EXPECT_TRUE(opens({path}));
    }
    EXPECT_FALSE(m_workspace.open(QUrl()));
    EXPECT_FALSE(m_workspace.open(QUrl(u"relative"_s)));
    EXPECT_FALSE(m_workspace.open(QUrl(u"file:--help"_s))) << "an option for the opener";
}

TEST_F(WorkspaceTest, RevealsAFileOrOpensItsFolder) {
    installOpener(u"xdg-open"_s);
    const auto folder = m_home.path(u"my music"_s);
    const auto file = m_home.write(u"my music/tune#1.xml"_s, {});
    m_workspace.reveal(file); // no file manager, and possibly no bus
    EXPECT_TRUE(opens({folder}));
    if (!m_bus.connection().isConnected()) {
        GTEST_SKIP() << "no session bus; use tools/lib/desktop";
    }
    FileManager manager;
    m_workspace.reveal(file);
    EXPECT_TRUE(runUntil([&] { return !manager.shown.isEmpty(); }));
    EXPECT_EQ(manager.shown, QStringList{u"file://"_s + folder.chopped(8) + u"my%20music/tune%231.xml"_s});
    runUntil([] { return false; }, 20ms);
    EXPECT_TRUE(opened().isEmpty()) << "the folder as well";
    manager.refuses = true;
    m_workspace.reveal(file);
    EXPECT_TRUE(opens({folder}));
    m_workspace.reveal(file + u"/inside"_s); // isn't in a folder
    runUntil([] { return false; }, 20ms);
    EXPECT_TRUE(opened().isEmpty()) << "the file";
}

TEST_F(WorkspaceTest, ShowsTheKindOfAFileByItsIcon) {
    EXPECT_FALSE(m_workspace.icon(u"/x/a.txt"_s).isNull());
    m_home.write(u"A.app/Contents/Info.plist"_s, {});
    m_home.write(u"theme/index.theme"_s, "[Icon Theme]\nName=Test\nDirectories=16\n[16]\nSize=16\n");
    const auto previous = std::pair(QIcon::themeSearchPaths(), QIcon::themeName());
    QIcon::setThemeSearchPaths({m_home.path()});
    QIcon::setThemeName(u"theme"_s);
    for (const auto& [path, icon] : {std::pair(m_home.path(), u"folder"_s),
                                     {u"/x/A.MP3"_s, u"audio-x-generic"_s},
                                     {u"/x/a.xml"_s, u"text-xml"_s},
                                     {m_home.path(u"A.app"_s), u"application-x-executable"_s},
                                     {u"/bin/sh"_s, u"application-x-executable"_s},
                                     {u"/x/a.txt"_s, u"text-x-generic"_s}}) {
        m_home.write(u"theme/16/%1.png"_s.arg(icon), "");
        EXPECT_EQ(m_workspace.icon(path).name(), icon) << path.toStdString();
    }
    QIcon::setThemeSearchPaths(previous.first);
    QIcon::setThemeName(previous.second);
}

} // namespace
} // namespace tunedeck::test
