#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace tunedeck {

/// An area that has something to say while the pointer rests on it: a control's help, a text that was cut.
class HintArea : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString hint READ hint WRITE setHint NOTIFY hintChanged)
    Q_PROPERTY(bool hovered READ isHovered NOTIFY hoveredChanged)
public:
    explicit HintArea(QQuickItem* parent = nullptr);

    [[nodiscard]] QString hint() const { return m_hint; }
    void setHint(const QString& hint);
    [[nodiscard]] bool isHovered() const { return m_hovered; }

Q_SIGNALS:
    void hintChanged();
    void hoveredChanged();

protected:
    void hoverEnterEvent(QHoverEvent* event) override;
    void hoverLeaveEvent(QHoverEvent* event) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void setHovered(bool hovered);

    QString m_hint;
    bool m_hovered = false;
};

/// Everything that can be pressed, by mouse, keyboard or a screen reader; what it looks like is its children's affair.
/// While it isn't usable none of the three does anything, but it says its hint, and keeps the keyboard if it has it.
class Pressable : public tunedeck::HintArea {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool usable READ isUsable WRITE setUsable NOTIFY usableChanged)
    Q_PROPERTY(bool pressed READ isPressed NOTIFY pressedChanged)
    Q_PROPERTY(bool focusShown READ isFocusShown NOTIFY focusShownChanged)
    Q_PROPERTY(bool checkable MEMBER m_checkable NOTIFY stateChanged)
    Q_PROPERTY(bool checked READ isChecked WRITE setChecked NOTIFY stateChanged)
    Q_PROPERTY(bool expandable MEMBER m_expandable NOTIFY stateChanged)
    Q_PROPERTY(bool expanded READ isExpanded WRITE setExpanded NOTIFY stateChanged)
public:
    explicit Pressable(QQuickItem* parent = nullptr);

    /// Whether it can be pressed. Not the item's own `enabled`, which would take its tooltip along.
    [[nodiscard]] bool isUsable() const { return m_usable && isEnabled(); }
    void setUsable(bool usable);
    [[nodiscard]] bool isPressed() const { return m_pressed; }
    /// It has the focus and came by it through the keyboard.
    [[nodiscard]] bool isFocusShown() const { return m_focusShown; }
    [[nodiscard]] bool isCheckable() const { return m_checkable; }
    [[nodiscard]] bool isChecked() const { return m_checked; }
    void setChecked(bool checked);
    [[nodiscard]] bool isExpandable() const { return m_expandable; }
    [[nodiscard]] bool isExpanded() const { return m_expanded; }
    void setExpanded(bool expanded);

    /// Presses it, as a screen reader does.
    void activate();

    /// Tells the desktop's accessibility more of such items than the attached properties can: that one is disabled, and
    /// that one opens. Once per process, before the first window.
    static void installAccessibility();

Q_SIGNALS:
    void clicked();
    void usableChanged();
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
    void setPressed(bool pressed);
    void setFocusShown(bool shown);

    bool m_usable = true;
    bool m_pressed = false;
    bool m_byKey = false;
    bool m_focusShown = false;
    bool m_focusWasShown = false; ///< when the window lost the keyboard
    bool m_checkable = false;
    bool m_checked = false;
    bool m_expandable = false;
    bool m_expanded = false;
};

/// Shows the hint of the area under the pointer; one in each window, above everything else. The QML side draws it.
class HintLayer : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(QRectF target READ target NOTIFY changed)
public:
    using QQuickItem::QQuickItem;
    [[nodiscard]] QString text() const { return m_text; }
    /// Where the area is, in this layer's coordinates.
    [[nodiscard]] QRectF target() const { return m_target; }
    void show(HintArea* area);
    void leave(const HintArea* area);

Q_SIGNALS:
    void changed();

private:
    const HintArea* m_area = nullptr;
    QString m_text;
    QRectF m_target;
};

} // namespace tunedeck
