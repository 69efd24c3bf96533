import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import TCPrintEngine

// The fields of the label part. They are the printer's, so they can be read and copied, not changed.
GridLayout {
    id: fields

    columns: 2
    columnSpacing: 10

    Repeater {
        model: TQTWSProcessorInterface.labelFields
        Label {
            required property var modelData
            required property int index
            Layout.row: index
            Layout.column: 0
            text: modelData.name
        }
    }
    Repeater {
        model: TQTWSProcessorInterface.labelFields
        TextField {
            required property var modelData
            required property int index
            Layout.row: index
            Layout.column: 1
            Layout.fillWidth: true
            objectName: modelData.name
            text: modelData.value
            readOnly: true
            selectByMouse: true
        }
    }
}
