import QtQuick
import QtQuick.Layouts

// A field of a template to fill in, with what is wrong with it below.
ColumnLayout {
    id: entry

    property var field
    property string value
    property string fault
    // There is something to say of it on the label.
    property bool isMarked: false
    readonly property alias isTypedInto: input.activeFocus

    signal edited(string text)

    spacing: 3

    Text {
        Layout.fillWidth: true
        text: entry.field.name + (entry.field.isRequired ? " *" : "")
        color: "#202a33"
        font.pixelSize: 15
        elide: Text.ElideRight
        textFormat: Text.PlainText
    }
    UiTextField {
        id: input
        objectName: "field " + entry.field.number
        Layout.fillWidth: true
        text: entry.value
        isFaulty: entry.fault.length > 0
        isDoubtful: entry.isMarked
        // The keyboard on the screen shows what is needed; what another one types is checked.
        inputMethodHints: entry.field.digitsOnly ? Qt.ImhDigitsOnly : Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
        onTextEdited: entry.edited(text)
        onAccepted: nextItemInFocusChain().forceActiveFocus()
    }
    Text {
        objectName: "fault " + entry.field.number
        Layout.fillWidth: true
        visible: text.length > 0
        text: entry.fault
        color: "#b3261e"
        font.pixelSize: 14
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
    }
}
