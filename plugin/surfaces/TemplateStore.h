#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <filesystem>
#include <functional>
#include <string_view>

#include "library/forms/DrawnFormat.h"
#include "library/forms/FieldSettings.h"
#include "library/forms/StoredFormats.h"
#include "plugin/surfaces/DrawnPicture.h"

class DrawingThread;

/// What all that works with templates shares: where they are, who draws them, and how they are printed.
struct TemplateStore {
    /// Takes whole labels; calls `done` once, with a sentence if they are not taken.
    using Print = std::function<void(QByteArray stream, std::function<void(QString const& error)> done)>;

    StoredFormats formats;
    FieldSettings settings;
    DrawingThread& drawing;
    LabelDots label;  ///< in the printer
    Print print;

    /// Lists of values, as CSV files, are put there.
    std::filesystem::path ValuesFolder() const { return formats.Folder().parent_path() / "values"; }
    std::filesystem::path JournalFile() const { return formats.Folder().parent_path() / "batch.json"; }
};

/// As it is shown: with a capital first and a full stop.
QString Sentence(std::string_view text);

/// A stored format without what fills it, and filled.
DrawnFormat DrawTemplate(FormatDrawer& drawer, StoredFormat const& format, std::string const& bytes);
DrawnFormat DrawFilled(FormatDrawer& drawer, StoredFormat const& format, std::string const& bytes,
                       ValuesByNumber const& values);
