#pragma once

#include "TunedeckMenu/Views/Items/HintArea.h"

#include <QAccessible>
#include <QtQml/qqmlregistration.h>

namespace tunedeck {

/// Base of all controls: can be pressed by mouse, keyboard and assistive technology; its children draw it. An unusable
/// one ignores presses but still shows its hint and keeps the focus.
class Pressable : public tunedeck::HintArea {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool usable READ isUsable WRITE setUsable NOTIFY stateChanged)
    Q_PROPERTY(bool pressed READ isPressed NOTIFY pressedChanged)
    Q_PROPERTY(bool focusShown READ isFocusShown NOTIFY focusShownChanged)
    Q_PROPERTY(bool checkable MEMBER m_checkable NOTIFY stateChanged)
    Q_PROPERTY(bool checked READ isChecked WRITE setChecked NOTIFY stateChanged)
    Q_PROPERTY(bool expandable MEMBER m_expandable NOTIFY stateChanged)
    Q_PROPERTY(bool expanded READ isExpanded WRITE setExpanded NOTIFY stateChanged)
public:
    explicit Pressable(QQuickItem* parent = nullptr);

    /// Whether it can be pressed. Separate from QQuickItem's `enabled`, which would also disable the tooltip.
    [[nodiscard]] bool isUsable() const { return m_usable && isEnabled(); }
    void setUsable(bool usable);
    [[nodiscard]] bool isPressed() const { return m_pressed; }
    /// Whether it has the focus and got it by keyboard.
    [[nodiscard]] bool isFocusShown() const { return m_focusShown; }
    [[nodiscard]] bool isCheckable() const { return m_checkable; }
    [[nodiscard]] bool isChecked() const { return m_checked; }
    void setChecked(bool checked);
    [[nodiscard]] bool isExpandable() const { return m_expandable; }
    [[nodiscard]] bool isExpanded() const { return m_expanded; }
    void setExpanded(bool expanded);

    /// Emits clicked() if it is usable and visible.
    void activate();

Q_SIGNALS:
    void clicked();
    void pressedChanged();
    void focusShownChanged();
    void stateChanged();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseUngrabEvent() override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    /// Reports the change to QML and, with the flag that `mark` sets, to assistive technology.
    void setState(bool& state, bool value, void (*mark)(QAccessible::State& changed));
    void setPressed(bool pressed);
    void setFocusShown(bool shown);

    bool m_usable = true;
    bool m_pressed = false;
    bool m_spaceHeld = false;
    bool m_focusShown = false;
    bool m_focusWasShown = false; ///< when the window was deactivated
    bool m_checkable = false;
    bool m_checked = false;
    bool m_expandable = false;
    bool m_expanded = false;
};

} // namespace tunedeck
