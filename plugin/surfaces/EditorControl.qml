import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import TCPrintEngine

// An editor of stored labels: what is done with the label, the label itself, and beside it what can be changed of the
// fields that are selected.
Rectangle {
    id: control

    readonly property QtObject editor: TQTWSProcessorInterface.editor
    // Saves again, for sure this time.
    property var saveForSure: () => {}

    // A small display has no room for all words.
    readonly property bool isNarrow: width < 600

    color: "#f4f6f7"
    implicitWidth: 800
    implicitHeight: 420

    function save() {
        saveForSure = () => editor.save(true)
        editor.save()
    }
    function saveAs(device, name) {
        saveForSure = () => editor.saveAs(device, name, true)
        editor.saveAs(device, name)
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        UiBar {
            Layout.fillWidth: true
            UiButton {
                objectName: "labels"
                text: "Labels"
                checked: surface.isChoosing
                onClicked: {
                    if (surface.choosing) surface.choosing = false
                    else if (control.editor.isChanged) leaving.open()
                    else surface.choosing = true
                }
            }
            Text {
                objectName: "name"
                Layout.fillWidth: true
                leftPadding: 6
                text: control.editor.name + (control.editor.isChanged ? " \u2013 changed" : "")
                color: "#202a33"
                font.pixelSize: 16
                elide: Text.ElideRight
            }
            UiButton { objectName: "undo"; text: "Undo"; enabled: control.editor.canUndo; onClicked: control.editor.undo() }
            UiButton { objectName: "redo"; text: "Redo"; enabled: control.editor.canRedo; onClicked: control.editor.redo() }
            UiButton { objectName: "save"; text: "Save"; enabled: control.editor.isChanged; onClicked: control.save() }
            UiButton { objectName: "saveAs"; text: "Save as"; enabled: control.editor.isOpen; onClicked: naming.ask() }
            UiButton {
                objectName: "print"
                text: "Print"
                highlighted: true
                enabled: control.editor.isOpen
                onClicked: control.editor.print()
            }
        }
        RowLayout {
            spacing: 0
            EditorSurface {
                id: surface
                Layout.fillWidth: true
                Layout.fillHeight: true
            }
            Rectangle {
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                color: "#b8bec4"
            }
            Item {
                Layout.preferredWidth: control.isNarrow ? 224 : 280
                Layout.fillHeight: true

                EditorFieldPanel {
                    anchors.fill: parent
                    visible: control.editor.isOpen && !surface.several && control.editor.selection.length === 1
                }
                MultiEditControl {
                    anchors.fill: parent
                    visible: control.editor.isOpen && (surface.several || control.editor.selection.length > 1)
                }
                ColumnLayout {
                    anchors { left: parent.left; right: parent.right; top: parent.top; margins: 12 }
                    visible: !surface.several && control.editor.selection.length === 0
                    spacing: 12
                    Text {
                        Layout.fillWidth: true
                        text: control.editor.isOpen ? "Touch a field to change it, and drag it to where it shall be." : "In the printer"
                        color: "#202a33"
                        font.pixelSize: 16
                        wrapMode: Text.Wrap
                    }
                    LabelPartFields { Layout.fillWidth: true }
                }
            }
        }
    }

    Connections {
        target: control.editor
        function onTold(words) { telling.show(words) }
        function onAsked(words) { asking.show(words) }
    }
    UiDialog { id: telling; objectName: "telling" }
    UiDialog {
        id: asking
        objectName: "asking"
        accept: "Yes"
        reject: "No"
        onAccepted: control.saveForSure()
    }
    UiDialog {
        id: leaving
        objectName: "leaving"
        words: "The changes of this label are not saved. Leave them?"
        accept: "Leave them"
        reject: "Stay"
        onAccepted: {
            control.editor.close()
            surface.choosing = false
        }
    }
    UiDialog {
        id: naming
        objectName: "naming"
        title: "Save as"
        accept: "Save"
        reject: "Cancel"
        acceptable: /^[A-Za-z0-9_-]{1,16}$/.test(newName.text)
        property string device: "E"

        function ask() {
            const own = control.editor.name
            device = own.charAt(0)
            newName.text = own.slice(2).replace(/\.ZPL$/, "")
            open()
            newName.forceActiveFocus()
            newName.selectAll()
        }
        onAccepted: control.saveAs(device, newName.text)

        TextField {
            id: newName
            objectName: "newName"
            Layout.fillWidth: true
            implicitHeight: 44
            font.pixelSize: 16
            maximumLength: 16
            inputMethodHints: Qt.ImhUppercaseOnly | Qt.ImhNoPredictiveText
            placeholderText: "1 to 16 letters, digits, - or _"
            selectByMouse: true
        }
        RowLayout {
            spacing: 4
            UiButton { objectName: "E"; text: "Kept (E:)"; checked: naming.device === "E"; onClicked: naming.device = "E" }
            UiButton { objectName: "R"; text: "Until switched off (R:)"; checked: naming.device === "R"; onClicked: naming.device = "R" }
        }
    }
}
