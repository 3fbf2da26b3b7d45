import QtQuick
import Tunedeck.Views

/// The panel in a separate window; closing hides it.
Window {
    id: window

    readonly property real wantedHeight: view.implicitHeight
    readonly property real wantedWidth: view.implicitWidth

    color: Theme.window
    maximumWidth: wantedWidth
    minimumHeight: 220
    minimumWidth: wantedWidth
    title: "Tunedeck"

    PanelView {
        id: view

        anchors.horizontalCenter: parent.horizontalCenter
        focus: true
        height: parent.height
        // Not stretched where a window manager gives the window more than it wants.
        width: Math.min(parent.width, window.wantedWidth)
        topInset: 16

        Keys.onEscapePressed: window.close()
    }
}
