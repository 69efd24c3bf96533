import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts

// Lists of values on the left; on the right what became of the one that was picked: looked through, printing, done.
RowLayout {
    id: pane

    property var batch
    property var formats: []  // full names of the templates

    readonly property string state_: batch ? batch.state : ""
    readonly property bool isBusy: state_ === "printing" || state_ === "stopped"

    spacing: 0

    function count(number, one, many) {
        return Number(number).toLocaleString(Qt.locale("en"), "f", 0) + " " + (number === 1 ? one : many)
    }

    component Words: Text {
        Layout.fillWidth: true
        color: "#202a33"
        font.pixelSize: 16
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
    }

    Rectangle {
        Layout.preferredWidth: 280
        Layout.fillHeight: true
        color: "#eceff1"

        ListView {
            id: lists
            objectName: "lists"
            anchors.fill: parent
            anchors.margins: 8
            clip: true
            spacing: 4
            boundsBehavior: Flickable.StopAtBounds
            model: pane.batch ? pane.batch.lists : []
            ScrollBar.vertical: ScrollBar {}
            delegate: UiButton {
                required property string modelData
                objectName: "list " + modelData
                width: lists.width
                text: modelData
                enabled: !pane.isBusy
                checked: pane.batch.list === modelData
                onClicked: pane.batch.check(modelData, pane.formats)
            }
        }
        Words {
            anchors.fill: parent
            anchors.margins: 16
            visible: lists.count === 0
            color: "#5c6770"
            verticalAlignment: Text.AlignVCenter
            text: "There are no lists yet.\nPut CSV files into the folder\n" + (pane.batch ? pane.batch.folder : "")
        }
    }

    Flickable {
        id: scroll
        Layout.fillWidth: true
        Layout.fillHeight: true
        clip: true
        contentHeight: found.implicitHeight + 32
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: ScrollBar {}

        ColumnLayout {
            id: found
            x: 16
            y: 16
            width: scroll.width - 32
            spacing: 12

            Words {
                font { pixelSize: 18; bold: true }
                text: pane.state_ === "" ? "Pick a list"
                    : pane.batch.list + " \u2192 " + pane.batch.formats.map(name => name.slice(2).replace(/\.ZPL$/, "")).join(", ")
            }
            Words {
                visible: pane.state_ === ""
                color: "#5c6770"
                text: "Each row prints a label. The first line names the columns: they go into the fields of the same name."
            }
            TemplateNotice {
                Layout.fillWidth: true
                text: pane.batch ? pane.batch.notice : ""
                isTrouble: pane.batch ? pane.batch.isTrouble : false
            }
            Words {
                visible: pane.state_ === "checking"
                text: "The list is looked through \u2026"
            }
            Words {
                objectName: "summary"
                visible: pane.state_ === "ready"
                text: visible ? pane.count(pane.batch.rows, "row", "rows") + ", " + pane.count(pane.batch.labels, "label", "labels")
                    + (pane.batch.faulty > 0 ? ". " + pane.count(pane.batch.faulty, "row", "rows") + " cannot print and will be left out:" : "") : ""
            }
            ColumnLayout {
                objectName: "progress"
                visible: pane.isBusy || pane.state_ === "done"
                Layout.fillWidth: true
                spacing: 6
                ProgressBar {
                    id: bar
                    objectName: "bar"
                    Layout.fillWidth: true
                    to: pane.batch ? Math.max(1, pane.batch.rows) : 1
                    value: pane.batch ? pane.batch.taken : 0
                    background: Rectangle { implicitHeight: 14; radius: 7; color: "#ffffff"; border.color: "#b8bec4" }
                    contentItem: Item {
                        Rectangle {
                            width: parent.width * bar.visualPosition
                            height: parent.height
                            radius: 7
                            color: "#1769aa"
                        }
                    }
                }
                Words {
                    objectName: "taken"
                    text: pane.batch ? pane.count(pane.batch.taken, "row", "rows") + " of " + pane.count(pane.batch.rows, "", "").trim() + " handed to the printer" : ""
                }
                Words {
                    objectName: "doubtful"
                    visible: pane.state_ === "stopped" && pane.batch.doubtful > 0
                    text: visible ? "Rows " + (pane.batch.taken + 1) + " to " + (pane.batch.taken + pane.batch.doubtful)
                        + " were being handed over. Look whether they have printed: go on behind them, or print them again." : ""
                }
            }
            Flow {
                Layout.fillWidth: true
                spacing: 8
                UiButton {
                    objectName: "start"
                    visible: pane.state_ === "ready"
                    highlighted: true
                    text: visible && pane.batch.faulty > 0 ? "Print the others" : "Print"
                    onClicked: pane.batch.start()
                }
                UiButton {
                    objectName: "goOn"
                    visible: pane.state_ === "stopped"
                    highlighted: true
                    text: "Go on"
                    onClicked: pane.batch.goOn(false)
                }
                UiButton {
                    objectName: "again"
                    visible: pane.state_ === "stopped" && pane.batch.doubtful > 0
                    text: "Print them again"
                    onClicked: pane.batch.goOn(true)
                }
                UiButton {
                    objectName: "stop"
                    visible: pane.state_ === "printing" || pane.state_ === "checking"
                    text: pane.state_ === "checking" ? "Cancel" : "Stop"
                    onClicked: pane.batch.stop()
                }
                UiButton {
                    objectName: "giveUp"
                    visible: pane.state_ === "stopped" || pane.state_ === "done" || pane.state_ === "refused"
                    text: pane.state_ === "stopped" ? "Cancel the rest" : "Close"
                    onClicked: pane.batch.giveUp()
                }
            }
            Repeater {
                model: pane.state_ === "ready" ? pane.batch.faults : []
                Words {
                    required property string modelData
                    color: "#b3261e"
                    text: modelData
                    font.pixelSize: 15
                }
            }
            Repeater {
                model: pane.state_ === "ready" || pane.state_ === "refused" ? pane.batch.remarks : []
                Words {
                    required property string modelData
                    color: "#5c6770"
                    text: modelData
                    font.pixelSize: 15
                }
            }
        }
    }
}
