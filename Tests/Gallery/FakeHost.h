#pragma once

#include "TunedeckMenu/Panel/FirstRun/OnboardingActions.h"
#include "TunedeckMenu/Panel/PanelHost.h"

#include <QMetaMethod>
#include <QObject>
#include <QStringList>

namespace tunedeck {

/// What a FakeHost was asked for.
class HostLog : public QObject {
    Q_OBJECT
public:
    QStringList pressed; ///< actions in order: "restartService", "copySecret a.url", …
    int appeared = 0;    ///< windows on the screen

    void note(const QString& action, const QString& argument = {}) {
        pressed.append(argument.isEmpty() ? action : action + u' ' + argument);
    }

    /// Records every signal of the actions but those of the windows, which are counted.
    void record(PanelActions& actions) {
        connect(&actions, &PanelActions::panelAppeared, this, [this] { ++appeared; });
        connect(&actions, &PanelActions::panelDisappeared, this, [this] { --appeared; });
        const auto& type = PanelActions::staticMetaObject;
        for (int i = type.methodOffset(); i < type.methodCount(); ++i) {
            const auto signal = type.method(i);
            const auto parameter = signal.parameterTypes().value(0);
            if (!signal.name().startsWith("panel")) {
                const auto slot = metaObject()->indexOfSlot("noteSignal(" + parameter + ')');
                connect(&actions, signal, this, metaObject()->method(slot));
            }
        }
    }

private Q_SLOTS:
    void noteSignal(const QString& argument = {}) {
        note(QString::fromLatin1(sender()->metaObject()->method(senderSignalIndex()).name()), argument);
    }
    void noteSignal(bool on) { noteSignal(on ? QStringLiteral("on") : QStringLiteral("off")); }
};

class FakeOnboardingActions final : public OnboardingActions {
public:
    explicit FakeOnboardingActions(HostLog& log) : m_log(log) {}

    void windowAppeared() override { ++m_log.appeared; }
    void windowClosed() override {
        --m_log.appeared;
        m_log.note(QStringLiteral("windowClosed"));
    }
    void advance() override { m_log.note(QStringLiteral("advance")); }
    void repairTools() override { m_log.note(QStringLiteral("repairTools")); }
    void back() override { m_log.note(QStringLiteral("back")); }
    void takeBaseline() override { m_log.note(QStringLiteral("takeBaseline")); }
    void choose(const QString& kind) override { m_log.note(QStringLiteral("choose"), kind); }
    void copyLink() override { m_log.note(QStringLiteral("copyLink")); }
    void copyKey() override { m_log.note(QStringLiteral("copyKey")); }
    void openTelegram() override { m_log.note(QStringLiteral("openTelegram")); }
    void newTelegramCode() override { m_log.note(QStringLiteral("newTelegramCode")); }
    void openSetupGuide() override { m_log.note(QStringLiteral("openSetupGuide")); }

private:
    HostLog& m_log;
};

/// Stands in for the application behind the views and records what was pressed.
class FakeHost final : public HostLog, public PanelHost {
public:
    FakeHost() { record(panel); }
    PanelActions& actions() override { return panel; }
    QIcon fileIcon(const QString& path) override;

    PanelActions panel;
    FakeOnboardingActions onboarding{*this};
};

} // namespace tunedeck
