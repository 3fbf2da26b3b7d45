#pragma once

#include <QString>

namespace tunedeck {

/// What the first-run window's controls ask for.
class OnboardingActions {
public:
    virtual ~OnboardingActions() = default;
    /// The window came on the screen or was closed.
    virtual void windowAppeared() = 0;
    virtual void windowClosed() = 0;
    virtual void advance() = 0;
    virtual void back() = 0;
    virtual void repairTools() = 0;
    virtual void takeBaseline() = 0;
    virtual void choose(const QString& kind) = 0;
    virtual void copyLink() = 0;
    virtual void copyKey() = 0;
    virtual void openTelegram() = 0;
    virtual void newTelegramCode() = 0;
    virtual void openSetupGuide() = 0;
};

} // namespace tunedeck
