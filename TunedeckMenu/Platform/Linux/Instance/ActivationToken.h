#pragma once

#include <QByteArray>

namespace tunedeck {

/// The token with which the desktop started this process, by which a window may come to the front; empty without one.
QByteArray ownActivationToken();

/// Makes the next activated window use this token; nothing when it is empty or no plausible token.
void useActivationToken(const QByteArray& token);

/// Reports to an X11 desktop that this process's start, or the request whose token is in use, has been answered, so
/// that it stops showing a busy pointer. Qt does that only when a window appears, and not for one that is already
/// shown.
void endActivation();

} // namespace tunedeck
