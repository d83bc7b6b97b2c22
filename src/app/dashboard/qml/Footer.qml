import QtQuick
import Brindlefox

// What concerns everything, and what went wrong; always in sight.
Item {
    id: footer

    required property Panel panel
    property int corner: 0
    signal quit()

    implicitHeight: buttons.height + 28 + (error.visible ? error.height + 10 : 0)

    Rectangle { anchors.fill: parent; color: Theme.bar; radius: footer.corner }
    Rectangle { width: parent.width; height: footer.corner; color: Theme.bar }
    Rectangle { width: parent.width; height: 1; color: Theme.line }
    Item {
        id: buttons
        anchors { left: parent.left; right: parent.right; top: parent.top; topMargin: 14 + (error.visible ? error.height + 10 : 0) }
        height: quit.implicitHeight
        Row {
            anchors { left: parent.left; leftMargin: Theme.pad }
            spacing: 8
            PushButton {
                objectName: "refresh"
                symbol: "refresh"
                text: Texts.refresh
                busy: footer.panel.isRefreshing
                onClicked: footer.panel.refresh()
            }
            PushButton {
                objectName: "privacySettings"
                symbol: "shield"
                text: Texts.privacySettings
                onClicked: footer.panel.openPrivacySettings()
            }
        }
        PushButton {
            id: quit
            objectName: "quit"
            anchors { right: parent.right; rightMargin: Theme.pad }
            symbol: "power"
            text: Texts.quit
            onClicked: footer.quit()
        }
    }
    Banner {
        id: error
        objectName: "lastError"
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.pad; topMargin: 12 }
        visible: !!footer.panel.lastError
        text: footer.panel.lastError
        button.objectName: "tryAgain"
        onTryAgain: footer.panel.tryAgain()
    }
}
