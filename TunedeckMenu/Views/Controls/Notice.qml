import QtQuick
import Tunedeck.Views

/// A message that fades in and out; screen readers read it out when it appears.
Item {
    id: notice

    required property string text
    property string advice
    property alias shown: line.shown
    property int tone: Look.Warning
    property real margin: Theme.margin

    height: line.active ? line.implicitHeight + Theme.margin : 0

    FadeLoader {
        id: line

        width: parent.width - 2 * notice.margin
        x: notice.margin
        y: 4

        sourceComponent: Alert {
            id: alert

            implicitHeight: banner.implicitHeight
            text: notice.text // qmllint disable unqualified

            Accessible.role: Accessible.AlertMessage
            Accessible.name: text

            Banner {
                id: banner

                detail: notice.advice // qmllint disable unqualified
                silent: true
                text: alert.text
                tone: notice.tone // qmllint disable unqualified
                width: parent.width
            }
        }
    }
}
