import QtQuick
import Tunedeck.Views

/// The latest jobs.
Card {
    id: card

    property recentView view

    symbol: view.symbol
    title: view.title

    Binding on view  {
        restoreMode: Binding.RestoreNone
        value: Panel.recent
        when: Panel.recent.shown
    }

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
