import QtQuick
import Tunedeck.Views

/// The menu of a link.
PopupMenu {
    id: menu

    required property string linkId
    required property int kind
    required property linkMenuView view

    MenuEntry {
        label: menu.view.renew
        visible: label !== ""

        onClicked: {
            menu.close();
            if (menu.kind === Look.Telegram)
                Panel.actions.newTelegramCode(menu.linkId);
            else
                Panel.actions.rotateLink(menu.linkId);
        }
    }

    Item {
        implicitHeight: 9
        visible: menu.view.renew !== ""
        width: parent ? parent.width : 0

        Rectangle {
            anchors.centerIn: parent
            color: Theme.raisedEdge
            height: 1
            width: parent.width - 12
        }
    }

    MenuEntry {
        label: menu.view.guide

        onClicked: {
            menu.close();
            Panel.actions.openSetupGuide(menu.linkId);
        }
    }

    MenuEntry {
        label: menu.view.disconnect

        onClicked: {
            menu.close();
            Panel.actions.disconnectLink(menu.linkId);
        }
    }
}
