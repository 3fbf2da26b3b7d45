import QtQuick
import Tunedeck.Views

/// The Rekordbox installation that was found, and the first backup of its library.
Column {
    id: step

    readonly property onboardingContent view: Onboarding.content

    spacing: 12

    Plate {
        height: Math.round(48 * Theme.scale)
        visible: found.text !== ""
        width: parent.width

        Symbol {
            id: mark

            anchors.verticalCenter: parent.verticalCenter
            color: Theme.accent
            name: "square.stack.3d.up"
            size: Math.round(20 * Theme.scale)
            x: 14
        }

        Label {
            id: found

            anchors.left: mark.right
            anchors.leftMargin: 12
            anchors.right: tick.left
            anchors.verticalCenter: parent.verticalCenter
            elide: Text.ElideRight
            font.weight: Font.Medium
            text: step.view.rekordboxName
        }

        Symbol {
            id: tick

            anchors.right: parent.right
            anchors.rightMargin: 14
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.goodMark
            name: "checkmark.circle.fill"
            size: Math.round(16 * Theme.scale)
        }
    }

    Label {
        color: Theme.secondary
        horizontalAlignment: Text.AlignHCenter
        text: step.view.libraryNote
        width: parent.width
    }

    WaitLine {
        note: step.view.waitNote
        text: step.view.baselineBusy ? step.view.baselineText : ""
        width: parent.width
    }

    Plate {
        height: words.implicitHeight + 28
        visible: !step.view.baselineBusy && words.implicitHeight > 0
        width: parent.width

        Symbol {
            id: shield

            color: Theme.symbolColor(step.view.baselineTone)
            name: step.view.baselineSymbol
            size: Math.round(20 * Theme.scale)
            visible: name !== ""
            x: 14
            y: 14
        }

        Column {
            id: words

            anchors.left: shield.visible ? shield.right : parent.left
            anchors.leftMargin: shield.visible ? 12 : 14
            anchors.right: parent.right
            anchors.rightMargin: 14
            spacing: 4
            y: 14

            Label {
                text: step.view.baselineText
                width: parent.width
            }

            Label {
                color: Theme.secondary
                text: step.view.baselineNote
                width: parent.width
            }
        }
    }

    PushButton {
        anchors.horizontalCenter: parent.horizontalCenter
        label: step.view.baselineButton

        onClicked: Onboarding.actions.takeBaseline()
    }
}
