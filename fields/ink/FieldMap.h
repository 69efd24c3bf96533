#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Scripting/InkGauge.h"
#include "frontend/context/ContextProcessor.h"

namespace ZplCore {

enum class FieldKind { Text, Barcode, Picture, Shape };

/// A field as it was drawn.
struct MappedField {
    FieldKind kind = FieldKind::Text;
    std::optional<std::uint64_t> place;  ///< of its data in the stream, in bytes; nothing if they are in none
    std::string data;                    ///< the beginning of what it says, UTF-8
    Scripting::FieldInk ink;             ///< as it was drawn: InkGauge::OnPage gives its place on the page
    bool isReversed = false;             ///< inverts what lies beneath
};

/// The fields of a label that have ink, in the order in which they were drawn. A session that is asked for it has one,
/// into which all its labels are noted one after the other.
class FieldMap {
public:
    /// More than any label for people has; what is drawn behind them is not noted.
    static constexpr std::size_t MostFields = 50'000;

    explicit FieldMap(Scripting::InkGauge& gauge) : gauge_(gauge) {}

    void StartLabel() { fields_.clear(); }
    /// A field begins to draw. One within another takes its place.
    void StartField();
    /// The field under way draws a symbol.
    void NoteBarcode() { isBarcode_ = true; }
    void EndField(ContextProcessor const& processor, bool isReversed);

    std::vector<MappedField> const& Fields() const { return fields_; }
    Scripting::InkGauge const& Gauge() const { return gauge_; }

private:
    Scripting::InkGauge& gauge_;
    std::vector<MappedField> fields_;
    bool isBarcode_ = false;
};

}  // namespace ZplCore
