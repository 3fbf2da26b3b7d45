import QtQuick
import Tunedeck.Views

/// A small dot in the colour of a tone.
Symbol {
    property int tone: Look.Secondary

    color: Theme.symbolColor(tone)
    name: "circle.fill"
    size: 8
}
