import QtQuick
import Tunedeck.Views

/// A connected assistant: its state, menu, values to copy and pairing code.
Column {
    id: row

    required property string rowId
    required property int kind
    required property string name
    required property string detail
    required property bool connected
    required property linkMenuView menu
    required property string text
    required property var fields
    required property telegramPairingView pairing
    required property string guideTitle
    required property string guideHelp
    required property string guideDescription

    spacing: 6

    Item {
        implicitHeight: Math.max(more.height, name.implicitHeight)
        width: parent.width

        Dot {
            id: dot

            anchors.verticalCenter: parent.verticalCenter
            size: 6
            tone: row.connected ? Look.Good : Look.Secondary
        }

        Label {
            id: name

            anchors.left: dot.right
            anchors.leftMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            elide: Text.ElideRight
            font.weight: Font.Medium
            text: row.name
            width: Math.min(implicitWidth, more.x - x - detail.implicitWidth - 8)
        }

        Label {
            id: detail

            anchors.baseline: name.baseline
            anchors.left: name.right
            anchors.leftMargin: 5
            caption: true
            color: Theme.secondary
            text: row.detail
            wrapMode: Text.NoWrap
        }

        IconButton {
            id: more

            anchors.right: parent.right
            anchors.rightMargin: -5
            anchors.verticalCenter: parent.verticalCenter
            expandable: true
            expanded: menuLoader.status === Loader.Ready
            label: row.menu.label
            role: Accessible.ButtonMenu
            symbol: "ellipsis.circle"

            Accessible.description: row.menu.description

            onClicked: menuLoader.setSource("LinkMenu.qml", {
                    "byKeyboard": more.focusShown,
                    "kind": row.kind,
                    "linkId": row.rowId,
                    "view": row.menu,
                    "target": more
                })
        }

        Loader {
            id: menuLoader

            function shut(): void {
                source = "";
            }

            onLoaded: (item as LinkMenu).closed.connect(shut)
        }
    }

    Label {
        caption: true
        color: Theme.secondary
        text: row.text
        width: parent.width
    }

    Repeater {
        model: row.fields

        SecretField {
            width: parent.width

            onCopied: Panel.actions.copySecret(key)
        }
    }

    TelegramPairing {
        view: row.pairing
        visible: view.shown
        width: parent.width

        onNewCodePressed: Panel.actions.newTelegramCode(row.rowId)
        onOpenPressed: Panel.actions.openTelegram(row.rowId)
    }

    PushButton {
        borderless: true
        hint: row.guideHelp
        label: row.guideTitle
        role: Accessible.Link
        visible: label !== ""
        x: -6

        Accessible.description: row.guideDescription

        onClicked: Panel.actions.openSetupGuide(row.rowId)
    }
}
