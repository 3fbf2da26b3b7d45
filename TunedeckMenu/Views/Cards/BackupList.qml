import QtQuick
import Tunedeck.Views

/// The backups, newest first as the service lists them.
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
