#include "Tests/Helpers/RunTask.h"
#include "Tests/Platform/FakePeers.h"
#include "TunedeckMenu/Platform/Linux/LinuxDesktop.h"
#include "TunedeckMenu/Platform/Linux/LinuxWorkspace.h"
#include "TunedeckMenu/Platform/Linux/PortalAppearance.h"
#include "TunedeckMenu/Platform/Linux/Relauncher.h"
#include "TunedeckMenu/Platform/Linux/SessionBus.h"
#include "TunedeckMenu/Platform/SystemFacts.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tunedeck {
namespace {

using namespace std::chrono_literals;
using test::runUntil;

void writeScript(const QString& path, const QByteArray& text) {
    QFile file(path);
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write(text);
    file.close();
    ASSERT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

QStringList linesOf(const QString& path) {
    QFile file(path);
    return file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts)
                                      : QStringList();
}

// A PATH in which there is nothing but what the test puts there.
class WorkspaceTest : public testing::Test {
protected:
    void SetUp() override { qputenv("PATH", QFile::encodeName(m_folder.path())); }
    void TearDown() override { qputenv("PATH", m_path); }

    void installOpener(const QString& name) {
        writeScript(m_folder.filePath(name),
                    "#!/bin/sh\nfor a in \"$@\"; do echo \"$a\" >> '" + QFile::encodeName(opened()) + "'; done\n");
    }
    [[nodiscard]] QString opened() const { return m_folder.filePath(QStringLiteral("opened")); }

    testing::AssertionResult opens(const QStringList& expected) {
        runUntil([&] { return linesOf(opened()).size() >= expected.size(); });
        const auto seen = linesOf(opened());
        QFile::remove(opened());
        return seen == expected ? testing::AssertionSuccess()
                                : testing::AssertionFailure() << seen.join(u'|').toStdString();
    }

