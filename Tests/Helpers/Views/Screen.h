#pragma once

#include "Tests/Gallery/FakeHost.h"
#include "Tests/Gallery/Samples.h"
#include "TunedeckMenu/Panel/PanelModule.h"

#include <QAccessible>
#include <QQuickItem>
#include <QQuickWindow>
#include <QStringList>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace tunedeck::test {

/// One thing that a user can see, as the desktop's accessibility has it.
struct Seen {
    QAccessibleInterface* access = nullptr;
    QString name;
    QString description;
    QAccessible::Role role = QAccessible::NoRole;
    QRect place; ///< on the screen

    [[nodiscard]] QQuickItem* item() const { return qobject_cast<QQuickItem*>(access->object()); }
    [[nodiscard]] bool isControl() const;
    [[nodiscard]] bool isEnabled() const { return !access->state().disabled; }
    /// Does what a screen reader does to press it; false when it offers no such action.
    bool press() const;
};

/// The real module in front of a made-up application. What the views complain of on the way fails the test.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): a fixture, as GoogleTest has them
class Screen : public testing::Test {
protected:
    Screen();
    ~Screen() override;
    void TearDown() override;

    /// Shows this panel at an icon at the top of the screen.
    QQuickWindow& popover(const PanelContent& content);
    QQuickWindow& mainWindow(const PanelContent& content);
    QQuickWindow& onboarding(const OnboardingContent& content);
    /// The panel's content becomes this one.
    void become(const PanelContent& content);

    /// The window of ours that is in front; the last one shown.
    QQuickWindow& front() const;
    /// Everything in the window that can be seen, scrolled away or not, top to bottom of the tree.
    [[nodiscard]] QList<Seen> all() const;
    [[nodiscard]] QStringList texts() const;
    [[nodiscard]] QList<Seen> controls(const QString& name = {}) const;
    [[nodiscard]] bool sees(const QString& text) const { return texts().join(QChar(0x1f)).contains(text); }
    /// The only control of that name, or the one whose description has `which` in it.
    Seen control(const QString& name, const QString& which = {}) const;
    void press(const QString& name, const QString& which = {}) const;
    void click(const Seen& control) const;
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const;
    /// The control that has the keyboard, or its window's content item.
    [[nodiscard]] QQuickItem* focus() const { return front().activeFocusItem(); }
    [[nodiscard]] QString focusName() const;

    /// Lets `milliseconds` pass with events handled.
    static void pass(int milliseconds);
    /// Waits until the condition holds, 3 s at most.
    static bool until(const std::function<bool()>& condition);
    /// The module of views, as the application loads it.
    static PanelModule& module();

    FakeHost host;
    std::unique_ptr<PanelViews> views;
    Appearance appearance{.dark = false, .reduceMotion = true};

private:
    void start();
};

} // namespace tunedeck::test
