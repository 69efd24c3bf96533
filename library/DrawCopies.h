#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include "Scripting/PrinterContextInterface.h"
#include "jobhost/model/Findings.h"
#include "labels/Label.h"
#include "library/FieldsJson.h"
#include "library/PageReport.h"
#include "library/StreamReader.h"
#include "library/VirtualTag.h"

/// The characters that open and part commands: a field may ask for them while it is drawn.
struct CommandCharacters {
    char format = '^';
    char control = '~';
    char delimiter = ',';

    static CommandCharacters Of(Scripting::PrinterContextInterface const& printer) {
        return {printer.FormatPrefix(), printer.ControlPrefix(), printer.Delimiter()};
    }

    friend bool operator==(CommandCharacters const&, CommandCharacters const&) = default;
};

/// A label on its way to its pages.
struct LabelTask {
    Zpl::Label label;
    unsigned number;       ///< among the labels of its stream, from 1
    std::uint64_t format;  ///< where its format begins, in bytes
    unsigned quantity;     ///< copies that were asked for
    unsigned copies;       ///< copies that are drawn
    unsigned firstPage;    ///< its pages are counted from here
    unsigned lastPage;     ///< of its job
    /// Of all copies alike; without it each copy has what it recorded.
    std::optional<std::vector<RfidOperation>> operations;
    CommandCharacters characters;  ///< as they were when its turn came
    FieldsJson const* fieldsJson;  ///< lists the fields of its pages; may be null
};

/// The task of a label that is a job of its own. At most `mostCopies` copies are drawn.
LabelTask TaskOf(Zpl::Label label, unsigned number, std::uint64_t format,
                 Scripting::PrinterContextInterface const& printer, unsigned mostCopies,
                 FieldsJson const* fieldsJson = nullptr);

/// A copy of a label that has been drawn on its target.
struct DrawnCopy {
    unsigned copy = 0;  ///< from 0
    std::vector<RfidOperation> operations;
    std::optional<PageFields> fields;
};

/// What is told of it. `size`: of its page, in pixels.
PageReport ReportOf(LabelTask const& task, Scripting::Extent size, DrawnCopy copy);

/// Draws a copy of a label on its target. The first one starts from what the format has left, each other goes on from
/// the one before. Throws what drawing throws: Zpl::Host::Explain tells what it means.
DrawnCopy DrawCopy(LabelTask& task, unsigned copy, std::filesystem::path const& folder,
                   std::optional<VirtualTag> const& tag);

/// Draws the copies of a label on its target, one after the other, and calls `take` behind each. A label that cannot be
/// drawn is given up with a finding. False if `take` gives false: there are no further copies then.
bool DrawCopies(LabelTask& task, std::filesystem::path const& folder, std::optional<VirtualTag> const& tag,
                std::function<void(Telling)> const& tell, std::function<bool(DrawnCopy)> const& take);
