#include "fields/map/FieldPlaces.h"

#include <algorithm>
#include <utility>

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

/// Commands that set what holds for all fields to come, though they may say it of the field under way too.
bool IsDefault(ZplCommand const& command) { return command.command == "BY" || command.command == "FW"; }

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
    } else if (!field_.IsEmpty()) {
        field_.Add(command);
    } else if (IsDefault(command)) {
        if (command.command == "BY") defaults_.Add(command);
    } else if (IsOrigin(command) || ValuesOfElement(processor) > valuesBefore_) {
        field_ = std::exchange(defaults_, {});
        field_.Add(command);
    } else if (command.command != "FX") {
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
