#include "library/DrawCopies.h"

#include <algorithm>
#include <utility>

#include "jobhost/model/PrintStream.h"

LabelTask TaskOf(Zpl::Label label, unsigned number, std::uint64_t format,
                 Scripting::PrinterContextInterface const& printer, unsigned mostCopies, FieldsJson const* fieldsJson) {
    unsigned const quantity = label.Quantity();
    return {std::move(label),
            number,
            format,
            quantity,
            std::min(quantity, mostCopies),
            0,
            quantity - 1,
            std::nullopt,
            CommandCharacters::Of(printer),
            fieldsJson};
}

PageReport ReportOf(LabelTask const& task, Scripting::Extent size, DrawnCopy copy) {
    return {static_cast<unsigned>(size.width),
            static_cast<unsigned>(size.height),
            task.number,
            copy.copy + 1,
            task.quantity,
            std::move(copy.operations),
            std::move(copy.fields)};
}

DrawnCopy DrawCopy(LabelTask& task, unsigned copy, std::filesystem::path const& folder,
                   std::optional<VirtualTag> const& tag) {
    auto& label = task.label;
    auto const operations = [&] { return task.operations ? *task.operations : label.GetRfidOperations(); };
    unsigned const page = task.firstPage + copy;
    if (tag && label.IsWaitingOnRfidReadResponse(copy))
        label.SetRfidReadResponse(copy, VirtualTag(*tag).Perform(operations()));
    label.RenderLabel(folder, copy, page, page >= task.lastPage);
    DrawnCopy drawn{copy, operations(), {}};
    if (auto const& map = label.Fields(); task.fieldsJson && map) drawn.fields = task.fieldsJson->Of(*map);
    return drawn;
}

bool DrawCopies(LabelTask& task, std::filesystem::path const& folder, std::optional<VirtualTag> const& tag,
                std::function<void(Telling)> const& tell, std::function<bool(DrawnCopy)> const& take) {
    for (unsigned copy = 0; copy < task.copies; ++copy) {
        DrawnCopy drawn;
        try {
            drawn = DrawCopy(task, copy, folder, tag);
        } catch (std::exception const& error) {
            tell([text = Zpl::Host::Explain(error) + "; its pages from here on are dropped",
                  format = task.format](Findings& findings) { findings.AddNotice(text, format); });
            return true;
        }
        if (!take(std::move(drawn))) return false;
    }
    return true;
}
