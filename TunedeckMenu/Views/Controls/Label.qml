import QtQuick
import Tunedeck.Views

/// A text that can be read by a screen reader too. Cut texts show themselves whole while the pointer rests on them.
Text {
    id: label

    property bool heading: false
    property bool caption: false
    property bool mono: false

    color: Theme.text
    font.family: mono ? Theme.monoFamily : Theme.family
    font.pixelSize: caption ? Theme.captionSize : Theme.bodySize
    textFormat: Text.PlainText
    visible: text !== ""
    wrapMode: elide === Text.ElideNone ? Text.Wrap : Text.NoWrap

    Accessible.role: heading ? Accessible.Heading : Accessible.StaticText
    Accessible.name: text

    HintArea {
        anchors.fill: parent
        hint: label.text
        visible: label.truncated
    }
}
