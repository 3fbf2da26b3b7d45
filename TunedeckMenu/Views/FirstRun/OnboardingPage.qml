import QtQuick
import Tunedeck.Views

/// The page of the current step: title, text and the content of the step.
Column {
    id: page

    readonly property onboardingContent view: Onboarding.content
    readonly property int step: view.step
    readonly property real contentWidth: width - leftPadding - rightPadding

    spacing: 14

    onStepChanged: fade.restart()

    FadeIn {
        id: fade

        target: page
        time: 220
    }

    Label {
        font.pixelSize: Math.round(22 * Theme.scale)
        font.weight: Font.DemiBold
        heading: true
        horizontalAlignment: Text.AlignHCenter
        text: page.view.title
        width: page.contentWidth
    }

    Label {
        color: Theme.secondary
        horizontalAlignment: Text.AlignHCenter
        lineHeight: 1.15
        text: page.view.text
        width: page.contentWidth
    }

    ServiceWait {
        width: page.contentWidth
    }

    Loader {
        source: ["ToolsStep.qml", "RekordboxStep.qml", "AssistantStep.qml"][page.step] ?? ""
        width: page.contentWidth
    }
}
