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
        shown: column.detached && Panel.content.hiddenIcon.shown
        width: column.cardWidth

        sourceComponent: HiddenIconCard {
        }
    }

    FadeLoader {
        shown: Panel.content.notRunning.shown
        width: column.cardWidth

        sourceComponent: NotRunningCard {
        }
    }

    FadeLoader {
        shown: Panel.content.recent.shown
        width: column.cardWidth

        sourceComponent: RecentCard {
        }
    }

    FadeLoader {
        shown: Panel.content.tools.shown
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
