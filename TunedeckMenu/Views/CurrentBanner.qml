import QtQuick
import Tunedeck.Views

/// The one current line of success or failure.
Banner {
    id: banner

    readonly property bannerView view: Panel.banner

    detail: view.detail
    text: view.text
    tone: view.tone
}
