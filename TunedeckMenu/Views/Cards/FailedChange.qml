import QtQuick
import Tunedeck.Views

/// A change of the library that couldn't be made.
Item {
    id: change

    required property string text
    required property string detail
    required property int tone

    implicitHeight: banner.implicitHeight

    Banner {
        id: banner

        detail: change.detail
        text: change.text
        tone: change.tone
        width: parent.width
    }
}