    QByteArray m_path = qgetenv("PATH");
    QTemporaryDir m_folder;
    SessionBus m_bus;
    LinuxWorkspace m_workspace{m_bus};
};

TEST_F(WorkspaceTest, OpensPathsAndAddressesWithWhatTheDesktopHas) {
    EXPECT_FALSE(m_workspace.open(QUrl(QStringLiteral("https://tunedeck.example/x"))));
    installOpener(QStringLiteral("gio"));
    EXPECT_TRUE(m_workspace.open(QUrl(QStringLiteral("https://tunedeck.example/x?y=a%20b"))));
    EXPECT_TRUE(opens({QStringLiteral("open"), QStringLiteral("https://tunedeck.example/x?y=a%20b")}));
    installOpener(QStringLiteral("xdg-open"));
    for (const auto& path : {QStringLiteral("/srv/a b/100%/#1?/ü.log"), QStringLiteral("/no/such/file")}) {
        EXPECT_TRUE(m_workspace.open(QUrl::fromLocalFile(path)));
        EXPECT_TRUE(opens({path}));
    }
    EXPECT_FALSE(m_workspace.open(QUrl()));
    EXPECT_FALSE(m_workspace.open(QUrl(QStringLiteral("relative"))));
}

TEST_F(WorkspaceTest, ShowsAFileSelectedOrElseItsFolder) {
    installOpener(QStringLiteral("xdg-open"));
    const auto file = QStringLiteral("/srv/my music/tune#1.xml");
    m_workspace.reveal(file); // no file manager, or not even a bus
    EXPECT_TRUE(opens({QStringLiteral("/srv/my music")}));
    if (!m_bus.connection().isConnected()) {
        GTEST_SKIP() << "there is no session bus; tools/lib/desktop makes one";
    }
    test::FileManager manager;
    m_workspace.reveal(file);
    EXPECT_TRUE(runUntil([&] { return !manager.shown.isEmpty(); }));
    EXPECT_EQ(manager.shown, QStringList{QStringLiteral("file:///srv/my%20music/tune%231.xml")});
    manager.refuses = true;
    m_workspace.reveal(file);
    EXPECT_TRUE(opens({QStringLiteral("/srv/my music")}));
}

TEST_F(WorkspaceTest, HasAnIconForEverything) {
    for (const auto& path : {QStringLiteral("/"), QStringLiteral("/etc/os-release"), QStringLiteral("/no/such.xml"),
                             QStringLiteral("/no/such.mp3"), QString()}) {
        EXPECT_FALSE(m_workspace.icon(path).pixmap(32, 32).isNull()) << path.toStdString();
    }
}

TEST(PortalAppearanceTest, FollowsThePortalAndItsRestarts) {
    SessionBus bus;
    if (!bus.connection().isConnected()) {
        GTEST_SKIP() << "there is no session bus; tools/lib/desktop makes one";
    }
    const auto neutral = QStringLiteral("org.freedesktop.appearance");
    const auto scheme = QStringLiteral("color-scheme");
    const auto gnome = QStringLiteral("org.gnome.desktop.interface");
    const auto animations = QStringLiteral("enable-animations");
    PortalAppearance source(bus);
    int changes = 0;
    QObject::connect(&source, &AppearanceSource::changed, &source, [&changes] { ++changes; });
    runUntil([] { return false; }, 50ms);
    EXPECT_EQ(source.current(), Appearance{}); // no portal: the light palette of the test's display
    EXPECT_EQ(changes, 0);

    auto portal = std::make_unique<test::SettingsPortal>(
        QMap<QString, QVariantMap>{{neutral, {{scheme, 1U}}}, {gnome, {{animations, true}}}});
    EXPECT_TRUE(runUntil([&] { return source.current().dark; })); // it came late
    EXPECT_FALSE(source.current().reduceMotion);
    portal->change(gnome, animations, false);
    EXPECT_TRUE(runUntil([&] { return source.current().reduceMotion; }));
    portal->change(neutral, QStringLiteral("accent-color"), 3U); // nothing of ours
    portal->change(gnome, animations, true);
    EXPECT_TRUE(runUntil([&] { return !source.current().reduceMotion; }));
    portal->change(neutral, QStringLiteral("reduced-motion"), 1U);
    EXPECT_TRUE(runUntil([&] { return source.current().reduceMotion; }));
    EXPECT_EQ(changes, 4);

    portal.reset();
    portal = std::make_unique<test::SettingsPortal>(QMap<QString, QVariantMap>{{neutral, {{scheme, 2U}}}});
    EXPECT_TRUE(runUntil([&] { return !source.current().dark; }));

    auto dark = QApplication::palette();
    const auto light = dark;
    dark.setColor(QPalette::Window, Qt::black);
    QApplication::setPalette(dark);
    runUntil([] { return false; }, 20ms);
    EXPECT_FALSE(source.current().dark); // the portal's word counts
    portal->change(neutral, scheme, 0U); // no preference: the palette's
    EXPECT_TRUE(runUntil([&] { return source.current().dark; }));
    changes = 0;
    QApplication::setPalette(light);
    EXPECT_TRUE(runUntil([&] { return changes == 1; }));
    EXPECT_FALSE(source.current().dark);
}

TEST(FolderPickerTest, AnswersOnceWithAFolderOrNothing) {
    const QTemporaryDir folder;
    QtFolderPicker picker;
    std::vector<std::optional<QString>> answers;
    const auto keep = [&answers](std::optional<QString> answer) { answers.push_back(std::move(answer)); };
    const auto dialog = [] {
        const auto widgets = QApplication::topLevelWidgets();
        const auto found =
            std::ranges::find_if(widgets, [](QWidget* w) { return w->isVisible() && w->inherits("QFileDialog"); });
        return found == widgets.end() ? nullptr : qobject_cast<QFileDialog*>(*found);
    };
    const auto title = QStringLiteral("Choose where Tunedeck saves downloads");
    picker.choose(title, QStringLiteral("Use This Folder"), folder.path(), keep);
    ASSERT_NE(dialog(), nullptr);
    EXPECT_EQ(dialog()->windowTitle(), title);
    EXPECT_EQ(dialog()->labelText(QFileDialog::Accept), QStringLiteral("Use This Folder"));
    EXPECT_TRUE(answers.empty()); // the event loop goes on
    picker.choose(title, QStringLiteral("Use This Folder"), folder.path(), keep);
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_FALSE(answers[0].has_value());
    QMetaObject::invokeMethod(dialog(), "accept"); // as its button does
    ASSERT_EQ(answers.size(), 2U);
    EXPECT_EQ(answers[1], folder.path());

    EXPECT_TRUE(runUntil([&] { return dialog() == nullptr; }));
    picker.choose(title, {}, folder.path(), keep);
    ASSERT_NE(dialog(), nullptr);
    dialog()->close();
    ASSERT_EQ(answers.size(), 3U);
    EXPECT_FALSE(answers[2].has_value());

    QtPasteboard().setText(QStringLiteral("“ü” 音楽"));
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("“ü” 音楽"));
}

