#pragma once

#include "TunedeckMenu/Panel/FirstRun/OnboardingActions.h"
#include "TunedeckMenu/Panel/PanelHost.h"

#include <QStringList>

namespace tunedeck {

/// What a FakeHost was asked for.
struct HostLog {
    QStringList pressed; ///< actions in order: "restartService", "copySecret a.url", …
    int appeared = 0;    ///< windows on the screen

    void note(const char* action, const QString& argument = {}) {
        pressed.append(argument.isEmpty() ? QString::fromLatin1(action)
                                          : QString::fromLatin1(action) + u' ' + argument);
    }
};

class FakePanelActions final : public PanelActions {
public:
    explicit FakePanelActions(HostLog& log) : m_log(log) {}

    void panelAppeared() override { ++m_log.appeared; }
    void panelDisappeared() override { --m_log.appeared; }
    void restartService() override { m_log.note("restartService"); }
    void repairTools() override { m_log.note("repairTools"); }
    void openLog() override { m_log.note("openLog"); }
    void quit() override { m_log.note("quit"); }
    void setOpensAtLogin(bool on) override {
        m_log.note("setOpensAtLogin", on ? QStringLiteral("on") : QStringLiteral("off"));
    }
    void chooseFolder() override { m_log.note("chooseFolder"); }
    void useDefaultFolder() override { m_log.note("useDefaultFolder"); }
    void revealDownloads() override { m_log.note("revealDownloads"); }
    void revealXML() override { m_log.note("revealXML"); }
    void applyLibraryNow() override { m_log.note("applyLibraryNow"); }
    void retryFailedChanges() override { m_log.note("retryFailedChanges"); }
    void dismissFailedChanges() override { m_log.note("dismissFailedChanges"); }
    void restoreBackup(const QString& version) override { m_log.note("restoreBackup", version); }
    void toggleRevealSecrets() override { m_log.note("toggleRevealSecrets"); }
    void copySecret(const QString& key) override { m_log.note("copySecret", key); }
    void connectAssistant(const QString& kind) override { m_log.note("connectAssistant", kind); }
    void rotateLink(const QString& id) override { m_log.note("rotateLink", id); }
    void newTelegramCode(const QString& id) override { m_log.note("newTelegramCode", id); }
    void disconnectLink(const QString& id) override { m_log.note("disconnectLink", id); }
    void openSetupGuide(const QString& id) override { m_log.note("openSetupGuide", id); }
    void openTelegram(const QString& id) override { m_log.note("openTelegram", id); }
    void checkForUpdates() override { m_log.note("checkForUpdates"); }
    void installUpdate() override { m_log.note("installUpdate"); }
    void copyDiagnostics() override { m_log.note("copyDiagnostics"); }

private:
    HostLog& m_log;
};

class FakeOnboardingActions final : public OnboardingActions {
public:
    explicit FakeOnboardingActions(HostLog& log) : m_log(log) {}

    void windowAppeared() override { ++m_log.appeared; }
    void windowClosed() override {
        --m_log.appeared;
        m_log.note("windowClosed");
    }
    void advance() override { m_log.note("advance"); }
    void repairTools() override { m_log.note("repairTools"); }
    void back() override { m_log.note("back"); }
    void takeBaseline() override { m_log.note("takeBaseline"); }
    void choose(const QString& kind) override { m_log.note("choose", kind); }
    void copyLink() override { m_log.note("copyLink"); }
    void copyKey() override { m_log.note("copyKey"); }
    void openTelegram() override { m_log.note("openTelegram"); }
    void newTelegramCode() override { m_log.note("newTelegramCode"); }
    void openSetupGuide() override { m_log.note("openSetupGuide"); }

private:
    HostLog& m_log;
};

/// Stands in for the application behind the views and records what was pressed.
class FakeHost final : public PanelHost, public HostLog {
public:
    PanelActions& actions() override { return panel; }
    QIcon fileIcon(const QString& path) override;

    FakePanelActions panel{*this};
    FakeOnboardingActions onboarding{*this};
};

} // namespace tunedeck
