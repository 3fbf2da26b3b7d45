import QtQuick
import Tunedeck.Views

/// A titled group that opens and closes; its content exists only while it is open.
Column {
    id: group

    property string title
    property bool open: false
    property alias content: body.sourceComponent
    /// Between a press and the rest after it; what changes inside later takes its place at once.
    property bool turning: false

    Control {
        id: head

        expandable: true
        expanded: group.open
        implicitHeight: Theme.controlHeight
        label: group.title
        pressedScale: 1
        width: parent.width

        onClicked: {
            group.turning = !Theme.still;
            group.open = !group.open;
        }

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.secondary
            name: "chevron.right"
            rotation: group.open ? 90 : 0
            size: Math.round(11 * Theme.scale)

            Behavior on rotation  {
                enabled: !Theme.still

                NumberAnimation {
                    duration: Theme.appear
                    easing.type: Easing.OutQuad
                }
            }
        }

        Text {
            anchors.left: parent.left
            anchors.leftMargin: Math.round(11 * Theme.scale) + 7
            anchors.verticalCenter: parent.verticalCenter
            color: head.hovered ? Theme.text : Theme.secondary
            font.family: Theme.family
            font.pixelSize: Theme.captionSize
            font.weight: Font.Medium
            text: group.title
            textFormat: Text.PlainText
        }
    }

    Item {
        clip: height < body.implicitHeight
        height: group.open ? body.implicitHeight : 0
        visible: height > 0
        width: parent.width

        Behavior on height  {
            enabled: !Theme.still && group.turning

            NumberAnimation {
                duration: Theme.appear
                easing.type: Easing.OutQuad

                onRunningChanged: if (!running)
                    group.turning = false
            }
        }

        Loader {
            id: body

            active: group.open || parent.height > 0
            width: parent.width
        }
    }
}