TEST(RelauncherTest, StartsTheBundleWithTheProcessToWaitForAndEveryArgument) {
    const QTemporaryDir folder;
    const auto bundle = folder.filePath(QStringLiteral("My $(x) \"Deck\".app"));
    const auto seen = folder.filePath(QStringLiteral("seen"));
    ASSERT_TRUE(QDir().mkpath(bundle + QStringLiteral("/Contents/MacOS")));
    writeScript(bundle + QStringLiteral("/Contents/MacOS/Tunedeck"),
                "#!/bin/sh\nfor a in \"$@\"; do echo \"$a\" >> '" + QFile::encodeName(seen) + "'; done\n");
    LinuxRelauncher relauncher;
    EXPECT_TRUE(relauncher.relaunch(bundle, {QStringLiteral("--show"), QStringLiteral("a b $1")}));
    EXPECT_TRUE(runUntil([&] { return linesOf(seen).size() >= 4; }));
    EXPECT_EQ(linesOf(seen),
              (QStringList{QStringLiteral("--after"), QString::number(QCoreApplication::applicationPid()),
                           QStringLiteral("--show"), QStringLiteral("a b $1")}));
}

TEST(SystemFactsTest, TheBundleSaysWhoItIsAndOneWithoutInfoIsOfDevelopment) {
    const QTemporaryDir folder;
    const auto bundle = folder.filePath(QStringLiteral("A.app"));
    EXPECT_EQ(bundleOf(bundle + QStringLiteral("/Contents/MacOS/Tunedeck")), bundle);
    EXPECT_EQ(bundleOf(QStringLiteral("/usr/bin/tunedeck")), QStringLiteral("/usr/bin"));
    EXPECT_EQ(bundleFacts(bundle).version, QStringLiteral("dev"));
    EXPECT_EQ(bundleFacts(bundle).identifier, QStringLiteral("com.brightfold.tunedeck.menu"));
    ASSERT_TRUE(QDir().mkpath(bundle + QStringLiteral("/Contents")));
    writeScript(bundle + QStringLiteral("/Contents/Info.plist"),
                "<plist version=\"1.0\"><dict><key>CFBundleIdentifier</key><string>org.x</string>"
                "<key>CFBundleShortVersionString</key><string>1.2.3</string></dict></plist>");
    EXPECT_EQ(bundleFacts(bundle).version, QStringLiteral("1.2.3"));
    EXPECT_EQ(bundleFacts(bundle).identifier, QStringLiteral("org.x"));

    const auto home = qgetenv("HOME");
    qputenv("HOME", "/somewhere//else/");
    EXPECT_EQ(systemFacts().home, QStringLiteral("/somewhere/else"));
    qputenv("HOME", "not absolute");
    EXPECT_TRUE(systemFacts().home.startsWith(u'/'));
    qputenv("HOME", home);
    EXPECT_TRUE(QCoreApplication::applicationDirPath().startsWith(systemFacts().bundle));
}

} // namespace
} // namespace tunedeck
