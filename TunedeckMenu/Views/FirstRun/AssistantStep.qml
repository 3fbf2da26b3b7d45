import QtQuick
import Tunedeck.Views

/// Connects an assistant and shows how to set it up.
Column {
    id: step

    readonly property onboardingContent view: Onboarding.content

    spacing: 12

    Grid {
        columnSpacing: 8
        columns: 2
        rowSpacing: 8
        width: parent.width

        Repeater {
            model: Onboarding.assistants

            ConnectButton {
                chosen: view.id === Onboarding.content.chosen
                implicitHeight: Math.round(40 * Theme.scale)
                usable: !Onboarding.content.connecting
                width: (parent.width - 8) / 2

                onClicked: Onboarding.actions.choose(view.id)
            }
        }
    }

    WaitLine {
        note: step.view.waitNote
        text: step.view.connectingText
        width: parent.width
    }

    Plate {
        height: link.implicitHeight + 24
        visible: step.view.pasteText !== ""
        width: parent.width

        Column {
            id: link

            spacing: 8
            width: parent.width - 28
            x: 14
            y: 12

            Label {
                font.weight: Font.Medium
                text: step.view.pasteText
                width: parent.width
            }

            SecretField {
                view: step.view.urlField
                width: parent.width

                onCopied: Onboarding.actions.copyLink()
            }

            SecretField {
                view: step.view.keyField
                width: parent.width

                onCopied: Onboarding.actions.copyKey()
            }

            Column {
                spacing: 4
                visible: step.view.setupSteps.length > 0
                width: parent.width

                Repeater {
                    model: step.view.setupSteps

                    SetupStep {
                        width: parent.width
                    }
                }
            }

            PushButton {
                borderless: true
                hint: step.view.guideHelp
                label: step.view.guideTitle
                role: Accessible.Link
                x: -6

                onClicked: Onboarding.actions.openSetupGuide()
            }
        }
    }

    Plate {
        height: pairing.implicitHeight + 28
        visible: step.view.pairing.shown
        width: parent.width

        TelegramPairing {
            id: pairing

            view: step.view.pairing
            width: parent.width - 28
            x: 14
            y: 14

            onNewCodePressed: Onboarding.actions.newTelegramCode()
            onOpenPressed: Onboarding.actions.openTelegram()
        }
    }

    BusyLine {
        anchors.horizontalCenter: parent.horizontalCenter
        text: step.view.liveText
        visible: text !== "" && !step.view.connected
    }

    Banner {
        text: step.view.liveText
        tone: Look.Good
        visible: text !== "" && step.view.connected
        width: parent.width
    }
}
