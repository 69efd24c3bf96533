import QtQuick

// A sign for what a button leads to, drawn of boxes: a label, and what is done with it.
Item {
    id: sign

    property string sign
    readonly property color ink: "#1769aa"

    implicitWidth: 84
    implicitHeight: 96

    component Line: Rectangle {
        color: sign.ink
        radius: 2
        height: 6
    }

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: "#ffffff"
        border { color: sign.ink; width: 4 }
    }
    Row {
        visible: sign.sign === "Preview"
        x: 16
        y: 18
        spacing: 4
        Repeater {
            model: [6, 3, 3, 6, 3, 6, 3]
            Rectangle {
                required property int modelData
                width: modelData
                height: 34
                color: sign.ink
            }
        }
    }
    Column {
        visible: sign.sign === "Preview"
        x: 16
        y: 62
        spacing: 7
        Line { width: 52 }
        Line { width: 34 }
    }
    Column {
        visible: sign.sign === "Templates"
        x: 16
        y: 20
        spacing: 8
        Line { width: 30 }
        Rectangle { width: 52; height: 16; radius: 3; color: "#d3e4f1"; border.color: sign.ink }
        Line { width: 30 }
        Rectangle { width: 52; height: 16; radius: 3; color: "#d3e4f1"; border.color: sign.ink }
    }
    Item {
        visible: sign.sign === "Editor"
        anchors.fill: parent
        Line { x: 16; y: 20; width: 52 }
        Rectangle {
            x: 20
            y: 38
            width: 44
            height: 34
            color: "#d3e4f1"
            border.color: sign.ink
        }
        Repeater {
            model: [Qt.point(20, 38), Qt.point(64, 38), Qt.point(20, 72), Qt.point(64, 72)]
            Rectangle {
                required property point modelData
                x: modelData.x - 5
                y: modelData.y - 5
                width: 10
                height: 10
                color: sign.ink
            }
        }
    }
}
