#pragma once

#include <QObject>

namespace tunedeck {

namespace look {
Q_NAMESPACE

/// What a colour means; the theme knows what it looks like.
enum class Tone { Secondary, Accent, Good, Warning, Bad };
Q_ENUM_NS(Tone)

/// Which kind of row an assistant link has.
enum class LinkKind { PrivateUrl, Shortcut, Telegram };
Q_ENUM_NS(LinkKind)
} // namespace look

} // namespace tunedeck
