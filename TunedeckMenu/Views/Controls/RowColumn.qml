import QtQuick
import Tunedeck.Views

/// The rows of a list below each other. Of a long list, only the rows in sight of the ScrollArea and some around them
/// exist; empty space stands for the others.
Column {
    id: column

    property alias delegate: repeater.delegate
    required property RowModel model
    readonly property int count: model.total
    readonly property int missing: count - repeater.count
    /// Average height of a row with the space below it.
    property real step: 0
    property real above: 0
    readonly property real below: (missing - model.first) * step
    /// The row in the middle of the view when other rows were requested, and its place then.
    property int anchor: 0
    property real place: 0

    function scrollArea(): ScrollArea {
        for (let item = column.parent; item; item = item.parent)
            if (item instanceof ScrollArea)
                return item as ScrollArea;
        return null;
    }

    /// Requests the rows around the middle of the view when it has moved.
    function follow(): void {
        const area = scrollArea();
        const shown = repeater.count;
        const start = repeater.itemAt(0).y;
        const last = repeater.itemAt(shown - 1);
        step = Math.max(1, (last.y + last.height + spacing - start) / shown);
        const middle = area.height / 2 - column.mapToItem(area, 0, 0).y;
        let index = Math.floor((middle - start) / step);
        place = middle;
        for (let i = 0; index >= 0 && index < shown && i < shown && repeater.itemAt(i).y <= middle; i++) {
            place = repeater.itemAt(i).y;
            index = i;
        }
        anchor = Math.max(0, Math.min(count - 1, model.first + index));
        const size = Math.max(40, Math.ceil(2 * area.height / step));
        const first = Math.max(0, Math.min(count - size, Math.round(anchor - size / 2)));
        const atEnd = first === 0 || first === count - size;
        if (size > shown || first !== model.first && (atEnd || Math.abs(first - model.first) > size / 6))
            model.request(first, size);
    }

    /// Keeps the anchor in its place when other rows have arrived.
    function settle(): void {
        above = model.first * step;
        forceLayout();
        const kept = repeater.itemAt(anchor - model.first);
        const shift = kept ? place - kept.y : 0;
        if (model.first > 0)
            above = Math.max(spacing + 1, above + shift);
        else if (kept)
            scrollArea().scrollBy(-shift);
    }

    Item {
        height: column.above - column.spacing
        visible: column.above > 0
        width: 1
    }

    Repeater {
        id: repeater

        model: column.model
    }

    Item {
        height: column.below - column.spacing
        visible: column.below > 0
        width: 1
    }

    Connections {
        function onFirstChanged(): void {
            column.settle();
        }

        target: column.model
    }

    Connections {
        function onAfterAnimating(): void {
            column.follow();
        }

        enabled: column.missing > 0
        target: column.Window.window
    }
}
