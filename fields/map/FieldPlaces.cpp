#include "fields/map/FieldPlaces.h"

#include <algorithm>
#include <string_view>

namespace ZplCore {

namespace {

void Grow(std::optional<ByteRange>& range, std::uint64_t offset, std::uint64_t length) {
    if (!range) {
        range = ByteRange{offset, length};
        return;
    }
    std::uint64_t const end = std::max(range->End(), offset + length);
    range->offset = std::min(range->offset, offset);
    range->length = end - range->offset;
}

std::size_t ValuesOfElement(ContextProcessor const& processor) {
    Context const* const element = processor.GetContext(ContextProcessor::ElementContext);
    return element ? element->Count() : 0;
}

bool IsComment(ZplCommand const& command) { return command.command == "FX"; }

/// Commands that set what holds for all fields to come, though they may say it of the field under way too.
bool IsDefault(ZplCommand const& command) { return command.command == "BY" || command.command == "FW"; }

/// By its letters alone: fonts, barcodes, graphics, and what their names begin with an F.
bool IsOfFields(ZplCommand const& command) {
    return std::string_view("ABFG").find(command.command.front()) != std::string_view::npos && !IsDefault(command) &&
           !IsComment(command);
}

/// An origin may have ended the field before, of which nothing is left then.
bool IsOrigin(ZplCommand const& command) { return command.command == "FO" || command.command == "FT"; }

}  // namespace

void FieldPlace::Add(ZplCommand const& command) {
    if (!command.stored) {
        if (command.offset) Grow(inStream, *command.offset, command.length);
        return;
    }
    format = command.stored->format;
    Grow(inFormat, command.stored->offset, command.stored->length);
    if (command.offset) recall = ByteRange{*command.offset, command.length};
}

void FieldPlaces::StartCommand(ZplCommand const& command, ContextProcessor const& processor) {
    // It ends while its end runs.
    if (command.command == "FS" && !field_.IsEmpty()) field_.Add(command);
    valuesBefore_ = ValuesOfElement(processor);
}

void FieldPlaces::EndCommand(ZplCommand const& command, ContextProcessor const& processor) {
    if (command.command == "FS") {
        Reset();
        return;
    }
    bool const saysMore = ValuesOfElement(processor) > valuesBefore_ && !IsDefault(command);
    bool const belongs = field_.IsEmpty() ? saysMore || IsOrigin(command) : saysMore || IsOfFields(command);
    if (belongs) {
        if (field_.IsEmpty()) field_ = defaults_;
        defaults_ = {};
        field_.Add(command);
    } else if (command.command == "BY") {
        defaults_.Add(command);
    } else if (!IsComment(command)) {
        defaults_ = {};
    }
}

void FieldPlaces::Reset() {
    field_ = {};
    defaults_ = {};
}

std::optional<ByteRange> StoredSources::Find(std::string const& format, ByteRange const& range) const {
    auto const stored = commands_.find(format);
    if (stored == commands_.end()) return std::nullopt;
    std::optional<ByteRange> place;
    for (auto const& [offset, source] : stored->second) {
        if (offset >= range.offset && offset < range.End()) Grow(place, source.offset, source.length);
    }
    return place;
}

}  // namespace ZplCore
