import QtQuick
import Tunedeck.Views

/// The cards, top to bottom. Each optional one is made when it is first needed and gone when it isn't.
Column {
    id: column

    property bool detached: false
    readonly property real cardWidth: width - 2 * Theme.margin

    bottomPadding: Theme.margin
    leftPadding: Theme.margin
    rightPadding: Theme.margin
    spacing: Theme.cardGap
    topPadding: 2

    Appearing {
        shown: column.detached && Panel.hiddenIcon.shown
        width: column.cardWidth

        sourceComponent: HiddenIconCard {
        }
    }

    Appearing {
        shown: Panel.notRunning.shown
        width: column.cardWidth

        sourceComponent: NotRunningCard {
        }
    }

    Appearing {
        shown: Panel.recent.shown
        width: column.cardWidth

        sourceComponent: RecentCard {
        }
    }

    Appearing {
        shown: Panel.tools.shown
        width: column.cardWidth

        sourceComponent: ToolsCard {
        }
    }

    AssistantsCard {
        width: column.cardWidth
    }

    DownloadsCard {
        width: column.cardWidth
    }

    RekordboxCard {
        width: column.cardWidth
    }

    AboutCard {
        width: column.cardWidth
    }
}
