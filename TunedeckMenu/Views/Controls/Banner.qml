import QtQuick
import Tunedeck.Views

/// A warning or success message with an optional detail.
Rectangle {
    id: banner

    property string text
    property string detail
    property int tone: Look.Warning
    /// Hides the text from screen readers, when an Alert contains it already.
    property bool silent: false

    color: Theme.tint(Theme.symbolColor(tone), 0.12)
    implicitHeight: texts.implicitHeight + 16
    radius: 7

    Symbol {
        id: mark

        color: Theme.textColor(banner.tone)
        name: banner.tone === Look.Good ? "checkmark.circle.fill" : "exclamationmark.triangle.fill"
        size: Math.round(14 * Theme.scale)
        x: 8
        y: 8 + Math.round((firstLine.height - height) / 2)
    }

    FontMetrics {
        id: firstLine

        font.family: Theme.family
        font.pixelSize: Theme.captionSize
    }

    Column {
        id: texts

        anchors.left: mark.right
        anchors.leftMargin: 8
        anchors.right: parent.right
        anchors.rightMargin: 8
        spacing: 2
        y: 8

        Label {
            caption: true
            text: banner.text
            Accessible.ignored: banner.silent
            width: parent.width
        }

        Label {
            caption: true
            color: Theme.secondary
            text: banner.detail
            width: parent.width
        }
    }
}
