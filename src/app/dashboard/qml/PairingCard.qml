import QtQuick
import Brindlefox

Card {
    id: card

    required property PairingItem pairing
    property alias pairingCode: code.text

    Item {
        width: parent.width
        height: Math.max(56, addressTexts.implicitHeight + 18)
        Symbol {
            anchors { left: parent.left; leftMargin: 21; verticalCenter: parent.verticalCenter }
            name: "link"; size: 20; color: Theme.secondary
        }
        Column {
            id: addressTexts
            anchors { left: parent.left; leftMargin: Theme.indent; right: parent.right; rightMargin: 16; verticalCenter: parent.verticalCenter }
            spacing: 3
            Label { width: parent.width; text: Texts.serverAddress }
            TextEdit {
                id: address
                objectName: "serverAddress"
                width: parent.width
                text: card.pairing.address
                textFormat: TextEdit.PlainText
                readOnly: true
                selectByMouse: true
                activeFocusOnTab: true
                wrapMode: TextEdit.WrapAnywhere
                color: Theme.secondary
                selectionColor: Theme.accent
                selectedTextColor: Theme.accentInk
                font { family: Theme.family; pixelSize: Theme.small }
                KeyNavigation.priority: KeyNavigation.BeforeItem
                Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
                Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
                onActiveFocusChanged: if (!activeFocus) deselect()
                Accessible.role: Accessible.EditableText
                Accessible.readOnly: true
                Accessible.name: Texts.serverAddress
                Accessible.description: text
                FocusRing { visible: address.activeFocus; distance: 3; radius: 5 }
            }
        }
    }
    Separator { inset: Theme.indent }
    Item { // paired
        width: parent.width
        height: Math.max(58, bond.implicitHeight + 22)
        visible: card.pairing.isPaired
        Symbol {
            anchors { left: parent.left; leftMargin: 21; verticalCenter: parent.verticalCenter }
            name: "shield"; size: 20; color: Theme.good
        }
        Label {
            id: bond
            objectName: "onlyPaired"
            anchors { left: parent.left; leftMargin: Theme.indent; right: unpair.left; rightMargin: 12; verticalCenter: parent.verticalCenter }
            text: Texts.onlyPaired; wrapMode: Text.Wrap
            spoken: true
        }
        PushButton {
            id: unpair
            objectName: "unpair"
            anchors { right: parent.right; rightMargin: 16; verticalCenter: parent.verticalCenter }
            text: Texts.unpair
            busy: card.pairing.inProgress
            onClicked: card.pairing.unpair()
        }
    }
    Column { // not paired
        width: parent.width
        visible: !card.pairing.isPaired
        topPadding: 14; bottomPadding: 14
        spacing: 10
        Item {
            width: parent.width
            height: Math.max(20, warning.implicitHeight)
            Symbol {
                anchors { left: parent.left; leftMargin: 21; top: parent.top }
                name: "warning"; size: 20; color: Theme.warn
            }
            Label {
                id: warning
                objectName: "unpairedWarning"
                anchors { left: parent.left; leftMargin: Theme.indent; right: parent.right; rightMargin: 16; verticalCenter: parent.verticalCenter }
                text: Texts.unpairedWarning; wrapMode: Text.Wrap
                color: Theme.warn; font.weight: Font.Medium
                spoken: true
            }
        }
        Label { x: Theme.indent; width: parent.width - Theme.indent - 16; text: Texts.pairingCode }
        Item {
            width: parent.width
            height: code.height
            TextField {
                id: code
                objectName: "pairingCode"
                anchors { left: parent.left; leftMargin: Theme.indent; right: pair.left; rightMargin: 10 }
                bad: card.pairing.hasFailed
                readOnly: card.pairing.inProgress
                inputMethodHints: Qt.ImhNoPredictiveText | Qt.ImhPreferUppercase
                Accessible.name: Texts.pairingCode
                Accessible.description: Texts.codeHint
                onAccepted: card.pairing.pair(text)
            }
            PushButton {
                id: pair
                objectName: "pair"
                anchors { right: parent.right; rightMargin: 16; top: code.top; bottom: code.bottom }
                primary: true
                text: busy ? Texts.isPairing : Texts.pair
                busy: card.pairing.inProgress
                onClicked: card.pairing.pair(code.text)
            }
        }
        Label {
            objectName: "codeHint"
            x: Theme.indent; width: parent.width - Theme.indent - 16
            text: Texts.codeHint; wrapMode: Text.Wrap
            color: Theme.secondary; font.pixelSize: Theme.small
            spoken: true
        }
    }
    Separator { inset: Theme.indent; visible: message.visible }
    Label {
        id: message
        objectName: "pairingMessage"
        x: Theme.indent; width: parent.width - Theme.indent - 16
        visible: !!text
        topPadding: 11; bottomPadding: 12
        text: card.pairing.message; wrapMode: Text.Wrap
        color: card.pairing.hasFailed ? Theme.bad : Theme.secondary
        spoken: true
        Accessible.role: Accessible.AlertMessage
    }
    Connections {
        target: card.pairing
        function onPairingSucceeded() {
            code.clear()
            if (card.pairing.isPaired) address.forceActiveFocus(Qt.TabFocusReason)
        }
        function onPairingFailed() {
            code.forceActiveFocus(Qt.TabFocusReason)
            code.selectAll()
        }
    }
}
