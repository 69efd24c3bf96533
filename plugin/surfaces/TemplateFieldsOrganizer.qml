import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import TCPrintEngine

// The fields of a template in a list: their order, names, first values, and what is checked before a label prints.
Rectangle {
    id: surface

    property string format
    property var organizer: null
    property var templates: TQTWSProcessorInterface.templates
    // Whether another surface shows it, which is told when it is left.
    property bool isWithin: false

    signal closed()

    color: "#dfe3e6"
    implicitWidth: 800
    implicitHeight: 424

    function reopen() {
        if (organizer) templates.close(organizer)
        organizer = format && templates ? templates.organize(format) : null
    }

    function leave() {
        if (organizer && organizer.isChanged) return question.open()
        goOut()
    }

    function goOut() {
        if (isWithin) return closed()
        format = ""
    }

    onFormatChanged: reopen()
    onTemplatesChanged: reopen()
    Component.onDestruction: if (organizer) templates.close(organizer)

    component Caption: Text {
        color: "#5c6770"
        font.pixelSize: 13
        elide: Text.ElideRight
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        UiBar {
            Layout.fillWidth: true
            UiButton {
                objectName: "leave"
                visible: surface.organizer !== null
                text: "\u2039 Back"
                onClicked: surface.leave()
            }
            Text {
                Layout.fillWidth: true
                leftPadding: 8
                text: surface.organizer ? "Fields of " + surface.organizer.name : "Pick a template to settle its fields"
                color: "#202a33"
                font { pixelSize: 20; bold: true }
                elide: Text.ElideRight
            }
            UiButton {
                objectName: "revert"
                visible: surface.organizer !== null
                enabled: surface.organizer ? surface.organizer.isChanged : false
                text: "Undo all"
                onClicked: surface.organizer.undoAll()
            }
            UiButton {
                objectName: "save"
                visible: surface.organizer !== null
                highlighted: true
                enabled: surface.organizer ? surface.organizer.isChanged : false
                text: "Save"
                Layout.preferredWidth: 96
                onClicked: surface.organizer.save()
            }
        }

        TemplateCards {
            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: surface.organizer === null
            templates: surface.templates
            onPicked: fullName => surface.format = fullName
        }

        TemplateNotice {
            Layout.fillWidth: true
            Layout.margins: visible ? 8 : 0
            text: surface.organizer ? surface.organizer.notice : ""
            isTrouble: surface.organizer ? surface.organizer.isTrouble : false
        }

        ListView {
            id: list
            objectName: "list"
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.margins: 8
            visible: surface.organizer !== null
            clip: true
            spacing: 6
            boundsBehavior: Flickable.StopAtBounds
            model: surface.organizer
            // A narrow display shows a part of it.
            flickableDirection: Flickable.AutoFlickIfNeeded
            contentWidth: Math.max(width, 680)
            ScrollBar.vertical: ScrollBar {}
            ScrollBar.horizontal: ScrollBar { policy: list.contentWidth > list.width ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff }

            header: RowLayout {
                width: list.contentWidth - 12
                height: 24
                visible: list.count > 0
                spacing: 6
                Caption { Layout.preferredWidth: 110; text: "Order" }
                Caption { Layout.fillWidth: true; Layout.preferredWidth: 150; text: "Name" }
                Caption { Layout.fillWidth: true; Layout.preferredWidth: 130; text: "Begins with" }
                Caption { Layout.preferredWidth: 96; text: "Must be filled" }
                Caption { Layout.preferredWidth: 76; text: "Digits only" }
                Caption { Layout.preferredWidth: 58; text: "At least" }
                Caption { Layout.preferredWidth: 58; text: "At most" }
            }

            delegate: ColumnLayout {
                id: row
                required property int index
                required property int number
                required property string name
                required property string value
                required property bool isRequired
                required property bool digitsOnly
                required property int least
                required property int most
                required property string fault
                width: list.contentWidth - 12
                spacing: 2

                component Length: UiTextField {
                    Layout.preferredWidth: 58
                    horizontalAlignment: Text.AlignHCenter
                    inputMethodHints: Qt.ImhDigitsOnly
                    validator: IntValidator { bottom: 0; top: 8192 }
                    placeholderText: "any"
                }

                RowLayout {
                    Layout.fillWidth: true
                    spacing: 6
                    UiButton {
                        objectName: "up " + row.number
                        text: "\u25B2"
                        what: "Move up"
                        enabled: row.index > 0
                        onClicked: surface.organizer.move(row.index, row.index - 1)
                    }
                    UiButton {
                        objectName: "down " + row.number
                        text: "\u25BC"
                        what: "Move down"
                        enabled: row.index < list.count - 1
                        onClicked: surface.organizer.move(row.index, row.index + 1)
                    }
                    Item { Layout.preferredWidth: 10 }
                    UiTextField {
                        objectName: "name " + row.number
                        Layout.fillWidth: true
                        Layout.preferredWidth: 150
                        text: row.name
                        isFaulty: text.length === 0
                        onTextEdited: surface.organizer.change(row.index, "name", text)
                    }
                    UiTextField {
                        objectName: "value " + row.number
                        Layout.fillWidth: true
                        Layout.preferredWidth: 130
                        text: row.value
                        isFaulty: row.fault.length > 0
                        placeholderText: "nothing"
                        inputMethodHints: row.digitsOnly ? Qt.ImhDigitsOnly : Qt.ImhNoPredictiveText
                        onTextEdited: surface.organizer.change(row.index, "value", text)
                    }
                    UiButton {
                        objectName: "required " + row.number
                        Layout.preferredWidth: 96
                        checked: row.isRequired
                        text: row.isRequired ? "\u2713 yes" : "no"
                        what: "Must be filled"
                        onClicked: surface.organizer.change(row.index, "isRequired", !row.isRequired)
                    }
                    UiButton {
                        objectName: "digits " + row.number
                        Layout.preferredWidth: 76
                        checked: row.digitsOnly
                        text: row.digitsOnly ? "\u2713 yes" : "no"
                        what: "Digits only"
                        onClicked: surface.organizer.change(row.index, "digitsOnly", !row.digitsOnly)
                    }
                    Length {
                        objectName: "least " + row.number
                        text: row.least > 0 ? row.least : ""
                        onTextEdited: surface.organizer.change(row.index, "least", Number(text))
                    }
                    Length {
                        objectName: "most " + row.number
                        text: row.most > 0 ? row.most : ""
                        onTextEdited: surface.organizer.change(row.index, "most", Number(text))
                    }
                }
                Text {
                    visible: text.length > 0
                    leftPadding: 112
                    text: row.fault
                    color: "#b3261e"
                    font.pixelSize: 14
                }
            }
        }
    }

    UiDialog {
        id: question
        objectName: "question"
        title: "The fields have been changed"
        words: "Save what you have changed?"
        accept: "Save"
        reject: "Leave it"
        onAccepted: if (surface.organizer.save()) surface.goOut()
        onRejected: {
            surface.organizer.undoAll()
            surface.goOut()
        }
    }
}
