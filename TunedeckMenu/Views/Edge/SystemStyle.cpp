#include "TunedeckMenu/Views/Edge/SystemStyle.h"

#include <QEvent>
#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tunedeck {

SystemStyle::SystemStyle(QQmlEngine& engine) : QObject(&engine) {
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
    readFont();
    qGuiApp->installEventFilter(this);
}

SystemStyle* SystemStyle::create(QQmlEngine* engine, QJSEngine*) {
    return engine->findChild<SystemStyle*>(QString(), Qt::FindDirectChildrenOnly);
}

void SystemStyle::setAppearance(const Appearance& appearance) {
    if (m_appearance != appearance) {
        m_appearance = appearance;
        Q_EMIT appearanceChanged();
    }
}

QColor SystemStyle::accentFill() const {
    if (m_appearance.accent) {
        return {*m_appearance.accent};
    }
    return m_appearance.dark ? QColor(0x7a, 0x4c, 0xf0) : QColor(0x6d, 0x3e, 0xe0);
}

QColor SystemStyle::accentText() const {
    const auto linear = [](float part) {
        return part <= 0.04045F ? part / 12.92F : std::pow((part + 0.055F) / 1.055F, 2.4F);
    };
    const auto fill = accentFill();
    const auto luminance =
        0.2126F * linear(fill.redF()) + 0.7152F * linear(fill.greenF()) + 0.0722F * linear(fill.blueF());
    // Where the contrast with black, (L + 0.05) / 0.05, equals that with white, 1.05 / (L + 0.05).
    return luminance > 0.1791F ? Qt::black : Qt::white;
}

bool SystemStyle::eventFilter(QObject* watched, QEvent* event) {
    if (watched == qGuiApp && event->type() == QEvent::ApplicationFontChange) {
        readFont();
    }
    return QObject::eventFilter(watched, event);
}

void SystemStyle::readFont() {
    const QFont font = QGuiApplication::font();
    QString family = QFontInfo(font).family();
    // fontconfig returns these when no font is configured.
    const bool configured = family != u"DejaVu Sans"_s && family != u"Bitstream Vera Sans"_s && !family.isEmpty();
    if (!configured && QFontDatabase::hasFamily(u"Inter"_s)) {
        family = u"Inter"_s;
    }
    // Desktops default to 9 to 11 points; more than that is the user's choice.
    constexpr double usualPixels = 11.0 * 96 / 72;
    const double scale = std::clamp(std::round(QFontInfo(font).pixelSize() / usualPixels * 20) / 20, 1.0, 1.5);
    if (family != m_family || scale != m_scale) {
        m_family = family;
        m_scale = scale;
        Q_EMIT fontChanged();
    }
}

} // namespace tunedeck
