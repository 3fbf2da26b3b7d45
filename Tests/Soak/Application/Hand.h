#pragma once

#include <QString>

namespace tunedeck::soak {

/// A user's hand on the windows of this process.
class Hand {
public:
    /// Presses one of the controls that can be pressed, by its number among them; returns its name, empty when there
    /// is none. What would end the application or needs a person to answer is left alone.
    static QString press(unsigned number);
    /// Closes every window.
    static void closeAll();
};

} // namespace tunedeck::soak
