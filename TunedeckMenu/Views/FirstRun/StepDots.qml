import QtQuick
import Tunedeck.Views

/// Shows which of the steps is the current one.
Row {
    spacing: 7

    Accessible.role: Accessible.StaticText
    Accessible.name: Onboarding.content.stepLabel

    Repeater {
        model: Onboarding.content.stepCount

        StepDot {
        }
    }
}
