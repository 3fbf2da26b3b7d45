import QtQuick
import Tunedeck.Views

/// What can be done with a link.
PopupMenu {
    id: menu

    required property string linkId
    required property string rotateTitle

    MenuEntry {
        label: menu.rotateTitle
        visible: label !== ""

        onClicked: {
            menu.close();
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
