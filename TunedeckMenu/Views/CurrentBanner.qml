import QtQuick
import Tunedeck.Views

/// The one current line of success or failure; keeps its words while it fades.
Banner {
    id: banner

    property bannerView view

    detail: view.detail
    text: view.text
    tone: view.tone

    Binding on view  {
        restoreMode: Binding.RestoreNone
        value: Panel.banner
        when: Panel.banner.shown
    }
}
