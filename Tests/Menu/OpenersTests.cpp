#include "Tests/Helpers/FakePlatform.h"
#include "Tests/Helpers/TemporaryHome.h"
#include "Tests/Helpers/Test.h"
#include "TunedeckMenu/Actions/Openers.h"

#include <QFile>

#include <optional>

namespace tunedeck::test {
namespace {

struct Feedback final : ActionFeedback {
    void showError(QString text) override { error = text; }
    void showNote(QString /*note*/) override {}
    void clearError() override {}
    void setCopied(std::optional<QString> /*key*/) override {}

    QString error;
};

using Opener = void (*)(const QString&, Workspace&, ActionFeedback&);

TEST(OpenersTests, OpenOnlyWhatCantRunAProgram) {
    TemporaryHome home;
    home.write(u"evil.desktop"_s, "[Desktop Entry]");
    QFile::link(home.path(u"evil.desktop"_s), home.path(u"link"_s));
    const QString folder = home.path();
    const QString file = home.path(u"evil.desktop"_s);
    const struct {
        Opener open = nullptr;
        QStringList allowed;
        QStringList refused;
    } cases[] = {
        {openTelegramUrl,
         {u"https://t.me/b?start=1"_s, u"HTTPS://Telegram.Me/b"_s, u"tg://resolve?domain=b"_s},
         {u"http://t.me/b"_s, u"https://t.me.evil.example/"_s, u"https://t.me@evil.example/"_s, u"https://t.me:99/"_s,
          u"https://x@t.me/"_s, u"file:///etc/passwd"_s, u"file:--help"_s, u"javascript:alert(1)"_s, u"smb://t.me/a"_s,
          file, u"--help"_s, u"t.me/b"_s, u"https://t.me/b\n--help"_s, QString()}},
        {openFolder,
         {folder},
         {file, home.path(u"link"_s), home.path(u"missing"_s), u"."_s, u"--help"_s, u"file:///"_s, u"/dev/null"_s,
          QString()}},
        {openFile, {file}, {folder, home.path(u"missing"_s), u"/dev/null"_s}},
        {revealFile, {file, folder}, {home.path(u"missing"_s), u"."_s, u"--help"_s, QString()}},
    };
    for (const auto& [open, allowed, refused] : cases) {
        FakeWorkspace workspace;
        Feedback feedback;
        for (const QString& each : allowed) {
            open(each, workspace, feedback);
            EXPECT_EQ(feedback.error, QString());
        }
        const auto count = [&] { return static_cast<qsizetype>(workspace.opened.size()) + workspace.revealed.size(); };
        EXPECT_EQ(count(), allowed.size());
        for (const QString& each : refused) {
            feedback.error.clear();
            open(each, workspace, feedback);
            EXPECT_TRUE(feedback.error.startsWith(u"Couldn't ")) << each.toStdString();
            EXPECT_EQ(count(), allowed.size()) << each.toStdString();
        }
    }
}

} // namespace
} // namespace tunedeck::test
