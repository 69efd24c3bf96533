#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

#include "Scripting/Api.h"
#include "Scripting/GraphicContext.h"

namespace Scripting {

/// Takes a piece of a file; it is valid until the call ends.
using TakePiece = std::function<void(std::string_view)>;

/// A finished page of 1-bit pixels, in the forms that files of pages take. What a call gives is valid until the next
/// one.
class PRINTENGINE_API FinishedPage {
public:
    virtual ~FinishedPage() = default;

    /// In pixels.
    virtual Extent PageSize() const = 0;
    /// Pixels per inch; 0 if that is not known.
    virtual unsigned PageDpi() const = 0;
    /// A whole PNG file (ISO/IEC 15948), 1-bit greyscale, not interlaced, with its resolution.
    virtual std::string_view PngFile() = 0;
    /// The data of such a file without the frame: a zlib stream (RFC 1950) of rows, each led by the byte of its filter.
    virtual std::string_view DeflatedRows() = 0;
    /// Rows of whole bytes from the top, most significant bit first; a set bit is black, those right of the page are 0.
    virtual std::string_view PackedRows() = 0;
    /// A whole file of these rows: a raw portable bitmap ("P4").
    virtual std::string_view PbmFile() = 0;
    /// The same file piece by piece, which need not be in memory as a whole.
    virtual void PbmPieces(TakePiece const& take) { take(PbmFile()); }
};

/// A drawn label on its way from one target to another, and room for the next one.
class PRINTENGINE_API HandedLabel {
public:
    virtual ~HandedLabel() = default;

    /// Memory that it takes, about.
    virtual std::size_t Bytes() const = 0;
};

/// A drawing target that can hand out the page it rendered last, until it starts the next label, in place of writing
/// its file. Not every target can: it is asked for by Of, and who wants a page without it reads the file.
class PRINTENGINE_API PageKeeper : public FinishedPage {
public:
    /// Null if a target is none.
    static PageKeeper* Of(GraphicContext* target) { return dynamic_cast<PageKeeper*>(target); }

    /// RenderPage writes no files from now on, and needs no folder.
    virtual void KeepPages() = 0;
    /// Which label the target holds as it was drawn, not rendered as a page yet: another number for each. 0 for none.
    virtual std::uint64_t DrawnLabel() const = 0;
    /// Hands the page out as a value of its own, which outlives the target. The target holds none then.
    virtual std::unique_ptr<FinishedPage> TakePage() = 0;
    /// Hands out the label that it holds drawn, for another target of the same class and printer, and holds none then.
    /// `room`: what such a target has left; may be null. Null if there is none, or the labels that follow begin with
    /// its picture.
    virtual std::unique_ptr<HandedLabel> HandOut(std::unique_ptr<HandedLabel> room) = 0;
    /// Holds a label, to be rendered as a page, as if it had drawn it. Leaves its room.
    virtual void TakeOver(HandedLabel& label) = 0;
};

}  // namespace Scripting
