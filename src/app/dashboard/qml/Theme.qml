pragma Singleton
import QtQuick

// Colours, sizes and durations. What the user's desktop says of them is put in from outside.
QtObject {
    property bool dark: false
    property bool highContrast: false
    property bool reduceMotion: false
    property real textScale: 1
    property color accent: "#3d63e6"     // below white text
    property color accentText: "#2f55d4" // on the window, a card or a well

    readonly property color window: dark ? "#1c1c1f" : "#f4f4f6"
    readonly property color bar: dark ? "#222226" : "#fafafb"
    readonly property color card: dark ? "#2a2a2e" : "#ffffff"
    readonly property color well: dark ? "#242428" : "#f9f9fb"
    readonly property color field: dark ? "#1f1f22" : "#ffffff"
    readonly property color text: dark ? "#f4f4f6" : "#1c1c1f"
    readonly property color secondary: highContrast ? text : dark ? "#a9a9b2" : "#61616a"
    readonly property color accentInk: "#ffffff"
    readonly property color outline: highContrast ? edge : dark ? "#17ffffff" : "#14000000"
    readonly property color line: highContrast ? edge : dark ? "#14ffffff" : "#12000000"
    readonly property color frame: highContrast ? edge : dark ? "#2effffff" : "#26000000"
    readonly property color edge: dark ? "#8c8c94" : "#76767e" // of what can be operated, and of all with high contrast
    readonly property color fill: dark ? "#3b3b40" : "#ececef"
    readonly property color fillHover: dark ? "#46464c" : "#e2e2e6"
    readonly property color fillDown: dark ? "#515158" : "#d6d6dc"
    readonly property color rowHover: dark ? "#0affffff" : "#06000000"
    readonly property color track: dark ? "#5b5b63" : "#c6c6cd"
    readonly property color good: dark ? "#3ecf74" : "#1f8a45"
    readonly property color warn: dark ? "#f5b73d" : "#9a5b00"
    readonly property color bad: dark ? "#ff8a82" : "#b92626"
    readonly property color badFill: dark ? "#432b2d" : "#fbe9e8"
    readonly property color warnFill: dark ? "#3f3524" : "#fbf1de"
    readonly property color scrim: dark ? "#b3000000" : "#66000000"

    readonly property int radius: 12
    readonly property int controlRadius: 7
    readonly property int pad: 20
    readonly property int indent: 61 // where the texts of a card begin
    readonly property int fast: reduceMotion ? 0 : 110
    readonly property int slow: reduceMotion ? 0 : 190

    readonly property string family: Qt.fontFamilies().includes("Inter") ? "Inter" : Qt.application.font.family
    readonly property int headline: Math.round(19 * textScale)
    readonly property int title: Math.round(14 * textScale)
    readonly property int body: Math.round(13 * textScale)
    readonly property int small: Math.round(12 * textScale)
    readonly property int row: Math.round(38 * Math.max(1, textScale))

    // By the names of the groups.
    function tint(group) {
        return {
            calendar: "#e5483f", reminders: "#d97a00", contacts: "#77777f", music: "#e02f57", files: "#1689b8",
            pages: "#b87a00", numbers: "#219247", keynote: "#2b6fe0", locationMaps: "#7a55e8"
        }[group] ?? "#77777f"
    }
    function symbol(group) {
        return {files: "folder", locationMaps: "location"}[group] ?? group
    }
}
