import QtQuick
import Brindlefox

// The folders that the agent may work in.
Column {
    id: section

    required property FolderList folders

    Separator { inset: Theme.indent }
    SectionHead {
        width: parent.width
        title: Texts.authorizedFolders
    }
    Label {
        objectName: "none.folder"
        x: Theme.indent; width: parent.width - Theme.indent - 16
        visible: section.folders.count === 0
        bottomPadding: 10
        text: Texts.noFolders
        color: Theme.secondary
        spoken: true
    }
    Repeater {
        model: section.folders
        Item {
            id: row

            required property string identifier
            required property string name
            required property string path
            required property bool readOnly

            objectName: "folder." + identifier
            width: section.width
            implicitHeight: Math.max(50, texts.implicitHeight + 14)
            Accessible.role: Accessible.ListItem
            Accessible.name: name
            Accessible.description: readOnly ? path + ", " + Texts.readOnly : path

            Symbol {
                anchors { left: parent.left; leftMargin: Theme.indent; verticalCenter: parent.verticalCenter }
                name: "folder"; size: 20; color: Theme.secondary
            }
            Column {
                id: texts
                anchors { left: parent.left; leftMargin: Theme.indent + 32; right: side.left; rightMargin: 12; verticalCenter: parent.verticalCenter }
                spacing: 2
                Label { width: parent.width; text: row.name }
                Label { width: parent.width; text: row.path; elide: Text.ElideMiddle; color: Theme.secondary; font.pixelSize: Theme.small }
            }
            Row {
                id: side
                anchors { right: parent.right; rightMargin: 16; verticalCenter: parent.verticalCenter }
                spacing: 10
                Rectangle {
                    objectName: "readOnly." + row.identifier
                    anchors.verticalCenter: parent.verticalCenter
                    visible: row.readOnly
                    width: mark.implicitWidth + 16; height: mark.implicitHeight + 6; radius: height / 2
                    color: Theme.fill
                    Label { id: mark; anchors.centerIn: parent; text: Texts.readOnly; font { pixelSize: Theme.small; weight: Font.Medium } }
                }
                PushButton {
                    objectName: "remove." + row.identifier
                    text: Texts.remove
                    Accessible.name: Texts.forWhat(text, row.name)
                    onClicked: section.folders.remove(row.identifier)
                }
            }
        }
    }
    Item {
        width: parent.width; height: add.height + 8
        PushButton {
            id: add
            objectName: "addFolder"
            anchors { left: parent.left; leftMargin: Theme.indent; verticalCenter: parent.verticalCenter }
            symbol: "plus"
            text: Texts.addFolder
            busy: section.folders.isChoosing
            onClicked: section.folders.add()
        }
    }
    Note { text: Texts.foldersNote }
}
