import QtQuick
import Tunedeck.Views

/// Comes and goes with a fade, and grows a little where motion is welcome. There is nothing of it while it isn't shown.
Loader {
    id: appearing

    property bool shown: false

    active: shown || opacity > 0
    opacity: 0
    transformOrigin: Item.Top
    visible: active

    states: State {
        name: "shown"
        when: appearing.shown

        PropertyChanges {
            appearing.opacity: 1
        }
    }
    transitions: Transition {
        enabled: appearing.Window.window !== null && appearing.Window.window.visible

        NumberAnimation {
            duration: Theme.appear
            easing.type: Easing.OutQuad
            property: "opacity"
        }
    }

    scale: Theme.still ? 1 : 0.98 + 0.02 * opacity
}
