import QtQuick
import Tunedeck.Views

/// A text that can be selected and copied.
TextEdit {
    activeFocusOnTab: true
    color: Theme.text
    font.family: Theme.family
    font.pixelSize: Theme.captionSize
    readOnly: true
    selectByMouse: true
    selectedTextColor: Theme.accentText
    selectionColor: Theme.accentFill
    textFormat: TextEdit.PlainText
    wrapMode: TextEdit.Wrap

    Accessible.name: text
    Accessible.readOnly: true
}
