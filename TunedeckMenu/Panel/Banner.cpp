#include "TunedeckMenu/Panel/Banner.h"

#include "TunedeckMenu/Panel/ShownText.h"

namespace tunedeck {

BannerView actionBanner(const std::optional<QString>& error, const std::optional<QString>& note) {
    if (error) {
        return {.shown = true, .text = paragraph(*error), .tone = look::Tone::Warning};
    }
    if (note) {
        return {.shown = true, .text = paragraph(*note), .tone = look::Tone::Good};
    }
    return {};
}

} // namespace tunedeck
