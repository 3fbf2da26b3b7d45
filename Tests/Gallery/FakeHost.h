#pragma once

#include "TunedeckMenu/Panel/PanelModule.h"

#include <QStringList>

namespace tunedeck {

/// Stands in for the application behind the views: shows what it is told to and notes what was pressed.
class FakeHost final : public PanelHost, public PanelActions, public OnboardingActions {
public:
    PanelContent panel;
    OnboardingContent onboarding;
    QStringList pressed; ///< "restartService", "copySecret a.url", …
    int appeared = 0;    ///< windows that say they are on the screen

    PanelContent content() override { return panel; }
    PanelActions& actions() override { return *this; }
    OnboardingContent onboardingContent() override { return onboarding; }
    OnboardingActions& onboardingActions() override { return *this; }
    QIcon fileIcon(const QString& path) override;

    void panelAppeared() override { ++appeared; }
    void panelDisappeared() override { --appeared; }
    void restartService() override { note("restartService"); }
    void repairTools() override { note("repairTools"); }
    void openLog() override { note("openLog"); }
    void quit() override { note("quit"); }
    void setOpensAtLogin(bool on) override {
        note("setOpensAtLogin", on ? QStringLiteral("on") : QStringLiteral("off"));
    }
    void chooseFolder() override { note("chooseFolder"); }
    void useDefaultFolder() override { note("useDefaultFolder"); }
    void revealDownloads() override { note("revealDownloads"); }
    void revealXML() override { note("revealXML"); }
    void applyLibraryNow() override { note("applyLibraryNow"); }
    void retryFailedChanges() override { note("retryFailedChanges"); }
    void dismissFailedChanges() override { note("dismissFailedChanges"); }
    void restoreBackup(const QString& version) override { note("restoreBackup", version); }
    void toggleRevealSecrets() override { note("toggleRevealSecrets"); }
    void copySecret(const QString& key) override { note("copySecret", key); }
    void connectAssistant(const QString& kind) override { note("connectAssistant", kind); }
    void rotateLink(const QString& id) override { note("rotateLink", id); }
    void newTelegramCode(const QString& id) override { note("newTelegramCode", id); }
    void disconnectLink(const QString& id) override { note("disconnectLink", id); }
    void openSetupGuide(const QString& id) override { note("openSetupGuide", id); }
    void openTelegram(const QString& id) override { note("openTelegram", id); }
    void checkForUpdates() override { note("checkForUpdates"); }
    void installUpdate() override { note("installUpdate"); }
    void copyDiagnostics() override { note("copyDiagnostics"); }

    void windowAppeared() override { ++appeared; }
    void windowClosed() override {
        --appeared;
        note("windowClosed");
    }
    void advance() override { note("advance"); }
    void back() override { note("back"); }
    void takeBaseline() override { note("takeBaseline"); }
    void choose(const QString& kind) override { note("choose", kind); }
    void copyLink() override { note("copyLink"); }
    void copyKey() override { note("copyKey"); }
    void openTelegram() override { note("openTelegram"); }
    void newTelegramCode() override { note("newTelegramCode"); }
    void openSetupGuide() override { note("openSetupGuide"); }

private:
    void note(const char* what, const QString& with = {}) {
        pressed.append(with.isEmpty() ? QString::fromLatin1(what) : QString::fromLatin1(what) + u' ' + with);
    }
};

} // namespace tunedeck
