import QtQuick
import Brindlefox

Item {
    id: header

    required property PairingItem pairing

    implicitHeight: Math.max(86, texts.implicitHeight + 34)

    Symbol {
        id: icon
        anchors { left: parent.left; leftMargin: Theme.pad; verticalCenter: parent.verticalCenter }
        name: "app"; size: 50
    }
    Column {
        id: texts
        anchors { left: icon.right; leftMargin: 14; right: state.left; rightMargin: 12; verticalCenter: parent.verticalCenter }
        spacing: 3
        Heading {
            objectName: "product"
            width: parent.width; text: Texts.product
            font { pixelSize: Theme.headline; letterSpacing: -0.2 }
        }
        Label { objectName: "purpose"; width: parent.width; text: Texts.purpose; color: Theme.secondary; wrapMode: Text.Wrap; spoken: true }
    }
    Rectangle {
        id: state
        objectName: "pairingState"
        anchors { right: parent.right; rightMargin: Theme.pad; verticalCenter: parent.verticalCenter }
        width: pill.implicitWidth + 24; height: Math.max(28, pill.implicitHeight + 12); radius: height / 2
        color: Theme.fill
        Accessible.role: Accessible.StaticText
        Accessible.name: pill.text
        StatusPill {
            id: pill
            anchors.centerIn: parent
            text: header.pairing.isPaired ? Texts.paired : Texts.unpaired
            color: header.pairing.isPaired ? Theme.good : Theme.warn
        }
    }
}
