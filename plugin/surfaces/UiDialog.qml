import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import QtQuick.Templates as T

// Asks or tells something above a surface, and takes all touches meanwhile. What stands in it comes between the words
// and the buttons; without `reject` there is nothing to refuse. `show` replaces the words.
Popup {
    id: dialog

    property string title
    property string words
    property string accept: "OK"
    property string reject
    property bool acceptable: true
    default property alias content: middle.data

    signal accepted()
    signal rejected()

    function show(text) {
        words = text
        open()
    }

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(480, (parent ? parent.width : 480) - 32)
    modal: true
    focus: true
    padding: 20
    closePolicy: Popup.NoAutoClose

    background: Rectangle {
        radius: 10
        color: "#ffffff"
        border.color: "#b8bec4"
    }
    T.Overlay.modal: Rectangle { color: "#60202a33" }

    ColumnLayout {
        width: dialog.availableWidth
        spacing: 14

        Text {
            Layout.fillWidth: true
            visible: text.length > 0
            text: dialog.title
            color: "#202a33"
            font { pixelSize: 20; bold: true }
            wrapMode: Text.Wrap
        }
        Text {
            objectName: "words"
            Layout.fillWidth: true
            visible: text.length > 0
            text: dialog.words
            color: "#202a33"
            font.pixelSize: 16
            wrapMode: Text.Wrap
            textFormat: Text.PlainText
        }
        ColumnLayout {
            id: middle
            Layout.fillWidth: true
            spacing: 10
            visible: children.length > 0
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: 10
            Item { Layout.fillWidth: true }
            UiButton {
                objectName: "reject"
                text: dialog.reject
                visible: text.length > 0
                Layout.minimumWidth: 96
                onClicked: {
                    dialog.close()
                    dialog.rejected()
                }
            }
            UiButton {
                objectName: "accept"
                text: dialog.accept
                highlighted: true
                enabled: dialog.acceptable
                Layout.minimumWidth: 96
                onClicked: {
                    dialog.close()
                    dialog.accepted()
                }
            }
        }
    }
}
