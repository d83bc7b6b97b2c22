import QtQuick
import QtQuick.Templates as T

// The part of the dashboard that scrolls.
Flickable {
    id: viewport

    property Item held: null // stays where it is in the window while what is above it changes its height
    property real heldAt: 0

    clip: true
    boundsBehavior: Flickable.StopAtBounds
    flickableDirection: Flickable.VerticalFlick

    function limited(y) { return Math.max(0, Math.min(contentHeight - height, y)) }
    // Scrolls as little as possible until this part of the item is in sight.
    function reveal(item, from, length) {
        held = null
        const top = item.mapToItem(contentItem, 0, from).y - 12
        const bottom = top + length + 28
        if (top < contentY) contentY = limited(top)
        else if (bottom > contentY + height) contentY = limited(Math.min(top, bottom - height))
    }
    function hold(item) {
        held = item
        heldAt = item.mapToItem(viewport, 0, 0).y
        release.restart()
    }
    function keepHeld() { if (held) contentY = limited(held.mapToItem(contentItem, 0, 0).y - heldAt) }

    onContentHeightChanged: keepHeld()
    onMovementStarted: held = null
    Timer { id: release; interval: Theme.slow + 100; onTriggered: viewport.held = null }

    T.ScrollBar.vertical: T.ScrollBar {
        id: bar
        anchors { right: parent.right; top: parent.top; bottom: parent.bottom }
        width: 10; padding: 2
        visible: size < 1
        Accessible.ignored: true
        contentItem: Rectangle {
            implicitWidth: 6; radius: 3
            color: Theme.edge
            opacity: bar.active || bar.hovered ? 0.8 : 0
            Behavior on opacity { enabled: Theme.fast > 0; NumberAnimation { duration: 250 } }
        }
    }
}
