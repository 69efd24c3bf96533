#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Scripting/GraphicContext.h"
#include "Scripting/InkGauge.h"
#include "fields/map/FieldMap.h"
#include "frontend/context/ObjectName.h"
#include "library/Desk.h"
#include "library/DeskSettings.h"
#include "library/forms/LinkedStore.h"

/// A field of a label that was drawn in memory.
struct DrawnField {
    ZplCore::FieldDetails details;
    Scripting::PixelBox box;  ///< around its ink, in pixels of the page, also beyond it; empty if it draws nothing
    bool isWhite = false;     ///< it draws white, in that box
    bool isReversed = false;  ///< inverts what lies beneath
    bool isWaiting = false;   ///< for data: it has a number that nothing fills
    /// In what was drawn, in bytes: the commands that say what it says, and those that say how it looks. One place for
    /// a field that no other fills; nothing where the commands stand elsewhere.
    std::optional<ZplCore::ByteRange> data;
    std::optional<ZplCore::ByteRange> look;
    std::optional<ZplCore::ScanVerdict> verdict;  ///< of a barcode that a scanner may not read
};

/// A sentence about what was drawn.
struct DrawnFinding {
    std::string text;
    std::optional<std::size_t> field;  ///< of the fields drawn; nothing if what it says is not in the stream itself
};

/// The first label of a stream as it prints, with its fields in the order in which they are drawn; behind them those
/// that wait for data.
struct DrawnFormat {
    Scripting::Extent size;   ///< of the page, in pixels
    unsigned dpi = 0;         ///< pixels per inch
    std::string rows;         ///< from the top, of whole bytes, most significant bit first; a set bit is black
    double pixelsPerDot = 1;  ///< pixels of the page for a dot of the stream
    bool turned = false;      ///< the page, by 180 degrees
    bool mirrored = false;    ///< the page
    bool isBlank = true;      ///< no label is printed
    std::vector<DrawnField> fields;
    std::vector<DrawnFinding> findings;  ///< about the stream up to the end of the label
};

/// Draws labels on a desk that is kept open between them. What a printer has stored is found, and what the stream
/// stores itself, up to the end of that stream; the printer's store never changes. One thread at a time.
class FormatDrawer {
public:
    /// The formats folder of the settings is the printer's store.
    explicit FormatDrawer(DeskSettings const& settings);

    /// The first label of a stream that prints, its first copy. If none does: an empty page with the fields that its
    /// last format would have. Throws std::runtime_error if the print engine gives no pictures in memory, and what
    /// Desk throws.
    DrawnFormat Draw(std::string_view stream);
    /// The same for a stored format as it would be recalled under that name if its object held `bytes`. `fills`: the
    /// commands behind the recall, which fill its fields. The places of fields are those in `bytes`.
    DrawnFormat DrawStored(ObjectName const& name, std::string_view bytes, std::string_view fills);

    /// Of what is drawn, dots per inch.
    unsigned DesignDpi() const { return designDpi_; }

private:
    LinkedStore store_;
    Desk desk_;
    unsigned designDpi_;
};
