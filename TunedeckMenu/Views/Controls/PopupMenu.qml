import QtQuick
import Tunedeck.Views

/// A menu at the control that opened it, inside the window. Open from its creation; the creator destroys it on `closed`.
Item {
    id: menu

    required property Control target
    property bool byKeyboard: false
    default property alias entries: column.data

    signal closed

    function close(): void {
        if (target)
            target.forceActiveFocus(byKeyboard ? Qt.TabFocusReason : Qt.OtherFocusReason);
        closed();
    }

    /// Moves the focus by `step` entries, skipping unusable ones and wrapping around.
    function move(step: int): void {
        const entries = [];
        for (let i = 0; i < column.children.length; ++i)
            if (column.children[i].visible && column.children[i].activeFocusOnTab)
                entries.push(column.children[i]);
        const current = entries.findIndex(entry => entry.activeFocus);
        const next = current < 0 && step < 0 ? -1 : current + step;
        entries[(next + entries.length) % entries.length].forceActiveFocus(Qt.PopupFocusReason);
    }

    anchors.fill: parent
    parent: target.Window.contentItem
    z: 90

    Component.onCompleted: {
        const below = target.mapToItem(parent, 0, target.height + 2);
        const above = target.mapToItem(parent, 0, -2);
        box.x = Math.max(6, Math.min(parent.width - box.width - 6, below.x + target.width - box.width));
        box.y = below.y + box.height <= parent.height - 6 ? below.y : Math.max(6, above.y - box.height);
        if (byKeyboard)
            move(1);
        else
            box.forceActiveFocus();
    }

    Keys.onDownPressed: move(1)
    Keys.onEscapePressed: close()
    Keys.onTabPressed: close()
    Keys.onBacktabPressed: close()
    Keys.onUpPressed: move(-1)

    Connections {
        function onActiveChanged(): void {
            if (!menu.target.Window.active)
                menu.closed();
        }

        function onVisibleChanged(): void {
            menu.closed();
        }

        target: menu.target.Window.window
    }

    MouseArea {
        anchors.fill: parent

        onPressed: menu.close()
        onWheel: menu.close()
    }

    Rectangle {
        id: box

        border.color: Theme.raisedEdge
        border.width: 1
        color: Theme.raised
        height: column.implicitHeight + 10
        radius: 8
        width: Math.round(156 * Theme.scale)

        Accessible.role: Accessible.PopupMenu
        Accessible.name: menu.target.label

        Column {
            id: column

            width: parent.width - 10
            x: 5
            y: 5
        }
    }
}
