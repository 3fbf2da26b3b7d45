import QtQuick
import Tunedeck.Views

/// A vertical scroll area. Scrolls by wheel and touch, and to the item that gets the focus.
Item {
    id: area

    default property alias content: column.data
    property alias spacing: column.spacing
    readonly property real contentHeight: column.implicitHeight
    readonly property real maximumOffset: Math.max(0, Math.floor(column.implicitHeight - height))
    readonly property bool canScrollUp: flick.contentY > 0.5

    /// Scrolls by `points`, within the limits.
    function scrollBy(points: real): void {
        flick.contentY = Math.max(0, Math.min(maximumOffset, flick.contentY + points));
    }

    /// Scrolls as little as needed to show the whole item.
    function reveal(item: Item): void {
        for (let parent = item; parent !== column; parent = parent.parent)
            if (!parent)
                return;
        const top = item.mapToItem(column, 0, 0).y - 8;
        const bottom = top + item.height + 16;
        if (top < flick.contentY)
            scrollBy(top - flick.contentY);
        else if (bottom > flick.contentY + height)
            scrollBy(bottom - flick.contentY - height);
    }

    implicitHeight: column.implicitHeight

    Accessible.role: Accessible.Pane

    onMaximumOffsetChanged: scrollBy(0)

    Connections {
        function onActiveFocusItemChanged(): void {
            const item = area.Window.activeFocusItem;
            if (item)
                area.reveal(item);
        }

        target: area.Window.window
    }

    Flickable {
        id: flick

        anchors.fill: parent
        clip: true
        contentHeight: column.implicitHeight
        interactive: false

        Column {
            id: column

            width: flick.width
        }
    }

    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad

        onWheel: event => area.scrollBy(event.pixelDelta.y !== 0 ? -event.pixelDelta.y : -event.angleDelta.y / 120 * 48)
    }

    DragHandler {
        property real last: 0

        acceptedDevices: PointerDevice.TouchScreen
        target: null
        xAxis.enabled: false

        onActiveChanged: last = 0
        onActiveTranslationChanged: {
            area.scrollBy(last - activeTranslation.y);
            last = activeTranslation.y;
        }
    }

    Rectangle {
        color: Theme.text
        height: Math.max(24, area.height * area.height / Math.max(1, column.implicitHeight))
        opacity: 0.28
        radius: 2
        visible: area.maximumOffset > 0
        width: 4
        x: area.width - width - 3
        y: area.maximumOffset > 0 ? flick.contentY / area.maximumOffset * (area.height - height) : 0

        Accessible.role: Accessible.ScrollBar
        Accessible.name: area.Accessible.name
    }
}
