import QtQuick

Rectangle {
    default property alias content: column.data

    implicitHeight: column.implicitHeight + 2
    radius: Theme.radius
    color: Theme.card
    border { width: 1; color: Theme.outline }

    Column { id: column; x: 1; y: 1; width: parent.width - 2 }
}
