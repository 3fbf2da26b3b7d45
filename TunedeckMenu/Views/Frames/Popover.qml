import QtQuick
import Tunedeck.Views

/// The panel at the tray icon; positioned and closed from C++.
Window {
    id: window

    readonly property real wantedHeight: view.implicitHeight
    readonly property real wantedWidth: view.implicitWidth

    signal dismissed

    color: Theme.window
    flags: Qt.Tool | Qt.FramelessWindowHint | Qt.WindowStaysOnTopHint
    title: "Tunedeck"

    PanelView {
        id: view

        anchors.fill: parent
        focus: true

        Keys.onEscapePressed: window.dismissed()
    }

    Rectangle {
        anchors.fill: parent
        border.color: Theme.raisedEdge
        border.width: 1
        color: "transparent"
    }
}
