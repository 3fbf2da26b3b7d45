import QtQuick
import Tunedeck.Views

/// The cards, top to bottom. Optional ones exist only while they are shown.
Column {
    id: column

    property bool detached: false
    readonly property real cardWidth: width - 2 * Theme.margin

    bottomPadding: Theme.margin
    leftPadding: Theme.margin
    rightPadding: Theme.margin
    spacing: Theme.cardGap
    topPadding: 2

    FadeLoader {
        shown: column.detached && Panel.hiddenIcon.shown
        width: column.cardWidth

        sourceComponent: HiddenIconCard {
        }
    }

    FadeLoader {
        shown: Panel.notRunning.shown
        width: column.cardWidth

        sourceComponent: NotRunningCard {
        }
    }

    FadeLoader {
        shown: Panel.recent.shown
        width: column.cardWidth

        sourceComponent: RecentCard {
        }
    }

    FadeLoader {
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
