#pragma once

#include "TunedeckMenu/Platform/Pasteboard.h"

namespace tunedeck {

/// The general pasteboard.
class MacPasteboard final : public Pasteboard {
public:
    void setText(const QString& text) override;
    void setSecret(const QString& text) override;
};

} // namespace tunedeck
