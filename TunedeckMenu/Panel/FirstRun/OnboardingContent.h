#pragma once

#include "TunedeckMenu/Panel/Cards/ConnectRow.h"
#include "TunedeckMenu/Panel/Cards/SecretField.h"
#include "TunedeckMenu/Panel/Cards/TelegramPairing.h"
#include "TunedeckMenu/Panel/Look.h"
#include "TunedeckMenu/Panel/RowSlice.h"
#include "TunedeckMenu/Panel/ViewProperty.h"

#include <QDateTime>
#include <QList>
#include <QStringList>

namespace tunedeck {

struct OnboardingState;

struct ToolRowView {
    Q_GADGET
    VIEW_PROPERTY(QString, name);
    VIEW_PROPERTY(QString, state);
    VIEW_PROPERTY(QString, symbol);
    VIEW_PROPERTY(tunedeck::look::Tone, tone) = look::Tone::Secondary;
    bool operator==(const ToolRowView&) const = default;
};

struct OnboardingContent {
    Q_GADGET
    VIEW_PROPERTY(int, step) = 0; ///< 0 to stepCount - 1
    VIEW_PROPERTY(int, stepCount) = 3;
    VIEW_PROPERTY(QString, stepLabel); ///< "Step 1 of 3"
    VIEW_PROPERTY(QString, title);
    VIEW_PROPERTY(QString, text);

    // The service, in every step that waits for it.
    VIEW_PROPERTY(QString, waitingText);    ///< until the first status arrives
    VIEW_PROPERTY(QString, waitNote);       ///< what a long wait is for, of whichever kind
    VIEW_PROPERTY(QString, serviceFailure); ///< instead of waitingText
    VIEW_PROPERTY(QString, serviceAdvice);
    VIEW_PROPERTY(QString, startButton); ///< also when the wait takes long
    VIEW_PROPERTY(bool, startingService) = false;
    VIEW_PROPERTY(QString, logButton);

    // The tools step.
    RowSlice<ToolRowView> tools;
    VIEW_PROPERTY(QString, installText); ///< the installation step or its error
    VIEW_PROPERTY(double, progress) = -1;
    VIEW_PROPERTY(QString, repairButton);

    // The Rekordbox step.
    VIEW_PROPERTY(QString, rekordboxName); ///< empty when Rekordbox wasn't found
    VIEW_PROPERTY(QString, libraryNote);   ///< when there is a library nevertheless
    VIEW_PROPERTY(QString, baselineText);
    VIEW_PROPERTY(QString, baselineNote); ///< when the backup is made instead
    VIEW_PROPERTY(QString, baselineSymbol);
    VIEW_PROPERTY(tunedeck::look::Tone, baselineTone) = look::Tone::Secondary;
    VIEW_PROPERTY(bool, baselineBusy) = false;
    VIEW_PROPERTY(QString, baselineButton); ///< empty unless the backup failed

    // The assistant step.
    QList<ConnectRowView> assistants;
    VIEW_PROPERTY(QString, chosen); ///< raw value of the chosen assistant
    VIEW_PROPERTY(bool, connecting) = false;
    VIEW_PROPERTY(QString, connectingText);
    VIEW_PROPERTY(QString, pasteText);
    VIEW_PROPERTY(tunedeck::SecretFieldView, urlField);
    VIEW_PROPERTY(tunedeck::SecretFieldView, keyField); ///< of a Shortcut
    VIEW_PROPERTY(QString, guideTitle);
    VIEW_PROPERTY(QString, guideHelp);
    VIEW_PROPERTY(QStringList, setupSteps);
    VIEW_PROPERTY(tunedeck::TelegramPairingView, pairing);
    VIEW_PROPERTY(QString, liveText);
    VIEW_PROPERTY(bool, connected) = false;

    VIEW_PROPERTY(QString, error);
    VIEW_PROPERTY(QString, backButton); ///< empty on the first step
    VIEW_PROPERTY(QString, nextButton);
    bool operator==(const OnboardingContent&) const = default;
};

/// `tools`: the rows of a long list of tools to include.
OnboardingContent onboardingContent(const OnboardingState& state, const QDateTime& now, RowRange tools = {});

} // namespace tunedeck
