import QtQuick
import Brindlefox

// Which calendars, or lists, the group's capabilities apply to.
Column {
    id: section

    required property ResourceList resources
    required property Viewport viewport
    required property string title
    required property string note
    required property string kind // "calendar" or "list"

    Separator { inset: Theme.indent }
    SectionHead {
        width: parent.width
        title: section.title
        LinkButton {
            objectName: "selectAll." + section.kind
            text: Texts.selectAll
            enabled: !section.resources.isBusy && section.resources.authorizedCount < section.resources.count
            Accessible.name: Texts.forWhat(text, section.title)
            onClicked: section.resources.selectAll()
        }
        LinkButton {
            objectName: "selectNone." + section.kind
            text: Texts.selectNone
            enabled: !section.resources.isBusy && section.resources.authorizedCount > 0
            Accessible.name: Texts.forWhat(text, section.title)
            onClicked: section.resources.selectNone()
        }
    }
    Label {
        objectName: "none." + section.kind
        x: Theme.indent; width: parent.width - Theme.indent - 16
        bottomPadding: 8
        visible: section.resources.count === 0
        text: Texts.noneAvailable(section.kind)
        color: Theme.secondary
        wrapMode: Text.Wrap
        spoken: true
    }
    ResourceRows {
        objectName: "resources." + section.kind
        width: parent.width
        visible: section.resources.count > 0
        resources: section.resources
        viewport: section.viewport
        Accessible.name: section.title
    }
    Note { text: section.note }
}
