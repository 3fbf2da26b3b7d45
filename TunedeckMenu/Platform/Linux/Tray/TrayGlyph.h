#pragma once

#include <QIcon>
#include <QString>

namespace tunedeck {

/// The colour of a glyph, in contrast to its background.
enum class GlyphTone { Dark, Light };

/// The tray icon of a symbol, in each size that has a mask (`:/tunedeck/tray/NAME-SIZE.png`, black with an alpha
/// channel). A thin edge of the other tone keeps it legible when the background's colour was guessed wrong.
QIcon trayGlyph(const QString& symbol, GlyphTone tone);

} // namespace tunedeck
