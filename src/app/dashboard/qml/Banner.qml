import QtQuick

// Something went wrong: what, and a way on.
Rectangle {
    id: banner

    property string text
    property string detail
    property color ink: Theme.bad
    property alias button: again
    signal tryAgain()

    implicitHeight: visible ? Math.max(texts.implicitHeight + 20, again.implicitHeight + 12) : 0
    radius: 9
    color: Theme.badFill

    Symbol {
        anchors { left: parent.left; leftMargin: 12; verticalCenter: parent.verticalCenter }
        name: "warning"; size: 18; color: banner.ink
    }
    Column {
        id: texts
        anchors { left: parent.left; leftMargin: 40; right: again.visible ? again.left : parent.right; rightMargin: 12; verticalCenter: parent.verticalCenter }
        spacing: 2
        Label {
            width: parent.width; text: banner.text; wrapMode: Text.Wrap; maximumLineCount: 6
            color: banner.ink; font.weight: Font.Medium
            spoken: true
            Accessible.role: Accessible.AlertMessage
        }
        Label {
            width: parent.width; visible: !!text; text: banner.detail; wrapMode: Text.Wrap; maximumLineCount: 3
            color: banner.ink; font.pixelSize: Theme.small
            spoken: true
        }
    }
    PushButton {
        id: again
        anchors { right: parent.right; rightMargin: 8; verticalCenter: parent.verticalCenter }
        text: Texts.tryAgain
        onClicked: banner.tryAgain()
    }
}
