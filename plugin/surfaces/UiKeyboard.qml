import QtQuick
import QtQuick.VirtualKeyboard

// The keyboard of a touch screen: it rises from the lower edge while something is typed.
Item {
    // Of the height.
    readonly property real covered: panel.active ? panel.height : 0

    InputPanel {
        id: panel
        y: parent.height - parent.covered
        width: parent.width
        visible: active
    }
}
