import QtQuick
import QtQuick.Window
import Brindlefox

// The one window: header, everything that scrolls, footer, and above it all a question to the user.
Window {
    id: dashboard

    required property Panel panel
    required property Appearance appearance
    property bool rounded: false
    property bool shown: false // set by who shows the window: `visible` does not tell of every time
    property string expandedGroup
    property alias pairingCode: pairingCard.pairingCode
    readonly property int corner: rounded ? 14 : 0
    signal quitRequested()
    signal dismissed()

    objectName: "dashboard"
    width: 640; height: 780
    title: Texts.product
    flags: Qt.Tool | Qt.FramelessWindowHint | Qt.WindowStaysOnTopHint | Qt.NoDropShadowWindowHint
    color: rounded ? "transparent" : Theme.window
    LayoutMirroring.enabled: Qt.application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true
    onShownChanged: {
        appearing.complete()
        content.opacity = shown && Theme.fast > 0 ? 0 : 1
    }
    // Not before: until the window has its first frame most of the time would be over.
    onFrameSwapped: if (content.opacity === 0 && !appearing.running) appearing.start()
    onActiveFocusItemChanged: {
        if (!panel.consent.service) content.hadFocus = activeFocusItem
        // What is clicked is in sight, and must stay below the pointer.
        if (!activeFocusItem || activeFocusItem.visualFocus === false) return
        for (let each = activeFocusItem; each; each = each.parent)
            if (each === body) return view.reveal(activeFocusItem, 0, activeFocusItem.height)
    }

    Binding { target: Theme; property: "dark"; value: dashboard.appearance.isDark }
    Binding { target: Theme; property: "highContrast"; value: dashboard.appearance.isHighContrast }
    Binding { target: Theme; property: "reduceMotion"; value: dashboard.appearance.isMotionReduced }
    Binding { target: Theme; property: "textScale"; value: dashboard.appearance.textScale }
    Binding { target: Theme; property: "accent"; value: dashboard.appearance.accent }
    Binding { target: Theme; property: "accentText"; value: dashboard.appearance.accentText }

    ParallelAnimation {
        id: appearing
        NumberAnimation { target: content; property: "opacity"; from: 0; to: 1; duration: Theme.fast }
        NumberAnimation { target: shift; property: "y"; from: -4; to: 0; duration: Theme.fast; easing.type: Easing.OutCubic }
    }

    Rectangle {
        id: content
        objectName: "content"

        property Item hadFocus: null // before the question
        function takeFocusBack() { if (hadFocus) hadFocus.forceActiveFocus(Qt.TabFocusReason) }

        anchors.fill: parent
        radius: dashboard.corner
        color: Theme.window
        focus: true
        enabled: !consent.visible
        transform: Translate { id: shift }
        Keys.onEscapePressed: dashboard.dismissed()

        Header {
            id: header
            width: parent.width
            pairing: dashboard.panel.pairing
        }
        Banner {
            id: server
            objectName: "serverFailure"
            anchors { left: parent.left; right: parent.right; top: header.bottom; leftMargin: Theme.pad; rightMargin: Theme.pad }
            visible: !!dashboard.panel.serverFailure
            text: Texts.notListening
            detail: dashboard.panel.serverFailure
            button.objectName: "startServer"
            onTryAgain: dashboard.panel.startServer()
        }
        Viewport {
            id: view
            objectName: "viewport"
            anchors { top: server.visible ? server.bottom : header.bottom; topMargin: server.visible ? 12 : 0
                      left: parent.left; right: parent.right; bottom: footer.top }
            contentHeight: body.implicitHeight + 24

            Column {
                id: body
                x: Theme.pad
                width: view.width - 2 * Theme.pad
                spacing: 8

                Heading { x: 2; text: Texts.agentPermissions; bottomPadding: 1 }
                Card {
                    width: parent.width
                    Repeater {
                        id: groups
                        model: dashboard.panel.groups
                        Column {
                            id: cell

                            required property GroupItem modelData
                            required property int index
                            readonly property alias row: row

                            width: parent.width
                            onYChanged: if (view.held === row) view.keepHeld()
                            Separator {
                                visible: cell.index > 0
                                inset: cell.index > 0 && dashboard.expandedGroup === dashboard.panel.groups[cell.index - 1].key ? 0 : Theme.indent
                            }
                            GroupRow {
                                id: row
                                width: parent.width
                                panel: dashboard.panel
                                group: cell.modelData
                                viewport: view
                                first: cell.index === 0
                                last: cell.index === groups.count - 1
                                expanded: dashboard.expandedGroup === group.key
                                onToggled: {
                                    view.hold(row)
                                    dashboard.expandedGroup = expanded ? "" : group.key
                                }
                                onMoved: step => {
                                    const next = groups.itemAt(cell.index + step)
                                    if (next) next.row.head.forceActiveFocus(Qt.TabFocusReason)
                                }
                            }
                        }
                    }
                }
                Item { width: 1; height: 8 }
                Heading { x: 2; text: Texts.launchAtLogin; bottomPadding: 1 }
                LoginCard { width: parent.width; login: dashboard.panel.login }
                Item { width: 1; height: 8 }
                Heading { x: 2; text: Texts.pairing; bottomPadding: 1 }
                PairingCard { id: pairingCard; width: parent.width; pairing: dashboard.panel.pairing }
            }
        }
        Rectangle {
            anchors.top: view.top
            width: parent.width; height: 1
            color: Theme.line
            visible: view.contentY > 2
        }
        Footer {
            id: footer
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
            panel: dashboard.panel
            corner: dashboard.corner
            onQuit: dashboard.quitRequested()
        }
    }
    ConsentDialog {
        id: consent
        anchors.fill: parent
        consent: dashboard.panel.consent
        onVisibleChanged: if (!visible) Qt.callLater(content.takeFocusBack)
    }
    Rectangle {
        anchors.fill: parent
        opacity: content.opacity
        radius: dashboard.corner
        color: "transparent"
        border { width: 1; color: Theme.frame }
    }
}
