#pragma once

#include "Tests/Gallery/FakeHost.h"
#include "Tests/Gallery/Samples.h"
#include "Tests/Helpers/RunTask.h"
#include "Tests/Helpers/Views/Elements.h"
#include "TunedeckMenu/Panel/PanelModule.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <memory>

namespace tunedeck::test {

/// A fixture for the real views with a fake application. A warning that they log fails the test.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): a fixture, as GoogleTest has them
class Screen : public testing::Test {
protected:
    Screen();
    ~Screen() override;
    void TearDown() override;

    /// Shows the popover below an icon at the top of the screen.
    QQuickWindow& popover(const PanelContent& content);
    QQuickWindow& mainWindow(const PanelContent& content);
    QQuickWindow& onboarding(const OnboardingContent& content);
    /// Changes the content of the panel that is shown.
    void setContent(const PanelContent& content);

    /// The modal or active window, or else any visible one.
    QQuickWindow& front() const;
    [[nodiscard]] QList<Element> elements() const { return elementsOf(front()); }
    [[nodiscard]] QStringList texts() const;
    [[nodiscard]] QList<Element> controls(const QString& name = {}) const;
    [[nodiscard]] bool hasText(const QString& text) const { return texts().join(QChar(0x1f)).contains(text); }
    /// The only control with this label (its name is longer where several have it) whose name or description contains
    /// `which`.
    Element control(const QString& name, const QString& which = {}) const;
    void press(const QString& name, const QString& which = {}) const;
    void click(const Element& control) const;
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const;
    /// The item with the keyboard focus, or the window's content item.
    [[nodiscard]] QQuickItem* focus() const { return front().activeFocusItem(); }
    [[nodiscard]] QString focusName(QAccessible::Text text = QAccessible::Name) const;

    /// Runs the event loop for this time.
    static void wait(int milliseconds);
    /// The module of views, as the application loads it.
    static PanelModule& module();

    FakeHost host;
    std::unique_ptr<PanelViews> views;
    Appearance appearance{.dark = false, .reduceMotion = true};

private:
    PanelViews& createdViews();
    QQuickWindow& activeWindow();
};

} // namespace tunedeck::test
