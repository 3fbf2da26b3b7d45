import QtQuick
import Tunedeck.Views

/// Which of the steps this is.
Item {
    id: dots

    required property int current
    required property int count
    required property string label

    implicitHeight: 8
    implicitWidth: row.implicitWidth

    Accessible.role: Accessible.StaticText
    Accessible.name: label

    StepRow {
        id: row

        current: dots.current
        spacing: 7

        Repeater {
            model: dots.count

            StepDot {
                current: (parent as StepRow).current
            }
        }
    }
}
