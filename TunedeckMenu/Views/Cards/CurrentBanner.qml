import QtQuick
import Tunedeck.Views

/// The result of the last action; screen readers read it out when it appears.
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
