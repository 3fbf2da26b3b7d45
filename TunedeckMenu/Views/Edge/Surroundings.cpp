#include "TunedeckMenu/Views/Edge/Surroundings.h"

#include <QEvent>
#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tunedeck {

Surroundings::Surroundings(QQmlEngine& engine) : QObject(&engine) {
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
    readFont();
    qGuiApp->installEventFilter(this);
}

Surroundings* Surroundings::create(QQmlEngine* engine, QJSEngine*) {
    return engine->findChild<Surroundings*>(QString(), Qt::FindDirectChildrenOnly);
}

void Surroundings::setAppearance(const Appearance& appearance) {
    if (m_appearance != appearance) {
        m_appearance = appearance;
        Q_EMIT appearanceChanged();
    }
}

bool Surroundings::eventFilter(QObject* watched, QEvent* event) {
    if (watched == qGuiApp && event->type() == QEvent::ApplicationFontChange) {
        readFont();
    }
    return QObject::eventFilter(watched, event);
}

void Surroundings::readFont() {
    const QFont font = QGuiApplication::font();
    QString family = QFontInfo(font).family();
    // What fontconfig answers when nobody chose a font.
    const bool chosen = family != u"DejaVu Sans"_s && family != u"Bitstream Vera Sans"_s && !family.isEmpty();
    if (!chosen && QFontDatabase::hasFamily(u"Inter"_s)) {
        family = u"Inter"_s;
    }
    // Desktops set 9 to 11 points; what is above that was made larger on purpose.
    constexpr double usual = 11.0 * 96 / 72;
    const double scale = std::clamp(std::round(QFontInfo(font).pixelSize() / usual * 20) / 20, 1.0, 1.5);
    if (family != m_family || scale != m_scale) {
        m_family = family;
        m_scale = scale;
        Q_EMIT fontChanged();
    }
}

} // namespace tunedeck
