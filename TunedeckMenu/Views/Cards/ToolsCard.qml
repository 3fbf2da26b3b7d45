import QtQuick
import Tunedeck.Views

/// Missing tools, and the progress of their installation.
Card {
    id: card

    readonly property toolsNoticeView view: Panel.content.tools

    symbol: "wrench.and.screwdriver"
    title: view.title

    accessory: Badge {
        text: card.view.badge
        tone: card.view.badgeTone
    }

    Label {
        text: card.view.text
        width: parent.width
    }

    Label {
        caption: true
        color: Theme.secondary
        text: card.view.detail
        width: parent.width
    }

    ProgressBar {
        value: card.view.progress
        width: parent.width
    }

    BusyLine {
        text: card.view.installingText
    }

    PushButton {
        label: card.view.button
        prominent: true

        onClicked: Panel.actions.repairTools()
    }
}
