import QtQuick
import QtQuick.Controls.Basic

// The fields of the label part alone, for a narrow screen.
ScrollView {
    id: control
    contentWidth: availableWidth

    LabelPartFields { width: control.availableWidth }
}
