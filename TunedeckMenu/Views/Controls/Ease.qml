import QtQuick
import Tunedeck.Views

/// Eases a property to its new value in `time` milliseconds; at once when motion is reduced.
NumberAnimation {
    property int time: Theme.fadeDuration

    duration: Theme.reduceMotion ? 0 : time
    easing.type: Easing.OutQuad
}
