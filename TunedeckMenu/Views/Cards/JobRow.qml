import QtQuick
import Tunedeck.Views

/// A job: state, playlist and time. A failed one opens in place and says why.
Column {
    id: row

    required property jobRowView view
    property bool open: false

    spacing: 6

    HintArea {
        hint: opener.visible ? "" : row.view.message
        implicitHeight: name.implicitHeight
        width: parent.width

        Control {
            id: opener

            anchors.fill: parent
            expandable: true
            expanded: row.open
            hint: row.view.openHelp
            label: row.view.openName
            pressedScale: 1
            visible: label !== ""

            onClicked: row.open = !row.open

            Symbol {
                id: chevron

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                color: opener.hovered ? Theme.text : Theme.secondary
                name: "chevron.right"
                rotation: row.open ? 90 : 0
                size: Math.round(11 * Theme.scale)

                Behavior on rotation  {
                    Ease {
                    }
                }
            }
        }

        JobMark {
            id: mark

            anchors.verticalCenter: parent.verticalCenter
            view: row.view
        }

        Label {
            id: name

            anchors.left: mark.right
            anchors.leftMargin: 8
            anchors.right: when.visible ? when.left : parent.right
            anchors.rightMargin: when.visible ? 10 : 0
            elide: Text.ElideRight
            horizontalAlignment: Text.AlignLeft
            text: row.view.playlist
        }

        FigureText {
            id: when

            anchors.baseline: name.baseline
            anchors.right: parent.right
            anchors.rightMargin: opener.visible ? chevron.width + 6 : 0
            color: Theme.secondary
            font.family: Theme.family
            font.pixelSize: Theme.captionSize
            text: row.view.trailing
            visible: text !== ""

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    // The row outlives its part, which may refer to it.
    // qmllint disable unqualified
    Loader {
        active: row.open && opener.visible
        visible: active
        width: parent.width

        sourceComponent: Column {
            leftPadding: name.x
            spacing: 6

            SelectableText {
                color: Theme.secondary
                text: row.view.message
                width: parent.width - name.x
            }

            PushButton {
                label: row.view.logButton

                Accessible.name: row.view.logName

                onClicked: Panel.actions.openLog()
            }
        }
    }
    // qmllint enable unqualified
}
