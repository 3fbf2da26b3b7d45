#include "Tests/Helpers/Test.h"
#include "Tests/Platform/SettingsPortal.h"
#include "TunedeckCore/Locations/BundlePaths.h"
#include "TunedeckMenu/Platform/BundleFacts.h"
#include "TunedeckMenu/Platform/Linux/Desktop/LinuxAppearanceSource.h"
#include "TunedeckMenu/Platform/Linux/Desktop/LinuxFolderPicker.h"
#include "TunedeckMenu/Platform/Linux/Desktop/LinuxPasteboard.h"
#include "TunedeckMenu/Platform/Linux/Desktop/LinuxWorkspace.h"
#include "TunedeckMenu/Platform/Linux/Desktop/SessionBus.h"
#include "TunedeckMenu/Platform/SystemFacts.h"

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

namespace tunedeck {
namespace {

using namespace test;

/// Installs a program that records its arguments, one per line.
void installRecorder(const QString& program, const QString& record) {
    QFile file(program);
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write("#!/bin/sh\nfor a in \"$@\"; do echo \"$a\" >> '" + QFile::encodeName(record) + "'; done\n");
    ASSERT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

QStringList linesOf(const QString& path) {
    QFile file(path);
    return file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts)
                                      : QStringList();
}

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
    void SetUp() override { qputenv("PATH", QFile::encodeName(m_folder.path())); }
    void TearDown() override { qputenv("PATH", m_path); }

