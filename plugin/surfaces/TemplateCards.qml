import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import TCPrintEngine

// The stored templates with their pictures. Several may be chosen where that is asked for.
Rectangle {
    id: cards

    property var templates: TQTWSProcessorInterface.templates
    property bool choosesSeveral: false
    property var chosen: []  // full names

    signal picked(string fullName)

    color: "#dfe3e6"

    function pick(fullName) {
        if (!choosesSeveral) return picked(fullName)
        chosen = chosen.includes(fullName) ? chosen.filter(other => other !== fullName) : chosen.concat([fullName])
    }

    GridView {
        id: grid
        objectName: "grid"
        anchors.fill: parent
        anchors.margins: 8
        clip: true
        cellWidth: Math.floor(width / Math.max(1, Math.floor(width / 190)))
        cellHeight: 188
        boundsBehavior: Flickable.StopAtBounds
        model: cards.templates
        ScrollBar.vertical: ScrollBar {}

        delegate: Item {
            id: cell
            required property int index
            required property string name
            required property string fullName
            required property bool isInMemory
            required property var picture
            required property string problem
            readonly property bool isChosen: cards.chosen.includes(fullName)
            objectName: "card " + fullName
            width: grid.cellWidth
            height: grid.cellHeight
            Component.onCompleted: cards.templates.wantPicture(index)

            Rectangle {
                anchors.fill: parent
                anchors.margins: 5
                radius: 8
                color: touch.pressed ? "#cfdbe6" : "#f7f8f9"
                border.width: cell.isChosen ? 3 : 1
                border.color: cell.isChosen ? "#1769aa" : "#b8bec4"

                ColumnLayout {
                    anchors.fill: parent
                    anchors.margins: 6
                    spacing: 4

                    Rectangle {
                        Layout.fillWidth: true
                        Layout.fillHeight: true
                        radius: 4
                        color: "#dfe3e6"
                        PageView {
                            anchors.fill: parent
                            picture: cell.picture
                            zoom: fittingZoom
                        }
                        Text {
                            anchors.fill: parent
                            anchors.margins: 6
                            visible: cell.problem.length > 0
                            text: cell.problem
                            color: "#b3261e"
                            font.pixelSize: 13
                            wrapMode: Text.Wrap
                            verticalAlignment: Text.AlignVCenter
                            horizontalAlignment: Text.AlignHCenter
                        }
                    }
                    RowLayout {
                        Layout.fillWidth: true
                        Text {
                            Layout.fillWidth: true
                            text: cell.name
                            color: "#202a33"
                            font { pixelSize: 16; bold: true }
                            elide: Text.ElideRight
                        }
                        Text {
                            visible: cell.isInMemory
                            text: "until off"
                            color: "#5c6770"
                            font.pixelSize: 13
                        }
                    }
                }
            }
            MouseArea {
                id: touch
                anchors.fill: parent
                Accessible.name: cell.name
                onClicked: cards.pick(cell.fullName)
            }
        }
    }

    Text {
        objectName: "empty"
        anchors.centerIn: parent
        width: parent.width - 80
        visible: grid.count === 0
        text: "No templates are stored in this printer.\nLabel programs send them, and the editor saves them."
        color: "#5c6770"
        font.pixelSize: 18
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
    }
}
