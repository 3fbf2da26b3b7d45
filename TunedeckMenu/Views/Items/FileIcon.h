#pragma once

#include <QIcon>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace tunedeck {

/// The desktop's icon of a file or folder.
class FileIcon : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString path READ path WRITE setPath NOTIFY pathChanged)
    Q_PROPERTY(bool known READ isKnown NOTIFY pathChanged)
public:
    using QQuickPaintedItem::QQuickPaintedItem;
    [[nodiscard]] QString path() const { return m_path; }
    void setPath(const QString& path);
    /// Whether the desktop provides an icon for the path.
    [[nodiscard]] bool isKnown() const { return !m_icon.isNull(); }
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void pathChanged();

private:
    QString m_path;
    QIcon m_icon;
};

} // namespace tunedeck
