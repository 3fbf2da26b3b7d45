import QtQuick
import Tunedeck.Views

/// The backups of the library, newest first.
Column {
    spacing: 10
    topPadding: 4

    Repeater {
        model: Panel.backups

        BackupRow {
            width: parent.width
        }
    }

    Label {
        caption: true
        color: Theme.secondary
        text: Panel.rekordbox.backupsNote
        width: parent.width
    }
}
