import QtQuick
import Tunedeck.Views

/// The application's logo.
Item {
    id: glyph

    property real size: 34

    implicitHeight: size
    implicitWidth: size

    GlyphPlate {
        height: glyph.size + 1
        width: glyph.size
    }

    Symbol {
        anchors.centerIn: parent
        color: "#ffffff"
        name: "music.note.list"
        size: glyph.size * 18 / 34
    }
}
