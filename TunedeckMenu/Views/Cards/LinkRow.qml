import QtQuick
import Tunedeck.Views

/// A connected assistant: its state, menu, values to copy and pairing code.
Column {
    id: row

    required property linkRowView view

    spacing: 6

    Item {
        implicitHeight: Math.max(more.height, name.implicitHeight)
        width: parent.width

        Dot {
            id: dot

            anchors.verticalCenter: parent.verticalCenter
            size: 6
            tone: row.view.connected ? Look.Good : Look.Secondary
        }

        Label {
            id: name

            anchors.left: dot.right
            anchors.leftMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            elide: Text.ElideRight
            font.weight: Font.Medium
            text: row.view.name
            width: Math.min(implicitWidth, more.x - x - detail.implicitWidth - 8)
        }

        Label {
            id: detail

            anchors.baseline: name.baseline
            anchors.left: name.right
            anchors.leftMargin: 5
            caption: true
            color: Theme.secondary
            text: row.view.detail
            wrapMode: Text.NoWrap
        }

        IconButton {
            id: more

            anchors.right: parent.right
            anchors.rightMargin: -5
            anchors.verticalCenter: parent.verticalCenter
            expandable: true
            expanded: menuLoader.status === Loader.Ready
            label: row.view.menu.label
            role: Accessible.ButtonMenu
            symbol: "ellipsis.circle"

            Accessible.name: row.view.menu.accessibleName
            Accessible.description: row.view.menu.description

            onClicked: menuLoader.setSource("LinkMenu.qml", {
                    "byKeyboard": more.focusShown,
                    "link": row.view,
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
        text: row.view.text
        width: parent.width
    }

    // Most rows have few of these parts. The row outlives them, so they may refer to it.
    // qmllint disable unqualified
    Loader {
        active: row.view.urlField.key !== ""
        visible: active
        width: parent.width

        sourceComponent: SecretField {
            view: row.view.urlField

            onCopied: Panel.actions.copySecret(view.key)
        }
    }

    Loader {
        active: row.view.keyField.key !== ""
        visible: active
        width: parent.width

        sourceComponent: SecretField {
            view: row.view.keyField

            onCopied: Panel.actions.copySecret(view.key)
        }
    }

    Loader {
        active: row.view.pairing.shown
        visible: active
        width: parent.width

        sourceComponent: TelegramPairing {
            view: row.view.pairing

            onNewCodePressed: Panel.actions.newTelegramCode(row.view.id)
            onOpenPressed: Panel.actions.openTelegram(row.view.id)
        }
    }

    Loader {
        active: row.view.guideTitle !== ""
        visible: active
        x: -6

        sourceComponent: PushButton {
            borderless: true
            hint: row.view.guideHelp
            label: row.view.guideTitle
            role: Accessible.Link

            Accessible.name: row.view.guideName

            onClicked: Panel.actions.openSetupGuide(row.view.id)
        }
    }
    // qmllint enable unqualified
}
