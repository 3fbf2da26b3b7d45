import QtQuick
import Tunedeck.Views

/// The words that come up when the pointer rests on something.
HintLayer {
    id: layer

    property bool ripe: false

    z: 100

    onChanged: {
        ripe = false;
        if (text !== "")
            wait.restart();
        else
            wait.stop();
    }

    Timer {
        id: wait

        interval: 600

        onTriggered: layer.ripe = true
    }

    Rectangle {
        readonly property real room: layer.width - 2 * Theme.margin
        readonly property real lower: layer.target.y + layer.target.height + 6

        color: Theme.hint
        height: words.implicitHeight + 10
        radius: 6
        visible: layer.ripe && layer.text !== ""
        width: Math.min(room, words.implicitWidth + 16)
        x: Math.max(Theme.margin, Math.min(layer.width - width - Theme.margin, layer.target.x + layer.target.width / 2 - width / 2))
        y: lower + height <= layer.height - 4 ? lower : Math.max(4, layer.target.y - height - 6)

        Text {
            id: words

            color: Theme.hintText
            font.family: Theme.family
            font.pixelSize: Theme.captionSize
            text: layer.text
            textFormat: Text.PlainText
            width: Math.min(implicitWidth, parent.width - 16)
            wrapMode: Text.Wrap
            x: 8
            y: 5
        }
    }
}
