#pragma once

#include "TunedeckMenu/Panel/Appearance.h"

#include <QColor>
#include <QIcon>
#include <QObject>
#include <QQmlEngine>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace tunedeck {

/// The desktop's settings that the views follow: appearance, font, text size and file icons.
class SystemStyle : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool dark READ dark NOTIFY appearanceChanged)
    Q_PROPERTY(bool reduceMotion READ reduceMotion NOTIFY appearanceChanged)
    Q_PROPERTY(bool moreContrast READ moreContrast NOTIFY appearanceChanged)
    Q_PROPERTY(QColor accentFill READ accentFill NOTIFY appearanceChanged)
    Q_PROPERTY(QColor accentText READ accentText NOTIFY appearanceChanged)
    Q_PROPERTY(QString fontFamily READ fontFamily NOTIFY fontChanged)
    Q_PROPERTY(double textScale READ textScale NOTIFY fontChanged)
public:
    /// Becomes a child of `engine`, where create() finds it.
    explicit SystemStyle(QQmlEngine& engine);
    static SystemStyle* create(QQmlEngine* engine, QJSEngine*);

    [[nodiscard]] bool dark() const { return m_appearance.dark; }
    [[nodiscard]] bool reduceMotion() const { return m_appearance.reduceMotion; }
    [[nodiscard]] bool moreContrast() const { return m_appearance.moreContrast; }
    /// The desktop's accent colour, else the application's.
    [[nodiscard]] QColor accentFill() const;
    /// Black or white, whichever is more legible on accentFill().
    [[nodiscard]] QColor accentText() const;
    /// Family of the desktop's interface font; Inter, if installed, when none is configured.
    [[nodiscard]] QString fontFamily() const { return m_family; }
    /// 1 to 1.5: size of the desktop's text relative to the usual one.
    [[nodiscard]] double textScale() const { return m_scale; }

    void setAppearance(const Appearance& appearance);
    void setFileIcons(std::function<QIcon(const QString&)> fileIcon) { m_fileIcon = std::move(fileIcon); }
    [[nodiscard]] QIcon fileIcon(const QString& path) const { return m_fileIcon ? m_fileIcon(path) : QIcon(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void appearanceChanged();
    void fontChanged();

private:
    void readFont();

    Appearance m_appearance;
    QString m_family;
    double m_scale = 1;
    std::function<QIcon(const QString&)> m_fileIcon;
};

} // namespace tunedeck
