import QtQuick

/// The row that the steps' dots stand in.
Row {
    property int current: 0
}
