import QtQuick
import Tunedeck.Views

/// A numbered instruction for setting up an assistant.
Item {
    id: step

    required property int index
    required property string modelData

    implicitHeight: words.implicitHeight

    Label {
        caption: true
        color: Theme.secondary
        text: (step.index + 1) + "."
    }

    Label {
        id: words

        anchors.left: parent.left
        anchors.leftMargin: Math.round(18 * Theme.scale)
        anchors.right: parent.right
        caption: true
        text: step.modelData
    }
}
