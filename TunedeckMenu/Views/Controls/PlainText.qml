import QtQuick
import Tunedeck.Views

/// A text without markup, in the desktop's font.
Text {
    color: Theme.text
    font.family: Theme.family
    font.pixelSize: Theme.captionSize
    textFormat: Text.PlainText
}
