import QtQuick

// A heading inside a group, with buttons at its end.
Item {
    id: head

    property alias title: label.text
    default property alias buttons: row.data

    implicitHeight: Math.max(42, label.implicitHeight + 16)

    Heading {
        id: label
        anchors { left: parent.left; leftMargin: Theme.indent; right: row.left; rightMargin: 8; verticalCenter: parent.verticalCenter }
    }
    Row {
        id: row
        anchors { right: parent.right; rightMargin: 10; verticalCenter: parent.verticalCenter }
    }
}
