import QtQuick
import Tunedeck.Views

/// The panel: a fixed header and footer, and between them the cards, which scroll if necessary.
Rectangle {
    id: view

    /// Space above the header; 0 in the popover.
    property real topInset: 0

    color: Theme.window
    implicitHeight: topInset + header.implicitHeight + cards.contentHeight + notice.height + footer.implicitHeight
    implicitWidth: Theme.panelWidth

    Keys.onPressed: event => {
        const page = cards.height - 48;
        const ways = {
            [Qt.Key_Down]: 48,
            [Qt.Key_Up]: -48,
            [Qt.Key_PageDown]: page,
            [Qt.Key_PageUp]: -page,
            [Qt.Key_End]: cards.contentHeight,
            [Qt.Key_Home]: -cards.contentHeight
        };
        if (event.key in ways) {
            cards.scrollBy(ways[event.key]);
            event.accepted = true;
        }
    }

    HeaderBar {
        id: header

        view: Panel.content.header
        width: parent.width
        y: view.topInset
    }

    ScrollArea {
        id: cards

        anchors.bottom: notice.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: header.bottom

        Accessible.name: Panel.content.header.title

        CardColumn {
            detached: view.topInset > 0
            width: parent.width
        }
    }

    Rectangle {
        anchors.top: cards.top
        color: Theme.separator
        height: 1
        visible: cards.canScrollUp
        width: parent.width
    }

    Notice {
        id: notice

        anchors.bottom: footer.top
        shown: Panel.content.banner.shown
        text: Panel.content.banner.text
        tone: Panel.content.banner.tone
        width: parent.width
    }

    Rectangle {
        anchors.bottom: footer.top
        color: Theme.separator
        height: 1
        width: parent.width
    }

    FooterBar {
        id: footer

        anchors.bottom: parent.bottom
        view: Panel.content.footer
        width: parent.width
    }

    HintBubble {
        anchors.fill: parent
    }
}
