import QtQuick
import Tunedeck.Views

/// A small round mark whose colour says how things are.
Rectangle {
    property int tone: Look.Secondary

    antialiasing: true
    color: Theme.mark(tone)
    height: width
    radius: width / 2
    width: 7
}
