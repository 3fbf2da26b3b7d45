#pragma once

#include <QIcon>
#include <QString>

namespace tunedeck {

/// The colour of a glyph, in contrast to its background.
enum class GlyphTone { Dark, Light };

/// The tray icon of a symbol, in each size that has a mask (`:/tunedeck/tray/NAME-SIZE.png`, black with an alpha
/// channel). It is on a translucent plate of the other tone, which is hardly visible on a background of that tone and
/// keeps the glyph legible on any other: the colour of most bars can only be guessed.
QIcon trayGlyph(const QString& symbol, GlyphTone tone);

} // namespace tunedeck
