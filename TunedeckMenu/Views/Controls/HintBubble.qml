import QtQuick
import Tunedeck.Views

/// The tooltip of a window.
HintLayer {
    id: layer

    property bool delayPassed: false

    z: 100

    onChanged: {
        delayPassed = false;
        if (text !== "")
            delay.restart();
        else
            delay.stop();
    }

    Timer {
        id: delay

        interval: 600

        onTriggered: {
            layer.findTarget();
            layer.delayPassed = true;
        }
    }

    Rectangle {
        readonly property real maximumWidth: layer.width - 2 * Theme.margin
        readonly property real below: layer.target.y + layer.target.height + 6

        color: Theme.hint
        height: label.implicitHeight + 10
        radius: 6
        visible: layer.delayPassed && layer.text !== ""
        width: Math.min(maximumWidth, label.implicitWidth + 16)
        x: Math.max(Theme.margin, Math.min(layer.width - width - Theme.margin, layer.target.x + layer.target.width / 2 - width / 2))
        y: below + height <= layer.height - 4 ? below : Math.max(4, layer.target.y - height - 6)

        PlainText {
            id: label

            color: Theme.hintText
            text: layer.text
            width: Math.min(implicitWidth, parent.width - 16)
            wrapMode: Text.Wrap
            x: 8
            y: 5
        }
    }
}
