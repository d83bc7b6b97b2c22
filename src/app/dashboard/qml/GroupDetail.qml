import QtQuick
import Brindlefox

// What an open group shows.
Rectangle {
    id: detail

    required property Panel panel
    required property GroupItem group
    required property Viewport viewport
    property bool last: false

    color: Theme.well
    radius: last ? Theme.radius - 1 : 0
    implicitHeight: column.implicitHeight + 6

    Rectangle { width: parent.width; height: parent.radius; color: parent.color }
    Rectangle { width: parent.width; height: 1; color: Theme.line }
    Column {
        id: column
        width: parent.width
        SectionHead {
            width: parent.width
            title: Texts.allowedActions
            LinkButton {
                objectName: "enableAll." + detail.group.key
                text: Texts.enableAll
                enabled: detail.group.enabledCount < detail.group.total
                Accessible.name: Texts.forWhat(text, detail.group.title)
                onClicked: detail.group.enableAll()
            }
            LinkButton {
                objectName: "disableAll." + detail.group.key
                text: Texts.disableAll
                enabled: detail.group.enabledCount > 0
                Accessible.name: Texts.forWhat(text, detail.group.title)
                onClicked: detail.group.disableAll()
            }
        }
        Repeater {
            model: detail.group.sections
            Column {
                id: section

                required property SectionItem modelData

                width: column.width
                Separator { inset: Theme.indent }
                Heading {
                    x: Theme.indent; width: parent.width - Theme.indent - 16
                    topPadding: 12; bottomPadding: 4
                    text: section.modelData.title
                    color: Theme.secondary
                    font.pixelSize: Theme.small
                }
                Repeater {
                    model: section.modelData.capabilities
                    ToggleRow {
                        required property CapabilityItem modelData

                        objectName: "capability." + modelData.key
                        width: section.width
                        text: modelData.title
                        on: modelData.enabled
                        onSwitched: on => modelData.setEnabled(on)
                    }
                }
                Item { width: 1; height: 6 }
            }
        }
        Loader {
            width: parent.width
            active: detail.group.key === "calendar" || detail.group.key === "reminders"
            visible: active
            sourceComponent: ResourceSection {
                readonly property bool isCalendars: detail.group.key === "calendar"

                resources: isCalendars ? detail.panel.calendars : detail.panel.reminderLists
                viewport: detail.viewport
                title: isCalendars ? Texts.authorizedCalendars : Texts.authorizedLists
                note: isCalendars ? Texts.calendarsNote : Texts.listsNote
                kind: isCalendars ? "calendar" : "list"
            }
        }
        Loader {
            width: parent.width
            active: detail.group.key === "files"
            visible: active
            sourceComponent: FolderSection { folders: detail.panel.folders }
        }
        Separator { inset: Theme.indent; visible: served.visible }
        Note {
            id: served
            objectName: "servedBy." + detail.group.key
            visible: !!text
            topPadding: 10
            text: detail.group.servedBy
        }
    }
}
