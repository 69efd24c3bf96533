import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import TCPrintEngine

// The font of what is selected.
ColumnLayout {
    id: font

    readonly property QtObject editor: TQTWSProcessorInterface.editor
    readonly property var field: editor.field
    readonly property var letters: ["0", "A", "B", "C", "D", "E", "F", "G", "H", "P", "Q", "R", "S", "T", "U", "V"]

    visible: field.letter !== undefined
    spacing: 6

    RowLayout {
        Layout.fillWidth: true
        Text {
            Layout.fillWidth: true
            text: "Font"
            color: "#202a33"
            font.pixelSize: 16
        }
        ComboBox {
            id: letters
            objectName: "letter"
            implicitWidth: 162
            implicitHeight: 44
            font.pixelSize: 16
            model: font.letters
            background: Rectangle {
                radius: 6
                border.color: "#b8bec4"
            }
            // The style's own is a picture, whose texture the toolkit keeps beyond its window.
            indicator: Text {
                x: letters.width - width - 14
                anchors.verticalCenter: letters.verticalCenter
                text: "\u25BC"
                color: "#202a33"
                font.pixelSize: 12
            }
            displayText: font.field.letter ?? ""
            currentIndex: font.letters.indexOf(font.field.letter ?? "")
            onActivated: index => font.editor.change("letter", font.letters[index])
        }
    }
    EditorNumber {
        objectName: "fontHeight"
        Layout.fillWidth: true
        name: "Height"
        value: font.field.fontHeight ?? 0
        onEdited: value => font.editor.change("fontHeight", value)
    }
    EditorNumber {
        objectName: "fontWidth"
        Layout.fillWidth: true
        name: "Width"
        value: font.field.fontWidth ?? 0
        onEdited: value => font.editor.change("fontWidth", value)
    }
}
