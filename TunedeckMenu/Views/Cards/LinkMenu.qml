import QtQuick
import Tunedeck.Views

/// The menu of a link.
PopupMenu {
    id: menu

    required property linkRowView link

    MenuEntry {
        label: menu.link.menu.renew
        visible: label !== ""

        onClicked: {
            menu.close();
            if (menu.link.kind === Look.Telegram)
                Panel.actions.newTelegramCode(menu.link.id);
            else
                Panel.actions.rotateLink(menu.link.id);
        }
    }

    Item {
        implicitHeight: 9
        visible: menu.link.menu.renew !== ""
        width: parent ? parent.width : 0

        Rectangle {
            anchors.centerIn: parent
            color: Theme.raisedEdge
            height: 1
            width: parent.width - 12
        }
    }

    MenuEntry {
        label: menu.link.menu.guide

        onClicked: {
            menu.close();
            Panel.actions.openSetupGuide(menu.link.id);
        }
    }

    MenuEntry {
        label: menu.link.menu.disconnect

        onClicked: {
            menu.close();
            Panel.actions.disconnectLink(menu.link.id);
        }
    }
}
