import QtQuick
import QtQuick.Layouts

// An editor: the label, and beside it the fields of its part.
RowLayout {
    EditorSurface {
        Layout.fillWidth: true
        Layout.fillHeight: true
    }
    LabelPartFields {
        Layout.preferredWidth: 260
        Layout.alignment: Qt.AlignTop
        Layout.margins: 10
    }
}
