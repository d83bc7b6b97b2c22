import QtQuick

Row {
    id: pill

    property alias text: label.text
    property color color: Theme.good

    spacing: 6
    Rectangle { width: 7; height: 7; radius: 3.5; color: pill.color; anchors.verticalCenter: parent.verticalCenter }
    Label { id: label; color: Theme.secondary; font.pixelSize: Theme.small; anchors.verticalCenter: parent.verticalCenter }
}
