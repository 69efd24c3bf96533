#include "library/DrawCopies.h"

#include <utility>

#include "jobhost/model/PrintStream.h"

bool DrawCopies(LabelTask& task, std::filesystem::path const& folder, std::optional<VirtualTag> const& tag,
                std::function<void(Telling)> const& tell, std::function<bool(DrawnCopy)> const& take) {
    auto& label = task.label;
    auto const fields = [&] {
        auto const& map = label.Fields();
        return task.fieldsJson && map ? std::optional(task.fieldsJson->Of(*map)) : std::nullopt;
    };
    auto const operations = [&] { return task.operations ? *task.operations : label.GetRfidOperations(); };
    for (unsigned copy = 0; copy < task.copies; ++copy) {
        unsigned const page = task.firstPage + copy;
        try {
            if (tag && label.IsWaitingOnRfidReadResponse(copy))
                label.SetRfidReadResponse(copy, VirtualTag(*tag).Perform(operations()));
            label.RenderLabel(folder, copy, page, page >= task.lastPage);
        } catch (std::exception const& error) {
            tell([text = Zpl::Host::Explain(error) + "; its pages from here on are dropped",
                  format = task.format](Findings& findings) { findings.AddNotice(text, format); });
            return true;
        }
        if (!take({copy, operations(), fields()})) return false;
    }
    return true;
}
