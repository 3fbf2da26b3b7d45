pragma Singleton
import QtQuick
import Tunedeck.Views

/// All colours, sizes and durations.
QtObject {
    readonly property bool dark: SystemStyle.dark
    readonly property bool moreContrast: SystemStyle.moreContrast
    readonly property bool reduceMotion: SystemStyle.reduceMotion
    readonly property real scale: SystemStyle.textScale
    readonly property string family: SystemStyle.fontFamily

    // Surfaces.
    readonly property color window: dark ? "#1d1c21" : "#f3f2f6"
    readonly property color card: dark ? "#2a292f" : "#ffffff"
    readonly property color cardEdge: moreContrast ? secondary : dark ? "#38373e" : "#e4e2ea"
    readonly property color raised: dark ? "#36353c" : "#ffffff"
    readonly property color raisedEdge: moreContrast ? secondary : dark ? "#4a4852" : "#d5d2dd"
    readonly property color separator: dark ? "#36353c" : "#e2e0e8"
    readonly property color field: dark ? "#222126" : "#f5f4f8"
    readonly property color control: dark ? "#3d3b44" : "#ffffff"
    readonly property color controlEdge: moreContrast ? text : dark ? "#54515d" : "#cbc7d5"
    readonly property color hint: dark ? "#45434d" : "#2c2a33"
    readonly property color hintText: "#ffffff"

    // Text and symbols.
    readonly property color text: dark ? "#f4f3f7" : "#1e1c24"
    readonly property color secondary: moreContrast ? text : dark ? "#aeabb8" : "#625e6e"
    readonly property color accent: dark ? "#b8a1ff" : "#6a3cdc"
    readonly property color accentFill: SystemStyle.accentFill
    readonly property color accentFillEdge: dark ? Qt.lighter(accentFill, 1.1) : Qt.darker(accentFill, 1.1)
    readonly property color accentText: SystemStyle.accentText
    readonly property color good: dark ? "#5fd38a" : "#107637"
    readonly property color warning: dark ? "#ffb454" : "#945400"
    readonly property color bad: dark ? "#ff8c85" : "#bf2a24"
    readonly property color goodMark: dark ? "#34c266" : "#2ba84f"
    readonly property color warningMark: dark ? "#ff9f2e" : "#f08c00"
    readonly property color badMark: dark ? "#ff5b52" : "#e0362e"
    readonly property color focus: dark ? "#a88cff" : "#7d55ea"

    // Type.
    readonly property int titleSize: Math.round(15 * scale)
    readonly property int bodySize: Math.round(13 * scale)
    readonly property int captionSize: Math.round(11.5 * scale)
    readonly property int caption2Size: Math.round(10.5 * scale)
    readonly property string monoFamily: "monospace"

    // Points.
    readonly property int panelWidth: Math.round(360 + (scale - 1) * 200)
    readonly property int margin: 12
    readonly property int cardGap: 10
    readonly property int cardPadding: 12
    readonly property int cardRadius: 11
    readonly property int spacing: 10
    readonly property int controlHeight: Math.round(24 * scale)
    readonly property int largeControlHeight: Math.round(30 * scale)
    readonly property int controlRadius: 6

    // Milliseconds.
    readonly property int pressDuration: 120
    readonly property int hoverDuration: 150
    readonly property int fadeDuration: 180

    /// Colour of texts of a tone; the colours are in the order of Look.Tone.
    function textColor(tone: int): color {
        return [secondary, accent, good, warning, bad][tone];
    }

    /// Colour of dots and filled symbols of a tone; needs less contrast than text.
    function symbolColor(tone: int): color {
        return [secondary, accent, goodMark, warningMark, badMark][tone];
    }

    /// `base` with this opacity.
    function tint(base: color, opacity: real): color {
        return Qt.rgba(base.r, base.g, base.b, opacity);
    }
}
