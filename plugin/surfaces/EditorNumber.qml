import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts

// A number with its name, to be stepped up and down or typed.
RowLayout {
    id: number

    property string name
    property real value: 0
    property real from: 1
    property real to: 9999
    property real step: 1
    readonly property int decimals: step < 1 ? 1 : 0

    signal edited(real value)

    function set(next) {
        const bound = Math.min(to, Math.max(from, next))
        if (bound !== value) edited(bound)
    }

    spacing: 4

    Text {
        Layout.fillWidth: true
        text: number.name
        color: "#202a33"
        font.pixelSize: 16
        elide: Text.ElideRight
    }
    UiButton {
        objectName: number.objectName + "Less"
        text: "\u2212"
        what: number.name + " less"
        autoRepeat: true
        implicitWidth: 44
        onClicked: number.set(number.value - number.step)
    }
    TextField {
        id: field
        objectName: number.objectName + "Value"
        implicitWidth: 66
        implicitHeight: 44
        font.pixelSize: 16
        horizontalAlignment: Text.AlignHCenter
        inputMethodHints: number.decimals > 0 ? Qt.ImhFormattedNumbersOnly : Qt.ImhDigitsOnly
        selectByMouse: true
        onEditingFinished: {
            const typed = Number.parseFloat(text)
            if (!Number.isNaN(typed)) number.set(typed)
            text = number.value.toFixed(number.decimals)
        }
        background: Rectangle {
            radius: 6
            border.color: field.activeFocus ? "#1769aa" : "#b8bec4"
        }
        // What is typed is not overwritten meanwhile.
        readonly property string shown: number.value.toFixed(number.decimals)
        onShownChanged: if (!activeFocus) text = shown
        Component.onCompleted: text = shown
    }
    UiButton {
        objectName: number.objectName + "More"
        text: "+"
        what: number.name + " more"
        autoRepeat: true
        implicitWidth: 44
        onClicked: number.set(number.value + number.step)
    }
}
