#pragma once

#include <string>

#include "Scripting/Api.h"
#include "Scripting/GraphicContext.h"

namespace Scripting {

/// A drawing target whose page files can carry words for those who look at them. They stay with the page wherever its
/// file goes. Not every target can: it is asked for by Of, and everything prints without it.
class PRINTENGINE_API PageNotes {
public:
    /// Of the text chunk (ISO/IEC 15948, tEXt) that holds them.
    static constexpr char const* Keyword = "Barcodes";

    virtual ~PageNotes() = default;

    /// Null if a target is none.
    static PageNotes* Of(GraphicContext* target) { return dynamic_cast<PageNotes*>(target); }

    /// Page files carry notes from now on; before, they carry none.
    virtual void KeepNotes() = 0;
    virtual bool KeepsNotes() const = 0;
    /// Printable ASCII for the label that is drawn; empty for none, as when a label starts.
    virtual void SetPageNote(std::string note) = 0;
};

}  // namespace Scripting
