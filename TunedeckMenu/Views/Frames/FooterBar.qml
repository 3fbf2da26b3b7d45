import QtQuick
import Tunedeck.Views

/// The bottom of the panel: login switch, restart, log, quit.
Item {
    id: bar

    required property footerView view

    implicitHeight: buttons.implicitHeight + 2 * 8

    Switch {
        anchors.verticalCenter: parent.verticalCenter
        checked: bar.view.opensAtLogin
        label: bar.view.loginTitle
        x: Theme.margin + 2

        onClicked: Panel.actions.setOpensAtLogin(!bar.view.opensAtLogin)
    }

    Row {
        id: buttons

        anchors.right: parent.right
        anchors.rightMargin: Theme.margin - 2
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4

        IconButton {
            busy: bar.view.restarting
            label: bar.view.restartLabel
            symbol: "arrow.clockwise"

            onClicked: Panel.actions.restartService()
        }

        IconButton {
            label: bar.view.logLabel
            symbol: "doc.text.magnifyingglass"

            onClicked: Panel.actions.openLog()
        }

        IconButton {
            label: bar.view.quitLabel
            symbol: "power"

            onClicked: Panel.actions.quit()
        }
    }
}
