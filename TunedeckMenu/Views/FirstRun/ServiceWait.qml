import QtQuick
import Tunedeck.Views

/// Shown while the background service doesn't answer: what is happening or what went wrong, and what the user can do.
Column {
    id: wait

    readonly property onboardingContent view: Onboarding.content

    spacing: 12
    visible: view.waitingText !== "" || view.serviceFailure !== ""

    WaitLine {
        note: wait.view.waitNote
        text: wait.view.waitingText
        width: parent.width
    }

    Notice {
        advice: wait.view.serviceAdvice
        margin: 0
        shown: wait.view.serviceFailure !== ""
        text: wait.view.serviceFailure
        width: parent.width
    }

    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        spacing: 8

        PushButton {
            busy: wait.view.startingService
            label: wait.view.startButton

            onClicked: Onboarding.actions.startService()
        }

        PushButton {
            label: wait.view.logButton

            onClicked: Onboarding.actions.openLog()
        }
    }
}
