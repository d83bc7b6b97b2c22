import QtQuick

// Plain text: what comes from calendars and folders is never read as markup.
Text {
    property bool spoken: false

    textFormat: Text.PlainText
    color: Theme.text
    font { family: Theme.family; pixelSize: Theme.body }
    elide: Text.ElideRight
    horizontalAlignment: Text.AlignLeft // also for text of the other direction, so that rows stay in line
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: !spoken || !visible || !text
}
