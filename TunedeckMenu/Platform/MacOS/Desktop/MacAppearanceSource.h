#pragma once

#include "TunedeckMenu/Platform/AppearanceSource.h"

@class MacAppearanceObserver;

namespace tunedeck {

/// The application's effective appearance and the accessibility settings of the display, followed live.
class MacAppearanceSource final : public AppearanceSource {
public:
    MacAppearanceSource();
    ~MacAppearanceSource() override;

    [[nodiscard]] Appearance current() const override;

    /// Emits changed() if something has changed.
    void check();

private:
    MacAppearanceObserver* m_observer;
    Appearance m_notified;
};

} // namespace tunedeck
