import QtQuick
import Tunedeck.Views

/// A job: state, playlist and time.
HintArea {
    id: row

    required property jobRowView view

    hint: view.message
    implicitHeight: name.implicitHeight

    Symbol {
        id: mark

        property int phase: 0

        anchors.verticalCenter: parent.verticalCenter
        color: Theme.symbolColor(row.view.tone)
        name: row.view.symbol
        opacity: 0.7 + 0.3 * Math.cos(2 * Math.PI * phase / 24)
        size: Math.round(14 * Theme.scale)

        Accessible.role: Accessible.Graphic
        Accessible.name: row.view.stateName
        Accessible.description: row.view.message

        Timer {
            // A period of 1.6 s in 24 steps: an animation would redraw the window 60 times per second.
            interval: 66
            repeat: true
            running: row.view.pulsing && row.visible && !Theme.reduceMotion && mark.Window.visibility !== Window.Hidden && mark.Window.visibility !== Window.Minimized

            onRunningChanged: mark.phase = 0
            onTriggered: mark.phase = (mark.phase + 1) % 24
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
        text: row.view.playlist
    }

    Label {
        id: when

        anchors.baseline: name.baseline
        anchors.right: parent.right
        caption: true
        color: Theme.secondary
        text: row.view.trailing
        wrapMode: Text.NoWrap
    }
}
