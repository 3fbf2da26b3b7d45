import QtQuick
import Tunedeck.Views

/// The most recent jobs.
Card {
    id: card

    readonly property recentView view: Panel.content.recent

    symbol: "clock"
    title: view.title

    Column {
        spacing: 8
        width: parent.width

        Repeater {
            model: Panel.jobs

            JobRow {
                width: parent.width
            }
        }
    }
}
