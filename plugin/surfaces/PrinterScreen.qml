import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import TCPrintEngine

// All that the printer's touch screen shows: a home, and the rooms that one goes to from there. A room stays as it was
// left.
Rectangle {
    id: screen

    // Of each room its surfaces; one of several is chosen beside its name.
    readonly property var rooms: [
        { name: "Preview", what: "Pages that print, wait or have printed", surfaces: [{ name: "", source: "PrintPreviewControl.qml" }] },
        { name: "Templates", what: "Fill a stored label and print it",
          surfaces: [{ name: "One label", source: "TemplateLabelSurface.qml" },
                     { name: "Several", source: "MultiTemplateLabelSurface.qml" },
                     { name: "Fields", source: "TemplateFieldsOrganizer.qml" }] },
        { name: "Editor", what: "Change a stored label", surfaces: [{ name: "", source: "EditorControl.qml" }] },
    ]
    // -1 at home.
    property int room: -1
    property var chosen: rooms.map(() => 0)

    function choose(index) {
        const now = chosen.slice()
        now[room] = index
        chosen = now
    }

    // A small display has no room for all words.
    readonly property bool isNarrow: width < 600
    readonly property bool isLow: height < 360

    implicitWidth: 800
    implicitHeight: 480
    color: "#f4f6f7"

    ColumnLayout {
        anchors.fill: parent
        spacing: 0
        visible: screen.room >= 0

        UiBar {
            Layout.fillWidth: true
            implicitHeight: 52

            UiButton {
                objectName: "home"
                text: screen.isNarrow ? "\u2039" : "\u2039 Home"
                what: "Home"
                implicitHeight: 44
                onClicked: screen.room = -1
            }
            Text {
                objectName: "title"
                visible: !screen.isNarrow
                leftPadding: 8
                text: screen.room >= 0 ? screen.rooms[screen.room].name : ""
                color: "#202a33"
                font { pixelSize: 20; bold: true }
            }
            Item { Layout.fillWidth: true }
            Repeater {
                model: screen.room >= 0 && screen.rooms[screen.room].surfaces.length > 1 ? screen.rooms[screen.room].surfaces : []
                UiButton {
                    required property var modelData
                    required property int index
                    objectName: modelData.name
                    text: modelData.name
                    checked: screen.chosen[screen.room] === index
                    onClicked: screen.choose(index)
                }
            }
            PrinterState {
                Layout.fillWidth: false
                // The preview says it itself.
                showsWords: screen.room > 0 && !(screen.isNarrow && screen.rooms[screen.room].surfaces.length > 1)
                isSmall: true
                pixelSize: 15
            }
        }
        Item {
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true

            Repeater {
                model: screen.rooms.reduce((all, room, at) => all.concat(room.surfaces.map((surface, index) => (
                    { room: at, index: index, source: surface.source }))), [])
                Loader {
                    required property var modelData
                    readonly property bool isOpen: screen.room === modelData.room && screen.chosen[modelData.room] === modelData.index
                    anchors.fill: parent
                    active: false
                    visible: isOpen
                    source: modelData.source
                    onIsOpenChanged: if (isOpen) active = true
                }
            }
        }
    }

    ColumnLayout {
        anchors { fill: parent; margins: screen.isLow ? 8 : 24 }
        spacing: screen.isLow ? 8 : 24
        visible: screen.room < 0

        RowLayout {
            Layout.fillWidth: true
            Text {
                visible: !screen.isNarrow
                text: "Label printer"
                color: "#202a33"
                font { pixelSize: 28; bold: true }
            }
            Item { Layout.fillWidth: true }
            PrinterState {
                Layout.fillWidth: false
                Layout.maximumWidth: screen.width - 16
                pixelSize: 20
            }
        }
        RowLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            spacing: screen.isLow ? 8 : 20

            Repeater {
                model: screen.rooms
                AbstractButton {
                    id: tile
                    required property var modelData
                    required property int index
                    objectName: modelData.name
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    Layout.preferredWidth: 100
                    focusPolicy: Qt.NoFocus
                    Accessible.name: modelData.name
                    onClicked: screen.room = index
                    background: Rectangle {
                        radius: 12
                        color: tile.down ? "#cfdbe6" : "#ffffff"
                        border.color: "#b8bec4"
                    }
                    contentItem: ColumnLayout {
                        spacing: screen.isLow ? 6 : 12
                        Item { Layout.fillHeight: true }
                        UiSign {
                            Layout.alignment: Qt.AlignHCenter
                            sign: tile.modelData.name
                        }
                        Text {
                            Layout.alignment: Qt.AlignHCenter
                            text: tile.modelData.name
                            color: "#202a33"
                            font { pixelSize: screen.isLow ? 20 : 24; bold: true }
                        }
                        Text {
                            visible: !screen.isLow
                            Layout.fillWidth: true
                            Layout.leftMargin: 12
                            Layout.rightMargin: 12
                            Layout.preferredHeight: 48
                            text: tile.modelData.what
                            color: "#58656f"
                            font.pixelSize: 16
                            horizontalAlignment: Text.AlignHCenter
                            wrapMode: Text.Wrap
                        }
                        Item { Layout.fillHeight: true }
                    }
                }
            }
        }
        Text {
            text: "Labels of " + TQTWSProcessorInterface.labelFields.filter(field => field.name === "Width" || field.name === "Height")
                                                                    .map(field => field.value).join(" \u00D7 ")
                  + TQTWSProcessorInterface.labelFields.filter(field => field.name === "Resolution").map(field => ", " + field.value).join("")
            color: "#58656f"
            font.pixelSize: 16
        }
    }
}
