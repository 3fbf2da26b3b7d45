import QtQuick
import Tunedeck.Views

/// A square button with a symbol, or a spinner while it is busy. Its label is its tooltip.
Control {
    id: button

    property string symbol

    hint: label
    implicitHeight: Math.round(26 * Theme.scale)
    implicitWidth: Math.round(26 * Theme.scale)
    pressedScale: 0.92

    // The hint repeats the name.
    Accessible.description: ""

    HoverOverlay {
        control: button
        radius: Theme.controlRadius
        strength: 0.08
    }

    Symbol {
        anchors.centerIn: parent
        color: Theme.secondary
        name: button.symbol
        size: 14 * Theme.scale
        visible: !button.busy
    }

    Spinner {
        anchors.centerIn: parent
        color: Theme.secondary
        visible: button.busy
    }
}
