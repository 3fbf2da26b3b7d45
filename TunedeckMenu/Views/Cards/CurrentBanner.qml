import QtQuick
import Tunedeck.Views

/// The one current line of success or failure; a screen reader reads it out when it comes.
Alert {
    id: alert

    readonly property bannerView view: Panel.banner

    implicitHeight: banner.implicitHeight
    text: view.text

    Accessible.role: Accessible.AlertMessage
    Accessible.name: text

    Banner {
        id: banner

        silent: true
        text: alert.view.text
        tone: alert.view.tone
        width: parent.width
    }
}
