import QtQuick
import Tunedeck.Views

/// A small round mark whose colour says how things are.
Symbol {
    property int tone: Look.Secondary

    color: Theme.mark(tone)
    name: "circle.fill"
    size: 8
}
