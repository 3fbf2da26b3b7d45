#pragma once

#include <QString>

namespace tunedeck {

/// The clipboard. Its content stays when the panel closes.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;
    virtual void setText(const QString& text) = 0;
    /// Marks the text as a secret, which clipboard managers then neither show nor keep.
    virtual void setSecret(const QString& text) = 0;
};

} // namespace tunedeck
