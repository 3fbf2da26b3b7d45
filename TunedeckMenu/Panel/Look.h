#pragma once

#include <QObject>

namespace tunedeck {

namespace look {
Q_NAMESPACE

/// The meaning of a colour; the theme defines the colour.
enum class Tone { Secondary, Accent, Good, Warning, Bad };
Q_ENUM_NS(Tone)

/// The layout of a link's row.
enum class LinkKind { PrivateUrl, Shortcut, Telegram };
Q_ENUM_NS(LinkKind)
} // namespace look

} // namespace tunedeck
