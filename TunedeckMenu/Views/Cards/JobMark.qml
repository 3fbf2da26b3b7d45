import QtQuick
import Tunedeck.Views

/// The symbol of a job's state; pulses while the job is running.
Symbol {
    id: mark

    required property jobRowView view
    property int phase: 0

    color: Theme.symbolColor(view.tone)
    name: view.symbol
    opacity: 0.7 + 0.3 * Math.cos(2 * Math.PI * phase / 24)
    size: Math.round(14 * Theme.scale)

    Accessible.role: Accessible.Graphic
    Accessible.name: view.stateName
    Accessible.description: view.message

    Timer {
        // A period of 1.6 s in 24 steps: an animation would redraw the window 60 times per second.
        interval: 66
        repeat: true
        running: mark.view.pulsing && mark.visible && !Theme.reduceMotion && mark.Window.visibility !== Window.Hidden && mark.Window.visibility !== Window.Minimized

        onRunningChanged: mark.phase = 0
        onTriggered: mark.phase = (mark.phase + 1) % 24
    }
}
