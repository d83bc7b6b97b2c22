import QtQuick
import QtQuick.Templates as T
import Brindlefox

// One group: its line, and below that what is inside when it is open.
Column {
    id: row

    required property Panel panel
    required property GroupItem group
    required property Viewport viewport
    property bool expanded: false
    property bool first: false
    property bool last: false
    signal toggled()
    signal moved(int step)

    readonly property alias head: head
    readonly property string stateLabel: Texts.permissionState(group.permission)
    readonly property string permission: {
        const name = Texts.permissionName(group.key)
        return stateLabel && name ? name + ": " + stateLabel : stateLabel
    }

    Item {
        width: parent.width
        height: Math.max(56, texts.implicitHeight + 18)

        T.Button {
            id: head
            objectName: "group." + row.group.key
            anchors.fill: parent
            text: row.group.title
            Accessible.name: text
            Accessible.description: [summary.text, row.permission, row.expanded ? Texts.expanded : Texts.collapsed].filter(part => part).join(", ")
            Accessible.onPressAction: clicked()
            onClicked: row.toggled()
            Keys.onReturnPressed: clicked()
            Keys.onEnterPressed: clicked()
            Keys.onRightPressed: if (row.expanded === mirrored) clicked()
            Keys.onLeftPressed: if (row.expanded !== mirrored) clicked()
            Keys.onUpPressed: row.moved(-1)
            Keys.onDownPressed: row.moved(1)
            background: Rectangle {
                radius: row.first || (row.last && !row.expanded) ? Theme.radius - 1 : 0
                color: head.down ? Theme.fill : head.hovered ? Theme.rowHover : "transparent"
                FocusRing { visible: head.visualFocus; distance: -3; radius: 9 }
            }
        }
        Rectangle {
            id: tile
            anchors { left: parent.left; leftMargin: 14; verticalCenter: parent.verticalCenter }
            width: 34; height: 34; radius: 9
            color: Theme.tint(row.group.key)
            Symbol { anchors.centerIn: parent; name: Theme.symbol(row.group.key); size: 20; color: "#ffffff" }
        }
        Column {
            id: texts
            anchors { left: parent.left; leftMargin: Theme.indent; right: side.left; rightMargin: 10; verticalCenter: parent.verticalCenter }
            spacing: 3
            Label { width: parent.width; text: row.group.title; font { pixelSize: Theme.title; weight: Font.Medium } }
            Label {
                id: summary
                objectName: "count." + row.group.key
                width: parent.width
                text: Texts.capabilitiesEnabled(row.group.enabledCount, row.group.total)
                color: Theme.secondary
                font.pixelSize: Theme.small
            }
        }
        Row {
            id: side
            anchors { right: parent.right; rightMargin: 14; verticalCenter: parent.verticalCenter }
            spacing: 10
            StatusPill {
                objectName: "permission." + row.group.key
                anchors.verticalCenter: parent.verticalCenter
                visible: !!text
                text: row.permission
                color: row.group.permission === "fullAccess" ? Theme.good
                     : row.group.permission === "denied" || row.group.permission === "restricted" ? Theme.bad : Theme.warn
            }
            PushButton {
                objectName: "access." + row.group.key
                anchors.verticalCenter: parent.verticalCenter
                visible: row.group.access !== GroupItem.NoAction
                primary: row.group.access === GroupItem.GrantAccess
                text: primary ? Texts.grantAccess : Texts.openSettings
                busy: row.group.accessUnderWay
                Accessible.name: Texts.forWhat(text, row.group.title)
                onClicked: row.group.getAccess()
            }
            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: "chevron"; size: 16; color: Theme.secondary
                rotation: row.expanded ? 90 : head.mirrored ? 180 : 0
                Behavior on rotation { enabled: Theme.slow > 0; NumberAnimation { duration: Theme.slow; easing.type: Easing.OutCubic } }
            }
        }
    }
    Item {
        id: clipper
        width: parent.width
        clip: true
        height: row.expanded ? detail.height : 0
        visible: height > 0
        Behavior on height { enabled: Theme.slow > 0 && !settled.running; NumberAnimation { id: settled; duration: Theme.slow; easing.type: Easing.OutCubic } }
        Loader {
            id: detail
            width: parent.width
            active: row.expanded || clipper.height > 0
            sourceComponent: GroupDetail { panel: row.panel; group: row.group; viewport: row.viewport; last: row.last }
        }
    }
}
