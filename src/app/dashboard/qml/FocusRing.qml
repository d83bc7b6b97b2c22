import QtQuick

Rectangle {
    property int distance: 3

    anchors { fill: parent; margins: -distance }
    radius: (parent.radius ?? 0) + distance
    color: "transparent"
    border { width: 2; color: Theme.accentText }
}
