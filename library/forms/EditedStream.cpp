#include "library/forms/EditedStream.h"

#include <algorithm>
#include <utility>

namespace {

/// Of changes that can be undone.
constexpr std::size_t MostSteps = 1000;
constexpr std::size_t MostBytes = 16UL * 1024 * 1024;

/// Data that show where a field stands, in characters that all sets have.
std::string SampleOf(DrawnField const& field) {
    if (field.details.notes.kind == ZplCore::FieldKind::Barcode)
        return field.details.notes.symbology == "QR Code" ? "QA,12345678" : "12345678";
    std::string sample;
    for (char const c : field.details.prompt) {
        if (c >= ' ' && c < 0x7F && c != '^' && c != '~') sample += c;
    }
    return sample.empty() ? "#" + std::to_string(*field.details.number) : sample;
}

}  // namespace

EditedStream::EditedStream(FormatDrawer& drawer, std::string bytes, std::optional<ObjectName> stored)
    : drawer_(drawer), stored_(std::move(stored)), page_(Draw(std::move(bytes))), saved_(page_->bytes) {}

/// True if there is one that was not there before.
bool EditedStream::AddSamples(DrawnFormat const& drawn) {
    bool isNew = false;
    for (auto const& field : drawn.fields) {
        if (!field.isWaiting) continue;
        auto const [entry, isAdded] = samples_.try_emplace(*field.details.number, SampleOf(field));
        // What a barcode can show, a text can too.
        if (field.details.notes.kind == ZplCore::FieldKind::Barcode) entry->second = SampleOf(field);
        isNew = isNew || isAdded;
    }
    return isNew;
}

std::string EditedStream::Fills() const {
    std::string fills;
    for (auto const& [number, sample] : samples_) fills += "^FN" + std::to_string(number) + "^FD" + sample + "^FS";
    return fills;
}

EditedStream::Page EditedStream::Draw(std::string bytes) {
    auto const source = stored_ ? StreamCommands::Source::StoredFormat : StreamCommands::Source::Stream;
    auto page = std::make_shared<EditedPage>();
    page->designDpi = drawer_.DesignDpi();
    page->bytes = std::move(bytes);
    page->commands = StreamCommands(page->bytes, source);
    if (!stored_) {
        page->drawn = drawer_.Draw(page->bytes);
        return page;
    }
    page->drawn = drawer_.DrawStored(*stored_, page->bytes, Fills());
    if (AddSamples(page->drawn)) page->drawn = drawer_.DrawStored(*stored_, page->bytes, Fills());
    return page;
}

FieldTraits EditedStream::TraitsOf(std::size_t field) const {
    StreamEdit none;
    return FieldEdits(*page_, none).TraitsOf(field);
}

bool EditedStream::Edit(std::function<void(FieldEdits&)> const& change, std::string const& key) {
    bool const isGoingOn = before_ && !key.empty() && key == key_;
    Page const from = isGoingOn ? before_ : page_;
    StreamEdit edit;
    FieldEdits edits(*from, edit);
    change(edits);
    auto bytes = edit.ApplyTo(from->bytes);
    if (bytes == page_->bytes) return false;
    auto const next = bytes == from->bytes ? from : Draw(std::move(bytes));
    if (isGoingOn) undo_.pop_back();
    page_ = next;
    redo_.clear();
    before_ = next == from ? nullptr : from;
    key_ = key;
    if (next != from) Remember(edit.InverseFor(from->bytes));
    return true;
}

void EditedStream::Remember(StreamEdit edit) {
    undo_.push_back(std::move(edit));
    std::size_t bytes = 0;
    std::size_t kept = 0;
    while (kept < std::min(undo_.size(), MostSteps)) {
        bytes += undo_[undo_.size() - 1 - kept].Bytes();
        if (bytes > MostBytes && kept > 0) break;
        ++kept;
    }
    undo_.erase(undo_.begin(), undo_.end() - static_cast<std::ptrdiff_t>(kept));
}

bool EditedStream::Step(std::deque<StreamEdit>& from, std::deque<StreamEdit>& to) {
    if (from.empty()) return false;
    auto next = Draw(from.back().ApplyTo(page_->bytes));
    to.push_back(from.back().InverseFor(page_->bytes));
    from.pop_back();
    page_ = std::move(next);
    before_ = nullptr;
    return true;
}

bool EditedStream::Undo() { return Step(undo_, redo_); }
bool EditedStream::Redo() { return Step(redo_, undo_); }

void EditedStream::SetSaved(std::optional<ObjectName> stored) {
    stored_ = std::move(stored);
    saved_ = page_->bytes;
}
