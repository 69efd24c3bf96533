#pragma once

#include "fields/map/FieldFunction.h"
#include "frontend/context/ContextProcessor.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/stream/ZplCommand.h"

/// What the handlers of barcode commands read and store alike. A parameter that is left out or cannot be used leaves
/// the setting of the enclosing contexts in force.
namespace ZplCore {

/// Parameter 0: the orientation of the field.
void StoreBarcodeOrientation(Context& current, ZplCommand const& command, ContextProcessor& processor);
/// The height of the bars in dots, at least 1.
void StoreBarcodeHeight(Context& current, ZplCommand const& command, std::size_t index, ContextProcessor& processor);
/// A yes or no; `fallback` also for what is neither.
bool ParseFlag(ZplCommand const& command, std::size_t index, bool fallback);
/// The first character in upper case.
char ParseLetter(ZplCommand const& command, std::size_t index, char fallback);

/// What draws the field by `render`, a symbol of that symbology. A symbol too large to be drawn is refused like other
/// parameters that make it impossible, and the label goes on.
ZplContextKeys::RenderFunction BarcodeRender(ZplContextKeys::RenderFunction render, std::string_view symbology);
/// Tells the map of fields, where there is one, what the symbol under way is made of.
void NoteEncoded(ContextProcessor const& atRender, std::string_view bytes);

/// Stores that, and what tells of the field: its symbology, and by `describe(processor, notes)` its settings. Always
/// true: the command is handled.
template <typename Describe>
bool StoreBarcodeRender(Context& current, ContextProcessor& processor, ZplContextKeys::RenderFunction render,
                        std::string_view symbology, Describe describe) {
    StoreFieldFunction(current, processor, BarcodeRender(std::move(render), symbology),
                       [=](ContextProcessor const& at, FieldNotes& notes) {
                           notes.kind = FieldKind::Barcode;
                           notes.symbology = symbology;
                           describe(at, notes);
                       });
    processor.set(current, ZplContextKeys::IsBarcode, true);
    return true;
}

/// Where the line that people read stands.
std::string_view NameOfLine(bool printLine, bool lineAbove);
/// Tells of bars by the barcode defaults and the field in force, and of their line.
void DescribeBars(ContextProcessor const& at, FieldNotes& notes, bool printLine, bool lineAbove, bool usesRatio);

}  // namespace ZplCore
