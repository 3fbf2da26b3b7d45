#pragma once

#include <QString>

namespace tunedeck {

/// A question before something that can't be taken back.
struct Confirmation {
    QString message;
    QString informativeText;
    QString confirmButton; ///< the first, default one
    QString cancelButton;
    bool warning = false; ///< drawn with the warning symbol
    bool operator==(const Confirmation&) const = default;
};

} // namespace tunedeck
