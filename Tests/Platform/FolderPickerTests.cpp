#include "Tests/Helpers/Test.h"
#include "TunedeckMenu/Platform/Linux/Desktop/LinuxPasteboard.h"
#include "TunedeckMenu/Platform/QtFolderPicker.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QTemporaryDir>

#include <algorithm>
#include <vector>

namespace tunedeck::test {

TEST(FolderPickerTest, CallsBackOnceWithAFolderOrNothing) {
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
    const auto title = u"Choose where Tunedeck saves downloads"_s;
    picker.choose(title, u"Use This Folder"_s, folder.path(), keep);
    ASSERT_NE(dialog(), nullptr);
    EXPECT_EQ(dialog()->windowTitle(), title);
    EXPECT_TRUE(dialog()->testOption(QFileDialog::ShowDirsOnly));
    EXPECT_EQ(dialog()->labelText(QFileDialog::Accept), u"Use This Folder"_s);
    QWidget other;
    other.show();
    other.activateWindow();
    EXPECT_TRUE(runUntil([&] { return other.isActiveWindow(); }));
    picker.choose(title, {}, u"/"_s, keep);
    EXPECT_TRUE(runUntil([&] { return dialog()->isActiveWindow(); })) << "the open one comes to the front";
    EXPECT_TRUE(answers.empty());                  // it doesn't block
    QMetaObject::invokeMethod(dialog(), "accept"); // as its button does
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers[0], folder.path());

    EXPECT_TRUE(runUntil([&] { return dialog() == nullptr; }));
    picker.choose(title, {}, folder.path(), keep);
    ASSERT_NE(dialog(), nullptr);
    dialog()->close();
    ASSERT_EQ(answers.size(), 2U);
    EXPECT_FALSE(answers[1].has_value());
}

TEST(PasteboardTest, CopiesToTheClipboard) {
    LinuxPasteboard().setText(u"“ü” 音楽"_s);
    EXPECT_EQ(QApplication::clipboard()->text(), u"“ü” 音楽"_s);
    LinuxPasteboard().setSecret(u"key"_s);
    EXPECT_EQ(QApplication::clipboard()->text(), u"key"_s);
    EXPECT_EQ(QApplication::clipboard()->mimeData()->data(u"x-kde-passwordManagerHint"_s), "secret");
}

} // namespace tunedeck::test
