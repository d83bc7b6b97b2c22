import QtQuick

// A quiet line below what it is about.
Label {
    x: Theme.indent; width: parent.width - Theme.indent - 16
    topPadding: 4; bottomPadding: 12
    wrapMode: Text.Wrap
    color: Theme.secondary
    font.pixelSize: Theme.small
    spoken: true
}
