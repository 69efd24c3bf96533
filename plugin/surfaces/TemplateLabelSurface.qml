import QtQuick
import QtQuick.Layouts
import TCPrintEngine

// The stored templates; and the one that is picked, to fill in and print.
Rectangle {
    id: surface

    // Full name of the template that is filled in, as "E:ORDER.ZPL"; empty while they are listed.
    property string format
    property var form: null
    property var templates: TQTWSProcessorInterface.templates

    readonly property bool isNarrow: width < 600

    color: "#dfe3e6"
    implicitWidth: 800
    implicitHeight: 424

    function reopen() {
        if (form) templates.close(form)
        form = format && templates ? templates.open(format) : null
        organizing.active = false
    }

    onFormatChanged: reopen()
    onTemplatesChanged: reopen()
    Component.onDestruction: if (form) templates.close(form)

    ColumnLayout {
        anchors.fill: parent
        visible: !organizing.active
        spacing: 0

        UiBar {
            Layout.fillWidth: true

            UiButton {
                objectName: "back"
                visible: surface.form !== null
                text: surface.isNarrow ? "\u2039" : "\u2039 Back"
                what: "Back"
                onClicked: surface.format = ""
            }
            Text {
                objectName: "title"
                Layout.fillWidth: true
                Layout.preferredWidth: 0
                leftPadding: 8
                // In a narrow pane the name stands by the page.
                text: surface.isNarrow && surface.form ? "" : surface.form ? surface.form.name : "Pick a template to print"
                color: "#202a33"
                font { pixelSize: 20; bold: true }
                elide: Text.ElideRight
            }
            UiButton {
                objectName: "fields"
                visible: surface.form !== null
                enabled: surface.form ? surface.form.isReady && surface.form.fields.length > 0 : false
                text: "Fields"
                onClicked: organizing.active = true
            }
            UiButton {
                objectName: "clear"
                visible: surface.form !== null
                text: "Clear"
                onClicked: surface.form.clear()
            }
            QuantityField {
                isNarrow: surface.isNarrow
                visible: surface.form !== null
                value: surface.form ? surface.form.quantity : 1
                onEdited: value => surface.form.quantity = value
            }
            UiButton {
                objectName: "print"
                visible: surface.form !== null
                highlighted: true
                enabled: surface.form ? surface.form.isReady && !surface.form.isGone && !surface.form.isPrinting : false
                text: "Print"
                Layout.preferredWidth: surface.isNarrow ? 68 : 96
                onClicked: surface.form.print()
            }
        }
        TemplateCards {
            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: surface.form === null
            templates: surface.templates
            onPicked: fullName => surface.format = fullName
        }
        TemplateFillPane {
            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: surface.form !== null
            form: surface.form
        }
    }

    Loader {
        id: organizing
        anchors.fill: parent
        active: false
        sourceComponent: TemplateFieldsOrganizer {
            format: surface.format
            isWithin: true
            onClosed: organizing.active = false
        }
    }
}
