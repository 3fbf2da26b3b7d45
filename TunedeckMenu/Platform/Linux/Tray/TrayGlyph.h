#pragma once

#include <QIcon>
#include <QString>

namespace tunedeck {

/// The glyph's colour: what stands out from the panel that it is drawn on.
enum class GlyphTone { dark, light };

/// The tray's icon of a symbol in every size there is a mask for: `folder`/NAME-SIZE.png, black with the shape as
/// alpha. A thin edge of the other tone keeps it legible where the panel's colour is guessed wrong.
QIcon trayGlyph(const QString& symbol, GlyphTone tone, const QString& folder = QStringLiteral(":/tunedeck/tray"));

} // namespace tunedeck
