#pragma once

#include "TunedeckMenu/Panel/Appearance.h"

#include <QIcon>
#include <QObject>
#include <QQmlEngine>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace tunedeck {

/// What the looks follow from outside: the desktop's appearance, its font and its file icons.
class Surroundings : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool dark READ dark NOTIFY appearanceChanged)
    Q_PROPERTY(bool reduceMotion READ reduceMotion NOTIFY appearanceChanged)
    Q_PROPERTY(QString fontFamily READ fontFamily NOTIFY fontChanged)
    Q_PROPERTY(double textScale READ textScale NOTIFY fontChanged)
public:
    /// Belongs to `engine`, whose windows follow it.
    explicit Surroundings(QQmlEngine& engine);
    /// The one of that engine.
    static Surroundings* create(QQmlEngine* engine, QJSEngine*);

    [[nodiscard]] bool dark() const { return m_appearance.dark; }
    [[nodiscard]] bool reduceMotion() const { return m_appearance.reduceMotion; }
    /// The desktop's interface font; Inter when the desktop names none of its own and Inter is there.
    [[nodiscard]] QString fontFamily() const { return m_family; }
    /// 1 to 1.5: how much larger than usual the desktop's text is.
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
