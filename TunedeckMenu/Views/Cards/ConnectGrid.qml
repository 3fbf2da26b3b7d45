import QtQuick
import Tunedeck.Views

/// The assistants that can be connected, two per row; a single last one fills its row.
Flow {
    id: grid

    spacing: 8

    Repeater {
        id: rows

        model: Panel.connectRows

        ConnectButton {
            required property int index
            readonly property bool alone: index % 2 === 0 && index === rows.count - 1 // qmllint disable unqualified

            usable: !Panel.content.assistants.busy
            width: alone ? parent.width : (parent.width - 8) / 2

            onClicked: Panel.actions.connectAssistant(view.id)
        }
    }
}
