import QtQuick
import QtQuick.Layouts
import TCPrintEngine

// Several templates: filled in side by side and printed together, or filled from a list, a row a label.
Rectangle {
    id: surface

    property var templates: TQTWSProcessorInterface.templates
    readonly property var batch: templates ? templates.batch : null
    property var formats: []  // full names of those that are filled in
    property var forms: []
    // "choose", "fill" or "list"
    property string step: "choose"

    color: "#dfe3e6"
    implicitWidth: 800
    implicitHeight: 424

    // A batch that prints, or was stopped, is gone on with.
    onBatchChanged: if (batch && (batch.state === "printing" || batch.state === "stopped")) step = "list"
    Component.onDestruction: closeForms()

    function closeForms() {
        for (const form of forms) templates.close(form)
        forms = []
    }

    function fill() {
        closeForms()
        formats = cards.chosen
        forms = formats.map(name => templates.open(name))
        step = "fill"
    }

    function fillFromList() {
        formats = cards.chosen
        if (batch.state !== "printing" && batch.state !== "stopped") batch.giveUp()
        batch.look()
        step = "list"
    }

    function goBack() {
        closeForms()
        step = "choose"
    }

    // All of them, or none while a value is wrong.
    function printAll() {
        if (forms.filter(form => !form.check()).length > 0) return
        for (const form of forms) form.print()
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        UiBar {
            Layout.fillWidth: true
            UiButton {
                objectName: "back"
                visible: surface.step !== "choose"
                text: "\u2039 Back"
                onClicked: surface.goBack()
            }
            Text {
                objectName: "title"
                Layout.fillWidth: true
                leftPadding: 8
                text: surface.step === "list" ? "From a list"
                    : surface.step === "fill" ? (surface.forms.length === 1 ? "1 template" : surface.forms.length + " templates")
                    : cards.chosen.length === 0 ? "Choose one or more templates"
                    : cards.chosen.length === 1 ? "1 chosen" : cards.chosen.length + " chosen"
                color: "#202a33"
                font { pixelSize: 20; bold: true }
                elide: Text.ElideRight
            }
            UiButton {
                objectName: "fill"
                visible: surface.step === "choose"
                enabled: cards.chosen.length > 0
                text: "Side by side"
                onClicked: surface.fill()
            }
            UiButton {
                objectName: "fromList"
                visible: surface.step === "choose"
                enabled: cards.chosen.length > 0
                highlighted: true
                text: "From a list"
                onClicked: surface.fillFromList()
            }
            QuantityField {
                visible: surface.step === "fill"
                value: surface.forms.length > 0 ? surface.forms[0].quantity : 1
                onEdited: value => { for (const form of surface.forms) form.quantity = value }
            }
            UiButton {
                objectName: "printAll"
                visible: surface.step === "fill"
                highlighted: true
                text: "Print all"
                enabled: surface.forms.every(form => form.isReady && !form.isGone && !form.isPrinting)
                onClicked: surface.printAll()
            }
        }

        TemplateCards {
            id: cards
            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: surface.step === "choose"
            templates: surface.templates
            choosesSeveral: true
        }

        ListView {
            id: panes
            objectName: "panes"
            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: surface.step === "fill"
            orientation: ListView.Horizontal
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            spacing: 2
            model: surface.forms
            delegate: TemplateFillPane {
                required property var modelData
                form: modelData
                // Two and a bit of the next one, so that it is seen that there are more.
                width: Math.max(panes.width / (surface.forms.length <= 2 ? Math.max(1, surface.forms.length) : 2.2),
                                Math.min(panes.width * 0.85, 360))
                height: panes.height
            }
        }

        BatchPane {
            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: surface.step === "list"
            batch: surface.batch
            formats: surface.formats
        }
    }
}
