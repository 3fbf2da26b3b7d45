import QtQuick
import Tunedeck.Views

/// The assistants that can still be connected.
Grid {
    id: grid

    columnSpacing: 8
    columns: 2
    rowSpacing: 8

    Repeater {
        model: Panel.connectRows

        ConnectButton {
            enabled: !Panel.assistants.busy
            width: (parent.width - 8) / 2

            onClicked: Actions.connectAssistant(rowId)
        }
    }
}
