import QtQuick
import Tunedeck.Views

/// One job: how it stands, its playlist, and when.
HintArea {
    id: row

    required property string symbol
    required property int tone
    required property bool pulsing
    required property string playlist
    required property string trailing
    required property string stateName
    required property string message

    hint: message
    implicitHeight: name.implicitHeight

    Symbol {
        id: mark

        anchors.verticalCenter: parent.verticalCenter
        color: Theme.mark(row.tone)
        name: row.symbol
        size: Math.round(14 * Theme.scale)

        Accessible.role: Accessible.Graphic
        Accessible.name: row.stateName
        Accessible.description: row.message

        SequentialAnimation on opacity  {
            loops: Animation.Infinite
            running: row.pulsing && row.visible && !Theme.still && mark.Window.visibility !== Window.Hidden && mark.Window.visibility !== Window.Minimized

            onRunningChanged: if (!running)
                mark.opacity = 1

            NumberAnimation {
                duration: 800
                easing.type: Easing.InOutSine
                from: 1
                to: 0.4
            }
            NumberAnimation {
                duration: 800
                easing.type: Easing.InOutSine
                from: 0.4
                to: 1
            }
        }
    }

    Label {
        id: name

        anchors.left: mark.right
        anchors.leftMargin: 8
        anchors.right: when.visible ? when.left : parent.right
        anchors.rightMargin: when.visible ? 10 : 0
        elide: Text.ElideRight
        horizontalAlignment: Text.AlignLeft
        text: row.playlist
    }

    Label {
        id: when

        anchors.baseline: name.baseline
        anchors.right: parent.right
        caption: true
        color: Theme.secondary
        text: row.trailing
        wrapMode: Text.NoWrap
    }
}
