#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace tunedeck {

/// Shows a tooltip while the pointer is over it or it has the focus by keyboard, for example a control's help or the
/// whole of an elided text.
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
    /// Whether it has the focus by keyboard.
    void setFocusHint(bool focused);
    void hoverEnterEvent(QHoverEvent* event) override;
    void hoverLeaveEvent(QHoverEvent* event) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void setHovered(bool hovered);
    void updateHint();

    QString m_hint;
    bool m_hovered = false;
    bool m_focused = false;
    bool m_hintWanted = false;
};

} // namespace tunedeck
