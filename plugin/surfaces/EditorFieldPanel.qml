import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import TCPrintEngine

// All that can be changed of the one field that is selected.
Flickable {
    id: panel

    readonly property QtObject editor: TQTWSProcessorInterface.editor
    readonly property var field: editor.field

    objectName: "panel"
    contentHeight: column.implicitHeight + 20
    contentWidth: width
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}

    component Number: EditorNumber {
        property string what: objectName
        Layout.fillWidth: true
        visible: panel.field[what] !== undefined
        value: panel.field[what] ?? 0
        onEdited: value => panel.editor.change(what, value)
    }

    ColumnLayout {
        id: column
        x: 10
        y: 10
        width: panel.width - 20
        spacing: 8

        RowLayout {
            Layout.fillWidth: true
            UiButton { objectName: "before"; text: "\u2039"; what: "field before"; onClicked: panel.editor.selectBeside(-1) }
            Text {
                objectName: "kind"
                Layout.fillWidth: true
                text: panel.field.kind ?? ""
                color: "#202a33"
                font { pixelSize: 18; bold: true }
                horizontalAlignment: Text.AlignHCenter
                elide: Text.ElideRight
            }
            UiButton { objectName: "behind"; text: "\u203A"; what: "next field"; onClicked: panel.editor.selectBeside(1) }
        }
        Text {
            objectName: "waiting"
            Layout.fillWidth: true
            visible: panel.field.text === undefined && panel.field.number !== undefined
            text: "Filled in when it prints" + (panel.field.prompt ? ": " + panel.field.prompt : "")
            color: "#58656f"
            font.pixelSize: 16
            wrapMode: Text.Wrap
        }
        TextArea {
            id: entry
            objectName: "text"
            Layout.fillWidth: true
            Layout.minimumHeight: 44
            visible: panel.field.text !== undefined
            topPadding: 11
            bottomPadding: 11
            font.pixelSize: 16
            wrapMode: TextArea.WrapAnywhere
            selectByMouse: true
            background: Rectangle {
                radius: 6
                border.color: entry.activeFocus ? "#1769aa" : "#b8bec4"
            }
            // A line has no end of its own, and a new field another text.
            Keys.onReturnPressed: event => event.accepted = !panel.field.isBlock
            readonly property string shown: panel.field.text ?? ""
            onShownChanged: if (!activeFocus) show()
            onTextChanged: if (activeFocus) panel.editor.change("text", entry.text)
            function show() { entry.text = shown }
            Component.onCompleted: show()
            Connections {
                target: panel.editor
                function onSelectionMoved() { entry.focus = false; entry.show() }
            }
        }
        EditorFont { Layout.fillWidth: true }
        Number { objectName: "height"; name: panel.field.countsModules ? "Row height" : "Height" }
        Number { objectName: "module"; name: "Bar width"; to: 100 }
        Number { objectName: "ratio"; name: "Ratio"; from: 2; to: 3; step: 0.1 }
        RowLayout {
            Layout.fillWidth: true
            visible: panel.field.line !== undefined
            spacing: 4
            Repeater {
                model: [{ line: "none", name: "No text" }, { line: "below", name: "Below" }, { line: "above", name: "Above" }]
                UiButton {
                    required property var modelData
                    objectName: modelData.line
                    Layout.fillWidth: true
                    text: modelData.name
                    checked: panel.field.line === modelData.line
                    onClicked: panel.editor.change("line", modelData.line)
                }
            }
        }
        Number { objectName: "width"; name: "Width"; from: 0 }
        Number { objectName: "tall"; name: "Height"; from: 0 }
        Number { objectName: "thickness"; name: "Thickness" }
        EditorPad {
            Layout.fillWidth: true
            visible: panel.field.canMove ?? false
        }
        Text {
            Layout.fillWidth: true
            visible: panel.field.canMove === false
            text: "Its place is set in another stored label."
            color: "#58656f"
            font.pixelSize: 16
            wrapMode: Text.Wrap
        }
        RowLayout {
            Layout.fillWidth: true
            UiButton { objectName: "duplicate"; Layout.fillWidth: true; text: "Copy"; onClicked: panel.editor.duplicate() }
            UiButton { objectName: "remove"; Layout.fillWidth: true; text: "Delete"; onClicked: panel.editor.remove() }
        }
    }
}
