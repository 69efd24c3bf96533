import QtQuick
import QtQuick.Layouts

// How many labels: by steps of one, or typed.
RowLayout {
    id: quantity

    property int value: 1
    property bool isNarrow: false

    signal edited(int value)

    spacing: 4

    UiButton {
        objectName: "fewer"
        text: "\u2212"
        what: "Fewer labels"
        enabled: quantity.value > 1
        onClicked: quantity.edited(quantity.value - 1)
    }
    UiTextField {
        objectName: "quantity"
        Layout.preferredWidth: quantity.isNarrow ? 52 : 90
        horizontalAlignment: Text.AlignHCenter
        inputMethodHints: Qt.ImhDigitsOnly
        validator: RegularExpressionValidator { regularExpression: /[0-9]{1,8}/ }
        text: quantity.value
        onTextEdited: if (acceptableInput && Number(text) > 0) quantity.edited(Number(text))
        // What is no quantity goes again.
        onActiveFocusChanged: if (!activeFocus) text = Qt.binding(() => quantity.value)
    }
    UiButton {
        objectName: "more"
        text: "+"
        what: "More labels"
        onClicked: quantity.edited(quantity.value + 1)
    }
}
