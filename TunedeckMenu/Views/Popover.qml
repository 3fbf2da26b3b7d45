import QtQuick
import Tunedeck.Views

/// The panel at the icon. The application places it and closes it.
Window {
    id: window

    readonly property real wantedHeight: view.implicitHeight + 2
    readonly property real wantedWidth: view.implicitWidth + 2

    signal dismissed

    color: Theme.raisedEdge
    flags: Qt.Tool | Qt.FramelessWindowHint | Qt.WindowStaysOnTopHint
    title: "Tunedeck"

    PanelView {
        id: view

        anchors.fill: parent
        anchors.margins: 1
        focus: true

        Keys.onEscapePressed: window.dismissed()
    }
}
