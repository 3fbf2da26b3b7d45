import QtQuick
import Tunedeck.Views

/// A text for sighted users and screen readers. An elided one has its whole text as tooltip.
PlainText {
    id: label

    property bool heading: false
    property bool caption: false
    property bool mono: false

    font.family: mono ? Theme.monoFamily : Theme.family
    font.pixelSize: caption ? Theme.captionSize : Theme.bodySize
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