    void installOpener(const QString& name) { installRecorder(m_folder.filePath(name), opened()); }
    [[nodiscard]] QString opened() const { return m_folder.filePath(u"opened"_s); }

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
}

TEST_F(WorkspaceTest, RevealsAFileOrOpensItsFolder) {
    installOpener(u"xdg-open"_s);
    const auto file = u"/srv/my music/tune#1.xml"_s;
    m_workspace.reveal(file); // no file manager, and possibly no bus
    EXPECT_TRUE(opens({u"/srv/my music"_s}));
    if (!m_bus.connection().isConnected()) {
        GTEST_SKIP() << "no session bus; use tools/lib/desktop";
    }
    FileManager manager;
    m_workspace.reveal(file);
    EXPECT_TRUE(runUntil([&] { return !manager.shown.isEmpty(); }));
    EXPECT_EQ(manager.shown, QStringList{u"file:///srv/my%20music/tune%231.xml"_s});
    manager.refuses = true;
    m_workspace.reveal(file);
    EXPECT_TRUE(opens({u"/srv/my music"_s}));
}

TEST(AppearanceSourceTest, FollowsThePortalOrElseThePalette) {
    SessionBus bus;
    if (!bus.connection().isConnected()) {
        GTEST_SKIP() << "no session bus; use tools/lib/desktop";
    }
    const auto neutral = u"org.freedesktop.appearance"_s;
    const auto scheme = u"color-scheme"_s;
    const auto gnome = u"org.gnome.desktop.interface"_s;
    const auto animations = u"enable-animations"_s;
    LinuxAppearanceSource source(bus);
    int changes = 0;
    QObject::connect(&source, &AppearanceSource::changed, &source, [&changes] { ++changes; });
    runUntil([] { return false; }, 50ms);
    EXPECT_EQ(source.current(), Appearance{}); // without a portal the palette decides, which is light
    EXPECT_EQ(changes, 0);

    test::SettingsPortal portal({{neutral, {{scheme, 1U}}}, {gnome, {{animations, true}}}});
    EXPECT_TRUE(runUntil([&] { return source.current().dark; })); // it started late
    EXPECT_FALSE(source.current().reduceMotion);
    portal.change(gnome, animations, false);
    EXPECT_TRUE(runUntil([&] { return source.current().reduceMotion; }));
    portal.change(neutral, u"accent-color"_s, 3U); // irrelevant
    portal.change(gnome, animations, true);
    EXPECT_TRUE(runUntil([&] { return !source.current().reduceMotion; }));
    portal.change(neutral, u"reduced-motion"_s, 1U);
    EXPECT_TRUE(runUntil([&] { return source.current().reduceMotion; }));
    EXPECT_EQ(changes, 4);

    portal.change(neutral, scheme, 2U);
    EXPECT_TRUE(runUntil([&] { return !source.current().dark; }));

    auto dark = QApplication::palette();
    const auto light = dark;
    dark.setColor(QPalette::Window, Qt::black);
    QApplication::setPalette(dark);
    runUntil([] { return false; }, 20ms);
    EXPECT_FALSE(source.current().dark); // the portal decides
    portal.change(neutral, scheme, 0U);  // no preference: the palette decides
    EXPECT_TRUE(runUntil([&] { return source.current().dark; }));
    changes = 0;
    QApplication::setPalette(light);
    EXPECT_TRUE(runUntil([&] { return changes == 1; }));
    EXPECT_FALSE(source.current().dark);
}

TEST(FolderPickerTest, CallsBackOnceWithAFolderOrNothing) {
    const QTemporaryDir folder;
    LinuxFolderPicker picker;
    std::vector<std::optional<QString>> answers;
    const auto keep = [&answers](std::optional<QString> answer) { answers.push_back(std::move(answer)); };
    const auto dialog = [] {
        const auto widgets = QApplication::topLevelWidgets();
        const auto found =
            std::ranges::find_if(widgets, [](QWidget* w) { return w->isVisible() && w->inherits("QFileDialog"); });
        return found == widgets.end() ? nullptr : qobject_cast<QFileDialog*>(*found);
    };
    const auto title = u"Choose where Tunedeck saves downloads"_s;
    picker.choose(title, u"Use This Folder"_s, folder.path(), keep);
    ASSERT_NE(dialog(), nullptr);
    EXPECT_EQ(dialog()->windowTitle(), title);
    EXPECT_EQ(dialog()->labelText(QFileDialog::Accept), u"Use This Folder"_s);
    EXPECT_TRUE(answers.empty()); // it doesn't block
    picker.choose(title, u"Use This Folder"_s, folder.path(), keep);
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

    LinuxPasteboard().setText(u"“ü” 音楽"_s);
    EXPECT_EQ(QApplication::clipboard()->text(), u"“ü” 音楽"_s);
}

TEST(SystemFactsTest, DescribesTheBundleAndTheSystem) {
    const test::TemporaryHome folder;
    const auto bundle = folder.path(u"A.app"_s);
    EXPECT_EQ(BundlePaths::containing(bundle + u"/Contents/MacOS/Tunedeck"_s).bundle(), bundle);
    EXPECT_EQ(BundlePaths::containing(u"/usr/bin/tunedeck"_s).bundle(), u"/usr/bin"_s);
    EXPECT_EQ(bundleFacts(bundle).version, u"dev"_s);
    EXPECT_EQ(bundleFacts(bundle).identifier, u"com.brightfold.tunedeck.menu"_s);
    folder.write(u"A.app/Contents/Info.plist"_s,
                 "<plist version=\"1.0\"><dict><key>CFBundleIdentifier</key><string>org.x</string>"
                 "<key>CFBundleShortVersionString</key><string>1.2.3</string></dict></plist>");
    EXPECT_EQ(bundleFacts(bundle).version, u"1.2.3"_s);
    EXPECT_EQ(bundleFacts(bundle).identifier, u"org.x"_s);

    qputenv("HOME", "/somewhere//else/");
    EXPECT_EQ(systemFacts().home, u"/somewhere/else"_s);
    qputenv("HOME", "not absolute");
    EXPECT_TRUE(systemFacts().home.startsWith(u'/'));
    EXPECT_TRUE(QCoreApplication::applicationDirPath().startsWith(systemFacts().bundle));
    const auto system = QSettings(u"/etc/os-release"_s, QSettings::IniFormat);
    EXPECT_EQ(systemFacts().systemVersionText, system.value(u"PRETTY_NAME"_s).toString());
    EXPECT_EQ(systemFacts().systemVersion[0], system.value(u"VERSION_ID"_s).toString().section(u'.', 0, 0).toInt());
}

} // namespace
} // namespace tunedeck
