import QtQuick
import Tunedeck.Views

/// The page of the present step: its title, what it is about, and its own part.
Column {
    id: page

    readonly property onboardingContent view: Onboarding.content
    readonly property int step: view.step
    readonly property real room: width - leftPadding - rightPadding

    spacing: 14

    onStepChanged: if (!Theme.still)
        turn.restart()

    NumberAnimation {
        id: turn

        duration: 220
        easing.type: Easing.OutQuad
        from: 0
        property: "opacity"
        target: page
        to: 1
    }

    Label {
        font.pixelSize: Math.round(22 * Theme.scale)
        font.weight: Font.DemiBold
        heading: true
        horizontalAlignment: Text.AlignHCenter
        text: page.view.title
        width: page.room
    }

    Label {
        color: Theme.secondary
        horizontalAlignment: Text.AlignHCenter
        lineHeight: 1.15
        text: page.view.text
        width: page.room
    }

    Loader {
        source: ["ToolsStep.qml", "RekordboxStep.qml", "AssistantStep.qml"][page.step] ?? ""
        width: page.room
    }
}
