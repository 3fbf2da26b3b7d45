import QtQuick
import Tunedeck.Views

/// What can be done with a link.
PopupMenu {
    id: menu

    required property string linkId
    required property int kind
    required property string rotateTitle

    MenuEntry {
        label: menu.rotateTitle
        visible: label !== ""

        onClicked: {
            menu.close();
            if (menu.kind === Look.Telegram)
                Actions.newTelegramCode(menu.linkId);
            else
                Actions.rotateLink(menu.linkId);
        }
    }

    MenuDivider {
        visible: menu.rotateTitle !== ""
    }

    MenuEntry {
        label: "Setup Guide"

        onClicked: {
            menu.close();
            Actions.openSetupGuide(menu.linkId);
        }
    }

    MenuEntry {
        label: "Disconnect"

        onClicked: {
            menu.close();
            Actions.disconnectLink(menu.linkId);
        }
    }
}
