import QtQuick
import Tunedeck.Views

/// Fades its content in and out, with a slight zoom unless motion is reduced. Loaded only while it is visible.
Loader {
    id: loader

    property bool shown: false

    active: shown || opacity > 0
    opacity: 0
    transformOrigin: Item.Top
    visible: active

    states: State {
        name: "shown"
        when: loader.shown

        PropertyChanges {
            loader.opacity: 1
        }
    }
    transitions: Transition {
        enabled: loader.Window.window !== null && loader.Window.window.visible

        NumberAnimation {
            duration: Theme.fadeDuration
            easing.type: Easing.OutQuad
            property: "opacity"
        }
    }

    scale: Theme.reduceMotion ? 1 : 0.98 + 0.02 * opacity
}
