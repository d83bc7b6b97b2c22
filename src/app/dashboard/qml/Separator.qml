import QtQuick

Rectangle {
    property int inset: 16

    anchors { left: parent.left; leftMargin: inset; right: parent.right }
    height: 1
    color: Theme.line
}
