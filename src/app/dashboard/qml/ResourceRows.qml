import QtQuick
import Brindlefox

// Calendars or lists, each with a check box. However many there are, only those in sight exist: the list stands where
// the viewport is, and goes along. One stop for Tab; arrows go from row to row.
FocusScope {
    id: list

    required property ResourceList resources
    required property Viewport viewport
    property int current: 0

    implicitHeight: resources.count * Theme.row
    activeFocusOnTab: resources.count > 0
    Accessible.role: Accessible.List
    Accessible.ignored: !visible

    function place() {
        const above = list.mapFromItem(viewport, 0, 0).y // what of this is hidden above the viewport
        const y = Math.max(0, Math.min(list.height - rows.height, Math.floor(above / Theme.row - 1) * Theme.row))
        rows.y = y
        rows.contentY = y
    }
    function go(row) {
        current = Math.max(0, Math.min(resources.count - 1, row))
        viewport.reveal(list, current * Theme.row, Theme.row)
        place()
        rows.forceLayout()
        const item = rows.itemAtIndex(current)
        if (item) item.forceActiveFocus(Qt.TabFocusReason)
    }
    function leave(forward) {
        let next = list.nextItemInFocusChain(forward)
        while (next !== list && isInside(next)) next = next.nextItemInFocusChain(forward)
        next.forceActiveFocus(forward ? Qt.TabFocusReason : Qt.BacktabFocusReason)
    }
    function isInside(item) {
        for (let each = item; each; each = each.parent) if (each === list) return true
        return false
    }

    // A click is in sight already, and must not find another row below it at the end.
    function comeIntoSight() {
        const item = rows.itemAtIndex(current)
        if (activeFocus && !(item && item.focusReason === Qt.MouseFocusReason)) viewport.reveal(list, current * Theme.row, Theme.row)
    }

    onActiveFocusChanged: if (activeFocus) Qt.callLater(comeIntoSight)
    onHeightChanged: place()
    Keys.onUpPressed: go(current - 1)
    Keys.onDownPressed: go(current + 1)
    Keys.onPressed: event => {
        const page = Math.max(1, Math.floor(viewport.height / Theme.row) - 1)
        const step = {[Qt.Key_PageUp]: -page, [Qt.Key_PageDown]: page, [Qt.Key_Home]: -current,
                      [Qt.Key_End]: resources.count}[event.key]
        if (step !== undefined) go(current + step)
        event.accepted = step !== undefined
    }
    Keys.onTabPressed: leave(true)
    Keys.onBacktabPressed: leave(false)

    Connections {
        target: list.viewport
        function onContentYChanged() { list.place() }
        function onContentHeightChanged() { list.place() }
        function onHeightChanged() { list.place() }
    }
    Component.onCompleted: place()

    ListView {
        id: rows

        readonly property real tallest: Math.ceil(list.viewport.height / Theme.row + 2) * Theme.row

        width: parent.width
        height: Math.min(list.height, tallest)
        focus: true
        currentIndex: -1 // ours is the list's
        interactive: false
        model: list.resources
        delegate: CheckRow {
            required property int index
            required property string identifier
            required property string title
            required property string account
            required property bool authorized

            objectName: "pick." + identifier
            width: ListView.view.width
            text: title
            detail: account
            on: authorized
            focusPolicy: Qt.NoFocus // the list is the stop
            Component.onCompleted: focus = Qt.binding(() => index === list.current)
            onPressed: { list.current = index; list.forceActiveFocus(Qt.MouseFocusReason) }
            onSwitched: on => list.resources.setAuthorized(identifier, on)
        }
    }
}
