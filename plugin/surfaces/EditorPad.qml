import QtQuick
import QtQuick.Layouts
import TCPrintEngine

// Moves what is selected by steps.
GridLayout {
    id: pad

    readonly property QtObject editor: TQTWSProcessorInterface.editor
    property int step: 1

    columns: 5
    rowSpacing: 4
    columnSpacing: 4

    component Arrow: UiButton {
        autoRepeat: true
        Layout.fillWidth: true
    }

    Arrow { objectName: "nudgeLeft"; text: "\u2190"; what: "to the left"; onClicked: pad.editor.nudge(-pad.step, 0) }
    Arrow { objectName: "nudgeRight"; text: "\u2192"; what: "to the right"; onClicked: pad.editor.nudge(pad.step, 0) }
    Arrow { objectName: "nudgeUp"; text: "\u2191"; what: "up"; onClicked: pad.editor.nudge(0, -pad.step) }
    Arrow { objectName: "nudgeDown"; text: "\u2193"; what: "down"; onClicked: pad.editor.nudge(0, pad.step) }
    UiButton {
        objectName: "nudgeStep"
        text: pad.step === 1 ? "1 dot" : "10 dots"
        what: "length of a step"
        implicitWidth: 76
        onClicked: pad.step = pad.step === 1 ? 10 : 1
    }
}
