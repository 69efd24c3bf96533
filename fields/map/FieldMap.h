#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Scripting/GraphicContext.h"
#include "Scripting/InkGauge.h"
#include "fields/map/FieldNotes.h"
#include "fields/map/FieldPlaces.h"
#include "fields/map/SymbolReader.h"
#include "frontend/context/ContextProcessor.h"
#include "frontend/stream/ZplTypes.h"

namespace ZplCore {

/// The font of a text field, in dots of the stream.
struct FieldFont {
    std::string name;  ///< its letter, or the name of a font file
    unsigned height = 0;
    unsigned width = 0;
    unsigned magnificationX = 0;  ///< of a bitmap font; 0 for one that scales
    unsigned magnificationY = 0;
};

/// Where a field asked to stand, in dots of the stream, as its origin says.
struct FieldOrigin {
    int x = 0;
    int y = 0;
    Baseline baseline = Baseline::Top;
};

/// What a person would point at of a field.
struct FieldDetails {
    FieldNotes notes;
    FieldPlace place;       ///< of its commands, or of those that fill it
    FieldPlace definition;  ///< of the commands of its template; empty if it fills none
    std::optional<unsigned> number;
    std::string prompt;  ///< of its number, as it was sent
    std::optional<FieldOrigin> origin;
    ZplOrientation orientation = ZplOrientation::Normal;
    std::string text;  ///< as printed, UTF-8; the data of a barcode
    std::optional<FieldFont> font;
};

/// Its kind or symbology, font and settings in one line: "text, font 0, font height 30 dots, font width 20 dots".
std::string Describe(FieldDetails const& details);

/// What a barcode was to look like and to say.
struct MappedSymbol {
    std::string_view symbology;
    ZplOrientation orientation = ZplOrientation::Normal;
    std::string encoded;                         ///< the bytes that its encoder was given; empty if it did not tell
    std::vector<Scripting::PixelRows> pictures;  ///< each of its symbols as it would stand on white paper
};

/// What there is to say of a barcode that a scanner may not read.
struct ScanVerdict {
    bool isFault = false;  ///< it cannot be read, else it is only against its symbology
    std::string text;      ///< a sentence, with how to mend it
};

/// A field as it was drawn.
struct MappedField {
    bool isBarcode = false;
    std::optional<std::uint64_t> place;  ///< of its data in the stream, in bytes; nothing if they are in none
    std::string data;                    ///< the beginning of what it says, UTF-8
    Scripting::FieldInk ink;             ///< as it was drawn: InkGauge::OnPage gives its place on the page
    bool isReversed = false;             ///< inverts what lies beneath
    std::unique_ptr<FieldDetails const> details = nullptr;  ///< null unless the map was asked for them
    std::optional<FieldOrigin> origin = {};                 ///< noted where symbols are asked for
    std::unique_ptr<MappedSymbol const> symbol = nullptr;   ///< of a barcode that has one; null unless asked for
    std::optional<ScanVerdict> verdict = {};                ///< on its symbol, once it has been looked at

    /// Whether it draws nothing.
    bool IsEmpty() const { return ink.All().IsEmpty(); }
};

/// The fields of a label that have ink, in the order in which they were drawn; where symbols are asked for, also white
/// boxes, and where details are asked for, also those
/// that have none, and behind all of them the templates that nothing has filled. A session that is asked for it has
/// one, into which all its labels are noted one after the other, each until the next one starts. One thread at a time.
class FieldMap {
public:
    /// More than any label for people has; what is drawn behind them is not noted.
    static constexpr std::size_t MostFields = 50'000;

    /// Each holds what stands before it.
    enum class Detail {
        Ink,
        Symbols,     ///< those of barcodes, for who looks whether they scan
        Everything,  ///< what a person would point at
    };

    explicit FieldMap(Scripting::InkGauge& gauge, Detail detail = Detail::Ink) : gauge_(gauge), detail_(detail) {}

    /// What is noted of a label on its way from one map to another.
    struct Label {
        std::vector<MappedField> fields;
        Scripting::LabelSettings page;
    };

    void StartLabel();
    void EndLabel(Scripting::LabelSettings const& settings);
    /// Hands out the label that was ended last, for the map of a target that takes over what was drawn of it.
    Label HandOut() { return {std::exchange(fields_, {}), page_}; }
    void TakeOver(Label label) {
        fields_ = std::move(label.fields);
        page_ = label.page;
    }
    /// A field begins to draw. One within another takes its place.
    void StartField();
    /// The field under way draws a symbol of a symbology, whose name is a literal.
    void NoteBarcode(std::string_view symbology);
    /// The bytes that the symbol under way is made of, or a part of them.
    void NoteEncoded(std::string_view bytes) {
        if (WantsSymbols()) encoded_ += bytes;
    }
    /// It has drawn. Gives what is noted of it, so that the caller adds what it says, until the next field ends; null
    /// if nothing is.
    MappedField* EndField(bool isReversed);
    /// Adds its symbol to a field that has just ended.
    void KeepSymbol(MappedField& field, ZplOrientation orientation);
    /// What there is to say of the barcode that is field `index`.
    void Judge(std::size_t index, ScanVerdict verdict) { fields_[index].verdict = std::move(verdict); }
    /// It was none.
    void DropField() { gauge_.EndField(); }

    bool WantsSymbols() const { return detail_ != Detail::Ink; }
    /// Whoever takes a label from now on has its barcodes judged himself: see Zpl::Label::JudgeLeft.
    void LeaveJudging() { leavesJudging_ = true; }
    bool LeavesJudging() const { return leavesJudging_; }
    /// Symbols are also read by this one; null: they are not.
    void SetReader(std::shared_ptr<SymbolReader const> reader) { reader_ = std::move(reader); }
    SymbolReader const* Reader() const { return reader_.get(); }
    bool WantsDetails() const { return detail_ == Detail::Everything; }

    // The calls from here on are for maps with details alone.

    FieldPlaces& Places() { return places_; }
    StoredSources& Sources() { return sources_; }
    StoredSources const& Sources() const { return sources_; }
    /// The field under way has that number.
    void NoteNumber(unsigned number, std::string prompt);
    /// Puts place and number of the field under way into `details`.
    void TellField(FieldDetails& details) const;
    /// The field under way is over.
    void ForgetField();
    /// The field under way is kept as the template that its label knows by `sequence`.
    void KeepTemplate(unsigned sequence, std::unique_ptr<FieldDetails> details);
    /// Data have been filled into a template: `details` gets its definition and prompt.
    void FillTemplate(unsigned sequence, FieldDetails& details);

    std::vector<MappedField> const& Fields() const { return fields_; }
    Scripting::InkGauge const& Gauge() const { return gauge_; }
    /// Of the label that was ended last.
    Scripting::LabelSettings const& Page() const { return page_; }

private:
    struct Template {
        std::unique_ptr<FieldDetails> details;
        bool isFilled = false;
    };

    Scripting::InkGauge& gauge_;
    Detail detail_;
    bool leavesJudging_ = false;
    std::shared_ptr<SymbolReader const> reader_;
    std::vector<MappedField> fields_;
    std::string_view symbology_;  ///< of the field under way; empty if it is no barcode
    std::string encoded_;
    Scripting::LabelSettings page_;

    FieldPlaces places_;
    StoredSources sources_;
    std::optional<unsigned> number_;
    std::string prompt_;
    std::map<unsigned, Template> templates_;
};

}  // namespace ZplCore
