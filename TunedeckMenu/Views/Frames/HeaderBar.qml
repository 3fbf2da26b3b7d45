import QtQuick
import Tunedeck.Views

/// The top of the panel: logo, title and the service's state; a single element for screen readers.
Item {
    id: bar

    required property headerView view

    implicitHeight: Math.max(34, words.implicitHeight) + 2 * Theme.margin

    Accessible.role: Accessible.Heading
    Accessible.name: view.title + ", " + view.status

    AppGlyph {
        id: glyph

        anchors.verticalCenter: parent.verticalCenter
        x: Theme.margin + 2
    }

    Column {
        id: words

        anchors.left: glyph.right
        anchors.leftMargin: 10
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        spacing: 1

        PlainText {
            elide: Text.ElideRight
            font.pixelSize: Theme.titleSize
            font.weight: Font.DemiBold
            text: bar.view.title
            width: parent.width
        }

        Row {
            spacing: 6
            width: parent.width

            Dot {
                anchors.verticalCenter: parent.verticalCenter
                tone: bar.view.tone
            }

            PlainText {
                id: status

                color: Theme.secondary
                elide: Text.ElideRight
                text: bar.view.status
                width: parent.width - 14

                onTextChanged: fade.restart()

                FadeIn {
                    id: fade

                    from: 0.2
                    target: status
                }
            }
        }
    }
}
