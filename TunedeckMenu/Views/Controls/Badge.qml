import QtQuick
import Tunedeck.Views

/// A word or two on a tinted pill; a new text fades in.
HintArea {
    id: badge

    property string text
    property int tone: Look.Secondary
    property bool monospaced: false

    implicitHeight: label.implicitHeight + 4
    implicitWidth: label.implicitWidth + 12
    visible: text !== ""

    onTextChanged: if (visible)
        fade.restart()

    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.description: hint

    FadeIn {
        id: fade

        target: label
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.tint(label.color, 0.14)
        radius: 5
    }

    PlainText {
        id: label

        anchors.centerIn: parent
        elide: Text.ElideMiddle
        color: Theme.textColor(badge.tone)
        font.family: badge.monospaced ? Theme.monoFamily : Theme.family
        font.pixelSize: Theme.caption2Size
        font.weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
        text: badge.text
        width: Math.min(implicitWidth, badge.width - 12)
    }
}
