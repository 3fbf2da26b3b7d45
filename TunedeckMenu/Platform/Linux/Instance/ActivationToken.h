#pragma once

#include <QByteArray>

namespace tunedeck {

/// The token with which the desktop started this process, by which a window may come to the front; empty without one.
QByteArray ownActivationToken();

/// Makes the next activated window use this token; nothing when it is empty or no plausible token.
void useActivationToken(const QByteArray& token);

} // namespace tunedeck
