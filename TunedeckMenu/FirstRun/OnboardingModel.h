#pragma once

#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Actions/FieldCopier.h"
#include "TunedeckMenu/Actions/LinkActions.h"
#include "TunedeckMenu/Actions/ToolRepair.h"
#include "TunedeckMenu/Model/ActionFeedback.h"
#include "TunedeckMenu/Model/MenuServices.h"
#include "TunedeckMenu/Model/RequestSequence.h"
#include "TunedeckMenu/Model/ServiceSetup.h"
#include "TunedeckMenu/Panel/FirstRun/OnboardingActions.h"
#include "TunedeckMenu/Panel/FirstRun/OnboardingState.h"

#include <QCoroTask>
#include <QString>

#include <functional>
#include <optional>
#include <stop_token>

namespace tunedeck {

/// The model of the first-run window. Polls the service while the window is open, because the panel's polling runs only
/// while a panel is shown. Lives as long as the window.
class OnboardingModel : public OnboardingActions, public ActionFeedback {
    Q_OBJECT
public:
    /// `links`: the panel's actions, shared so that the panel knows the links made here. They and the services must
    /// outlive the model.
    OnboardingModel(LinkActions& links, const MenuServices& services, ServiceSetup& setup,
                    std::optional<RekordboxInstall> rekordbox);
    ~OnboardingModel() override;

    [[nodiscard]] const OnboardingState& state() const { return m_state; }

    /// Called when the last step is done. Must not destroy the model before it returns.
    std::function<void()> onFinish;

    void windowAppeared() override;
    void windowClosed() override;
    void advance() override;
    void back() override;
    void startService() override;
    void openLog() override;
    void repairTools() override;
    void takeBaseline() override;
    void choose(const QString& kind) override;
    void copyLink() override;
    void copyKey() override;
    void openTelegram() override;
    void newTelegramCode() override;
    void openSetupGuide() override;

    void showError(QString error) override;
    /// Only clears the error: the window has no line for notes.
    void showNote(QString note) override;
    void clearError() override;
    void setCopied(std::optional<QString> key) override;

Q_SIGNALS:
    /// Something that the window shows has changed, or time has passed.
    void changed();

private:
    QCoro::Task<> poll();
    /// Takes over how the service's start went.
    void setupChanged();
    /// Tries again to start a service that couldn't be started, from time to time.
    void startServiceWhenDue();
    /// Notices when a wait begins or ends, and emits changed().
    void update();
    QCoro::Task<> refreshLink(std::stop_token stop);
    QCoro::Task<> requestBaseline();
    /// Requests the first backup once, automatically, when the user reaches its step and there is a library.
    void takeBaselineWhenDue();
    void connected(const LinkActions::Result<AssistantLink>& made);
    void codeRenewed(const QString& id, const LinkActions::Result<AssistantLink>& renewed);
    /// Replaces the link by the one that the service has just sent. Lists requested earlier become stale.
    void setLink(const AssistantLink& link);
    void showStep(OnboardingStep step);

    LinkActions& m_links;
    const MenuServices& m_services;
    ServiceSetup& m_setup;
    OnboardingState m_state;
    OnboardingWait m_wait = OnboardingWait::Nothing;
    std::chrono::nanoseconds m_setupEnded{}; ///< when the last attempt to start the service ended
    FieldCopier m_copier;
    ToolRepair m_repair;
    bool m_baselineRequested = false;
    InFlight m_linkLists;
    RequestSequence m_linkRequests;
    TaskScope m_polling;
    TaskScope m_scope;
};

} // namespace tunedeck
