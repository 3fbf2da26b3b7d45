import QtQuick
import Tunedeck.Views

/// A group that expands and collapses; its content exists only while it is expanded.
Column {
    id: group

    property string title
    property bool open: false
    property alias content: body.sourceComponent
    /// While expanding or collapsing; later changes of the content's height aren't animated.
    property bool animating: false

    Control {
        id: head

        expandable: true
        expanded: group.open
        implicitHeight: Theme.controlHeight
        label: group.title
        pressedScale: 1
        width: parent.width

        onClicked: {
            group.animating = true;
            group.open = !group.open;
        }

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.secondary
            name: "chevron.right"
            rotation: group.open ? 90 : 0
            size: Math.round(11 * Theme.scale)

            Behavior on rotation  {
                Ease {
                }
            }
        }

        PlainText {
            anchors.left: parent.left
            anchors.leftMargin: Math.round(11 * Theme.scale) + 7
            anchors.verticalCenter: parent.verticalCenter
            color: head.hovered ? Theme.text : Theme.secondary
            font.weight: Font.Medium
            text: group.title
        }
    }

    Item {
        clip: height < body.implicitHeight
        height: group.open ? body.implicitHeight : 0
        visible: height > 0
        width: parent.width

        Behavior on height  {
            enabled: group.animating

            Ease {
                onRunningChanged: if (!running)
                    group.animating = false
            }
        }

        Loader {
            id: body

            active: group.open || parent.height > 0
            width: parent.width
        }
    }
}
