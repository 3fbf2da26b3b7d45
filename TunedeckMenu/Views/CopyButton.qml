import QtQuick
import Tunedeck.Views

/// Copies a value; says so for a moment by its title.
PushButton {
    id: button

    implicitWidth: Math.round(74 * Theme.scale)
}
