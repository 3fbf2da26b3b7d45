#pragma once

#include "TunedeckMenu/Panel/Cards/ConnectRow.h"
#include "TunedeckMenu/Panel/Cards/SecretField.h"
#include "TunedeckMenu/Panel/Cards/TelegramPairing.h"
#include "TunedeckMenu/Panel/Look.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

namespace tunedeck {

struct OnboardingState;

/// One tool of the tools step.
struct ToolRowView {
    Q_GADGET
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString state MEMBER state)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(tunedeck::look::Tone tone MEMBER tone)
public:
    QString name;
    QString state;
    QString symbol;
    look::Tone tone = look::Tone::Secondary;
    bool operator==(const ToolRowView&) const = default;
};

struct OnboardingContent {
    Q_GADGET
    Q_PROPERTY(int step MEMBER step)
    Q_PROPERTY(int stepCount MEMBER stepCount)
    Q_PROPERTY(QString stepLabel MEMBER stepLabel)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QString waitingText MEMBER waitingText)
    Q_PROPERTY(QString installText MEMBER installText)
    Q_PROPERTY(double progress MEMBER progress)
    Q_PROPERTY(QString repairButton MEMBER repairButton)
    Q_PROPERTY(QString rekordboxName MEMBER rekordboxName)
    Q_PROPERTY(QString baselineText MEMBER baselineText)
    Q_PROPERTY(QString baselineNote MEMBER baselineNote)
    Q_PROPERTY(QString baselineSymbol MEMBER baselineSymbol)
    Q_PROPERTY(tunedeck::look::Tone baselineTone MEMBER baselineTone)
    Q_PROPERTY(bool baselineBusy MEMBER baselineBusy)
    Q_PROPERTY(QString baselineButton MEMBER baselineButton)
    Q_PROPERTY(QString chosen MEMBER chosen)
    Q_PROPERTY(bool connecting MEMBER connecting)
    Q_PROPERTY(QString connectingText MEMBER connectingText)
    Q_PROPERTY(QString pasteText MEMBER pasteText)
    Q_PROPERTY(QString guideTitle MEMBER guideTitle)
    Q_PROPERTY(QString guideHelp MEMBER guideHelp)
    Q_PROPERTY(QStringList setupSteps MEMBER setupSteps)
    Q_PROPERTY(tunedeck::TelegramPairingView pairing MEMBER pairing)
    Q_PROPERTY(QString liveText MEMBER liveText)
    Q_PROPERTY(bool connected MEMBER connected)
    Q_PROPERTY(QString error MEMBER error)
    Q_PROPERTY(QString backButton MEMBER backButton)
    Q_PROPERTY(QString nextButton MEMBER nextButton)
public:
    int step = 0; ///< 0 to stepCount - 1
    int stepCount = 3;
    QString stepLabel; ///< "Step 1 of 3"
    QString title;
    QString text;

    // The tools step.
    QString waitingText; ///< while no status has come
    QList<ToolRowView> tools;
    QString installText; ///< the step of an installation, or its error
    double progress = -1;
    QString repairButton;

    // The Rekordbox step.
    QString rekordboxName; ///< what was found; empty when nothing was
    QString baselineText;
    QString baselineNote; ///< what becomes of a backup that can't be taken now
    QString baselineSymbol;
    look::Tone baselineTone = look::Tone::Secondary;
    bool baselineBusy = false;
    QString baselineButton; ///< to ask again; empty when there is no need

    // The assistant step.
    QList<ConnectRowView> assistants;
    QString chosen; ///< raw value of the picked assistant
    bool connecting = false;
    QString connectingText;
    QString pasteText;
    QList<SecretFieldView> fields; ///< called "url" and "key"; the key is the Shortcut's alone
    QString guideTitle;
    QString guideHelp;
    QStringList setupSteps;
    TelegramPairingView pairing;
    QString liveText;
    bool connected = false;

    QString error;
    QString backButton; ///< empty on the first step
    QString nextButton;
    bool operator==(const OnboardingContent&) const = default;
};

/// What the first-run window shows for a state at a moment.
OnboardingContent onboardingContent(const OnboardingState& state, const QDateTime& now);

} // namespace tunedeck
