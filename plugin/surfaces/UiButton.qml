import QtQuick
import QtQuick.Controls.Basic

// A button for a finger: at least 44 pixels each way. Highlighted it is what the surface is for, or switched on.
AbstractButton {
    id: button

    property bool highlighted: false
    property color accent: "#1769aa"
    // What it does, where its text is a sign.
    property string what
    // In place of the text: "pause", "resume" or "cancel".
    property string sign
    readonly property color ink: highlighted ? "#ffffff" : "#202a33"

    implicitWidth: sign ? 44 : Math.max(44, label.implicitWidth + 24)
    implicitHeight: 44
    focusPolicy: Qt.NoFocus
    opacity: enabled ? 1 : 0.4
    Accessible.name: what || text

    background: Rectangle {
        radius: 6
        color: button.highlighted ? (button.down ? Qt.darker(button.accent, 1.2) : button.accent)
             : button.down || button.checked ? "#cfdbe6" : "#ffffff"
        border.color: button.highlighted ? button.accent : button.checked ? button.accent : "#b8bec4"
    }
    contentItem: Text {
        id: label
        text: button.sign ? "" : button.text
        color: button.ink
        font.pixelSize: 16
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight

        Row {
            anchors.centerIn: parent
            visible: button.sign === "pause"
            spacing: 5
            Repeater {
                model: 2
                Rectangle { width: 5; height: 18; color: button.ink }
            }
        }
        // A triangle, of columns.
        Row {
            anchors.centerIn: parent
            visible: button.sign === "resume"
            Repeater {
                model: 9
                Rectangle {
                    required property int index
                    anchors.verticalCenter: parent.verticalCenter
                    width: 2
                    height: 18 - 2 * index
                    color: button.ink
                }
            }
        }
        Repeater {
            model: button.sign === "cancel" ? [45, -45] : []
            Rectangle {
                required property int modelData
                anchors.centerIn: parent
                width: 4
                height: 22
                radius: 2
                rotation: modelData
                antialiasing: true
                color: button.ink
            }
        }
    }
}
