import QtQuick
import Tunedeck.Views

/// The tools with their states, and a button that repairs them.
Column {
    id: step

    readonly property onboardingContent view: Onboarding.content

    spacing: 12

    Plate {
        height: list.implicitHeight
        visible: list.count > 0
        width: parent.width

        RowColumn {
            id: list

            bottomPadding: 6
            model: Onboarding.tools
            topPadding: 6
            width: parent.width

            delegate: ToolRow {
                width: parent.width
            }
        }
    }

    Label {
        caption: true
        color: Theme.secondary
        horizontalAlignment: Text.AlignHCenter
        text: step.view.installText
        width: parent.width
    }

    ProgressBar {
        value: step.view.progress
        width: parent.width
    }

    PushButton {
        anchors.horizontalCenter: parent.horizontalCenter
        label: step.view.repairButton

        onClicked: Onboarding.actions.repairTools()
    }
}
