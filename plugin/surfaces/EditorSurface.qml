import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import TCPrintEngine

// The desk around the label that an editor works on. While none is open, or another one is to be, the stored labels to
// choose from.
Rectangle {
    id: surface

    readonly property QtObject editor: TQTWSProcessorInterface.editor
    property alias zoom: label.zoom
    property alias several: label.several
    property bool choosing: false
    readonly property bool isChoosing: choosing || !editor.isOpen
    readonly property bool isNarrow: width < 320
    readonly property var zoomSteps: [0.1, 0.25, 0.5, 0.75, 1, 1.5, 2, 3, 4, 6, 8]

    function zoomIn() {
        const next = zoomSteps.find(step => step > label.shownZoom + 0.001)
        if (next !== undefined) label.zoomTo(next)
    }
    function zoomOut() {
        const before = zoomSteps.filter(step => step < label.shownZoom - 0.001)
        if (before.length > 0) label.zoomTo(before[before.length - 1])
    }

    // What is wrong with the label, or has been found about it.
    component Notice: Text {
        objectName: "notice"
        readonly property var findings: surface.editor.findings
        text: surface.editor.problem || (surface.editor.fieldCount === 0 ? "This label has no fields that can be changed."
            : findings.length > 1 ? findings[0] + " (and " + (findings.length - 1) + " more)" : findings[0] ?? "")
        textFormat: Text.PlainText
        color: surface.editor.problem ? "#b3261e" : "#58656f"
        font.pixelSize: 13
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
        elide: Text.ElideRight
    }

    color: "#d8dcdf"
    implicitWidth: 400
    implicitHeight: 320

    onIsChoosingChanged: if (isChoosing) editor.refresh()
    Component.onCompleted: editor.refresh()

    EditorLabelSurface {
        id: label
        objectName: "label"
        anchors { fill: parent; bottomMargin: tools.height }
        visible: !surface.isChoosing
    }
    // Over the label where there is no room beside the buttons.
    Rectangle {
        anchors { left: parent.left; right: parent.right; bottom: tools.top }
        height: words.implicitHeight + 8
        visible: surface.isNarrow && !surface.isChoosing && words.text !== ""
        color: "#e8ffffff"
        Notice {
            id: words
            anchors { fill: parent; leftMargin: 6; rightMargin: 6 }
            maximumLineCount: 2
        }
    }
    WheelHandler {
        acceptedModifiers: Qt.ControlModifier
        onWheel: event => event.angleDelta.y > 0 ? surface.zoomIn() : surface.zoomOut()
    }

    Rectangle {
        id: tools
        width: parent.width
        height: 56
        anchors.bottom: parent.bottom
        visible: !surface.isChoosing
        color: "#eceff1"

        RowLayout {
            anchors { fill: parent; margins: 6 }
            spacing: 6
            UiButton { objectName: "zoomOut"; text: "\u2212"; what: "smaller"; onClicked: surface.zoomOut() }
            UiButton { objectName: "fit"; text: "Fit"; checked: surface.zoom === 0; onClicked: surface.zoom = 0 }
            UiButton { objectName: "zoomIn"; text: "+"; what: "larger"; onClicked: surface.zoomIn() }
            UiButton {
                objectName: "several"
                text: "Several"
                checked: surface.several
                onClicked: surface.several = !surface.several
            }
            Notice {
                visible: !surface.isNarrow
                Layout.fillWidth: true
                Layout.fillHeight: true
            }
        }
    }

    ColumnLayout {
        anchors { fill: parent; margins: 12 }
        visible: surface.isChoosing
        spacing: 8
        Text {
            objectName: "choose"
            Layout.fillWidth: true
            text: list.count > 0 ? "Which label shall be changed?" : "No label is stored in the printer"
            color: "#202a33"
            font { pixelSize: 18; bold: true }
            wrapMode: Text.Wrap
        }
        ListView {
            id: list
            objectName: "formats"
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            spacing: 4
            boundsBehavior: Flickable.StopAtBounds
            model: surface.editor.formats
            ScrollBar.vertical: ScrollBar {}
            delegate: UiButton {
                required property string modelData
                objectName: modelData
                width: ListView.view.width - 12
                implicitHeight: 48
                text: modelData
                onClicked: {
                    surface.choosing = false
                    surface.zoom = 0
                    surface.editor.open(modelData)
                }
            }
        }
    }
}
