#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "frontend/context/ContextProcessor.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore {

/// How many templates one format keeps; further ones are refused with a report. Each holds a copy of all contexts.
inline constexpr std::size_t MaximumSavedFields = 10000;
/// With how many bytes the templates of a label that share a number are filled beyond the first of each number.
inline constexpr std::uint64_t MostFilledBytes = std::uint64_t{8} << 20;

/// Ends the field that `current` describes: saves it as a template or draws it, and clears it. False, and nothing
/// done, if `current` is not the element context or is empty.
bool ProcessElementCommands(Context& current, ContextProcessor& processor);

/// Ends a field that is whole already and has only not been closed: hosts leave out the end of picture fields.
void EndWholeField(Context& current, ContextProcessor& processor);

/// Whether a template of that number was saved in this format.
bool HasSavedField(ContextProcessor const& processor, unsigned fieldNumber);

/// Keeps the field under way as a further template of a number that has one: formats print one number as text and as a
/// barcode. `render` draws it; a field that neither draws nor has a place of its own is none.
void SaveFurtherTemplate(ContextProcessor& processor, unsigned fieldNumber,
                         ZplContextKeys::RenderFunction const& render);

/// Fills the templates of a number with `data` and draws them; without one only the data are noted under the number. A
/// template keeps its own font, unless the field that fills it names one itself.
void InvokeSavedFieldRenderFunction(ContextProcessor& processor, unsigned fieldNumber, std::string_view data);

/// Which value of a serial field stands on the copy under way (from 0), with its number of replicates.
unsigned GetSerializationIndex(unsigned copyIndex, unsigned replications);

}  // namespace ZplCore
