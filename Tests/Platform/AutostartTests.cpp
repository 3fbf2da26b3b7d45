#include "Tests/Helpers/RunTask.h"
#include "TunedeckMenu/Platform/Linux/AutostartItem.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace tunedeck {
namespace {

class AutostartTest : public testing::Test {
protected:
    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }
    [[nodiscard]] QString entry() const { return path(QStringLiteral("config/autostart/app.desktop")); }

    // A program that leaves a mark beside itself when it is started.
    static void makeProgram(const QString& program) {
        ASSERT_TRUE(QDir().mkpath(program.left(program.lastIndexOf(u'/'))));
        QFile file(program);
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write("#!/bin/sh\n[ $# -eq 0 ] && : > \"$0.started\"\n");
        file.close();
        ASSERT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }

    void write(const QByteArray& text) const {
        QFile file(entry());
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(text);
    }

    [[nodiscard]] QByteArray read() const {
        QFile file(entry());
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir m_folder;
};

TEST_F(AutostartTest, EveryPathStartsAsItIs) {
    const auto launcher = QStandardPaths::findExecutable(QStringLiteral("gio"));
    int number = 0;
    for (const auto& name : {QStringLiteral("Tunedeck"), QStringLiteral("Tune deck"), QStringLiteral("100% %U %%f"),
                             QStringLiteral("a=b"), QStringLiteral("$HOME `id`"), QStringLiteral("back\\slash\\n"),
                             QStringLiteral("quo\"te 'x'"), QStringLiteral("Größe → 音楽"),
                             QStringLiteral(" begins with; & | > * ? # ~ ("), QStringLiteral("line\nfeed\ttab")}) {
        const auto program = path(QStringLiteral("%1/%2/Tunedeck").arg(++number).arg(name));
        makeProgram(program);
        AutostartItem item(entry(), program, QStringLiteral("icon"));
        ASSERT_TRUE(item.setEnabled(true).has_value());
        EXPECT_TRUE(item.isEnabled()) << name.toStdString();
        if (!launcher.isEmpty()) {
            QProcess::execute(launcher, {QStringLiteral("launch"), entry()});
            EXPECT_TRUE(test::runUntil([&] { return QFile::exists(program + QStringLiteral(".started")); }))
                << read().toStdString();
        }
        ASSERT_TRUE(item.setEnabled(false).has_value());
        EXPECT_FALSE(item.isEnabled());
        EXPECT_FALSE(QFile::exists(entry()));
    }
    if (launcher.isEmpty()) {
        GTEST_SKIP() << "gio is missing: no launcher to try the entries with";
    }
}

TEST_F(AutostartTest, WhatTheDesktopSwitchedOffIsOffUntilItIsSwitchedOnHere) {
    const auto program = path(QStringLiteral("Tunedeck"));
    makeProgram(program);
    AutostartItem item(entry(), program, {});
    EXPECT_FALSE(item.isEnabled());
    ASSERT_TRUE(item.setEnabled(true).has_value());
    const auto good = read();
    for (const QByteArray line : {"Hidden=true\n", "Hidden = TRUE\n", "X-GNOME-Autostart-enabled=false\n"}) {
        write(good + line);
        EXPECT_FALSE(item.isEnabled()) << line.toStdString();
        ASSERT_TRUE(item.setEnabled(true).has_value());
        EXPECT_TRUE(item.isEnabled());
    }
    write(good + "[Desktop Action x]\nHidden=true\n"); // another group's affair
    EXPECT_TRUE(item.isEnabled());
    write("[Other]\n" + good.mid(good.indexOf('\n') + 1));
    EXPECT_FALSE(item.isEnabled());
    write("");
    EXPECT_FALSE(item.isEnabled());
    write(good);
    QFile::remove(program); // a session wouldn't start it either
    EXPECT_FALSE(item.isEnabled());
}

TEST_F(AutostartTest, FailuresAreSentencesAndLeaveNothingHalfDone) {
    AutostartItem item(entry(), QStringLiteral("/bin/true"), {});
    EXPECT_TRUE(item.setEnabled(false).has_value()); // off already
    ASSERT_TRUE(QDir().mkpath(path(QStringLiteral("config"))));
    QFile inTheWay(path(QStringLiteral("config/autostart")));
    ASSERT_TRUE(inTheWay.open(QFile::WriteOnly));
    const auto blocked = item.setEnabled(true);
    ASSERT_FALSE(blocked.has_value());
    EXPECT_GT(blocked.error().size(), 5);
    EXPECT_TRUE(item.setEnabled(false).has_value());

    inTheWay.remove();
    ASSERT_TRUE(QDir().mkpath(entry())); // a folder of the entry's name
    EXPECT_FALSE(item.isEnabled());
    EXPECT_FALSE(item.setEnabled(true).has_value());
    EXPECT_FALSE(item.setEnabled(false).has_value());
}

TEST_F(AutostartTest, TheEntryStandsInTheUsersConfigurationFolder) {
    const auto before = qgetenv("XDG_CONFIG_HOME");
    const auto name = QStringLiteral("/autostart/com.brightfold.tunedeck.menu.desktop");
    qputenv("XDG_CONFIG_HOME", "relative");
    EXPECT_EQ(AutostartItem::defaultEntry(QStringLiteral("/h")), QStringLiteral("/h/.config") + name);
    qputenv("XDG_CONFIG_HOME", "/elsewhere");
    EXPECT_EQ(AutostartItem::defaultEntry(QStringLiteral("/h")), QStringLiteral("/elsewhere") + name);
    before.isNull() ? qunsetenv("XDG_CONFIG_HOME") : qputenv("XDG_CONFIG_HOME", before);
}

} // namespace
} // namespace tunedeck
