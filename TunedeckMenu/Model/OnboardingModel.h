#pragma once

#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Actions/PanelController.h"
#include "TunedeckMenu/Model/MenuServices.h"
#include "TunedeckMenu/Panel/FirstRun/OnboardingActions.h"
#include "TunedeckMenu/Panel/FirstRun/OnboardingState.h"

#include <QCoroTask>
#include <QObject>
#include <QString>

#include <cstdint>
#include <functional>
#include <stop_token>

namespace tunedeck {

/// The first-run window's model. Watches the service by itself while the window is open: the panel's own watch runs
/// only while the panel is on the screen. Lives as long as the window.
class OnboardingModel : public OnboardingActions {
    Q_OBJECT
public:
    /// `panel`: whose actions it shares; it and the services must outlive the model.
    OnboardingModel(PanelController& panel, const MenuServices& services, std::optional<RekordboxInstall> rekordbox,
                    QObject* parent = nullptr);
    ~OnboardingModel() override;

    [[nodiscard]] const OnboardingState& state() const { return m_state; }

    /// Called when the last step is done; may destroy the model later, not at once.
    std::function<void()> onFinish;

    void windowAppeared() override;
    void windowClosed() override;
    void advance() override;
    void back() override;
    void repairTools() override;
    void takeBaseline() override;
    void choose(const QString& kind) override;
    void copyLink() override;
    void copyKey() override;
    void openTelegram() override;
    void newTelegramCode() override;
    void openSetupGuide() override;

Q_SIGNALS:
    /// Something that the window shows is different, or time has passed that it tells of.
    void changed();

private:
    QCoro::Task<> watch();
    QCoro::Task<> watchLink(std::stop_token stop);
    QCoro::Task<> installTools();
    QCoro::Task<> askForBaseline();
    QCoro::Task<> connectAssistant(Assistant assistant);
    QCoro::Task<> renewCode(QString id);
    /// `copies`: how many there had been; a later one has a time of its own.
    QCoro::Task<> unmarkCopied(std::uint64_t copies);
    /// The first backup is asked for by itself, once, when the user comes to it.
    void takeBaselineWhenDue();
    void show(OnboardingStep step);
    void open(const QUrl& url);
    void copy(const std::optional<QString>& secret, bool OnboardingState::* mark);

    PanelController& m_panel;
    const MenuServices& m_services;
    OnboardingState m_state;
    bool m_baselineAsked = false;
    bool m_watchingLink = false;
    std::uint64_t m_copies = 0;
    std::uint64_t m_linkEdition = 0; ///< of the link: a list asked for about an earlier one doesn't count
    TaskScope m_watching;
    TaskScope m_scope;
};

} // namespace tunedeck
