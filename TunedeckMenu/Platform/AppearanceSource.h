#pragma once

#include "TunedeckMenu/Panel/Appearance.h"

#include <QObject>

namespace tunedeck {

/// The desktop's appearance (light or dark, reduced motion).
class AppearanceSource : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    [[nodiscard]] virtual Appearance current() const = 0;

Q_SIGNALS:
    void changed();
};

} // namespace tunedeck
