#pragma once

#include <QString>

namespace tunedeck {

/// A question before an action that can't be undone.
struct Confirmation {
    QString message;
    QString informativeText;
    QString confirmButton; ///< the first and default button
    QString cancelButton;
    bool warning = false; ///< drawn with the warning symbol
    bool operator==(const Confirmation&) const = default;
};

} // namespace tunedeck
