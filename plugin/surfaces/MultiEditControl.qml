import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import TCPrintEngine

// Changes all fields that are selected at once: brings them into line, spreads them, sets their font and size.
Flickable {
    id: control

    readonly property QtObject editor: TQTWSProcessorInterface.editor
    readonly property int count: editor.selection.length

    implicitWidth: 290
    objectName: "panel"
    contentHeight: column.implicitHeight + 20
    contentWidth: width
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}

    component Side: UiButton {
        property string side
        objectName: side
        Layout.fillWidth: true
        Layout.preferredWidth: 60
        enabled: control.count > 1
        onClicked: control.editor.align(side)
    }
    component Heading: Text {
        Layout.columnSpan: 3
        color: "#58656f"
        font.pixelSize: 15
    }

    ColumnLayout {
        id: column
        x: 10
        y: 10
        width: control.width - 20
        spacing: 8

        Text {
            objectName: "count"
            Layout.fillWidth: true
            text: control.count === 0 ? "Touch the fields to change together" : control.count + (control.count === 1 ? " field" : " fields")
            color: "#202a33"
            font { pixelSize: 18; bold: true }
            wrapMode: Text.Wrap
        }
        RowLayout {
            Layout.fillWidth: true
            UiButton { objectName: "all"; Layout.fillWidth: true; text: "All"; onClicked: control.editor.selectAll() }
            UiButton { objectName: "none"; Layout.fillWidth: true; text: "None"; onClicked: control.editor.selectNone() }
            UiButton {
                objectName: "remove"
                Layout.fillWidth: true
                text: "Delete"
                enabled: control.count > 0
                onClicked: control.editor.remove()
            }
        }
        GridLayout {
            Layout.fillWidth: true
            columns: 3
            rowSpacing: 4
            columnSpacing: 4
            Heading { text: "Line up" }
            Side { side: "left"; text: "Left" }
            Side { side: "across"; text: "Centre" }
            Side { side: "right"; text: "Right" }
            Side { side: "top"; text: "Top" }
            Side { side: "down"; text: "Middle" }
            Side { side: "bottom"; text: "Bottom" }
            Heading { text: "Same gaps" }
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: 4
            UiButton {
                objectName: "spreadAcross"
                Layout.fillWidth: true
                text: "Across"
                enabled: control.count > 2
                onClicked: control.editor.distribute(true)
            }
            UiButton {
                objectName: "spreadDown"
                Layout.fillWidth: true
                text: "Down"
                enabled: control.count > 2
                onClicked: control.editor.distribute(false)
            }
        }
        EditorFont { Layout.fillWidth: true }
        EditorPad { Layout.fillWidth: true; enabled: control.count > 0 }
    }
}
