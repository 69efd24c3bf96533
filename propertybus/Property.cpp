#include "propertybus/Property.h"

#include <algorithm>
#include <atomic>
#include <charconv>

void Property::AddCallback(Callback callback) {
    std::lock_guard const lock(mutex_);
    callbacks_.push_back(std::move(callback));
}

void Property::NotifyChanged() {
    // A copy: a callback may add another one, or set the property again.
    std::vector<Callback> callbacks;
    {
        std::lock_guard const lock(mutex_);
        callbacks = callbacks_;
    }
    for (auto const& callback : callbacks) callback(shared_from_this());
}

std::string Property::ValueText() const {
    std::lock_guard const lock(mutex_);
    return HeldText();
}

void Property::ConnectWriter(Writer writer) {
    std::lock_guard const lock(mutex_);
    writer_ = std::move(writer);
}

bool Property::Admit(bool differs, Origin origin, std::string const& text) {
    // What arrives while a write is under way was written before that write was taken, and will be replaced by it.
    if (origin != Origin::Process && writesUnderWay_ > 0) return false;
    bool const countsAnyway =
        origin == Origin::Process ? everyWriteCounts_ : origin == Origin::Bus && everyDeliveryCounts_;
    if (!differs && !countsAnyway) return false;
    if (origin == Origin::Process && writer_) {
        NoteWrite(text);
        if (heldFor_ == 0) writer_(text);
    }
    return true;
}

void Property::NoteWrite(std::string const& text) {
    constexpr std::size_t MostRepeats = 1000;
    static std::atomic<std::uint64_t> writes{0};
    lastWrite_ = ++writes;
    ++writesUnderWay_;
    if (!everyWriteCounts_) {
        repeats_.clear();
    } else if (repeats_.empty()) {
        textBeforeRepeats_ = HeldText();
    }
    if (repeats_.size() == MostRepeats) DropRepeat();
    repeats_.push_back(text);
}

void Property::DropRepeat() {
    if (everyWriteCounts_) textBeforeRepeats_ = std::move(repeats_.front());
    repeats_.pop_front();
}

void Property::NoteTaken() {
    std::function<void()> callback;
    {
        std::lock_guard const lock(mutex_);
        if (writesUnderWay_ > 0) --writesUnderWay_;
        if (repeats_.size() > writesUnderWay_) DropRepeat();
        if (writesUnderWay_ == 0) callback = onTaken_;
    }
    if (callback) callback();
}

void Property::SetTakenCallback(std::function<void()> callback) {
    std::lock_guard const lock(mutex_);
    onTaken_ = std::move(callback);
}

bool Property::IsTaken() const {
    std::lock_guard const lock(mutex_);
    return writesUnderWay_ == 0;
}

std::uint64_t Property::LastWrite() const {
    std::lock_guard const lock(mutex_);
    return lastWrite_;
}

std::unique_lock<std::mutex> Property::TakeTurn() {
    static std::mutex turns;
    return std::unique_lock(turns);
}

void Property::HoldWrites(unsigned link) {
    std::lock_guard const lock(mutex_);
    heldFor_ = link;
}

void Property::Resend(unsigned link) {
    std::lock_guard const lock(mutex_);
    if (heldFor_ != 0 && heldFor_ != link) return;
    heldFor_ = 0;
    if (!writer_) return;
    writesUnderWay_ = repeats_.size();
    for (auto const& text : repeats_) writer_(text);
}

std::string Property::TextToPublish() const {
    std::lock_guard const lock(mutex_);
    return everyWriteCounts_ && !repeats_.empty() ? textBeforeRepeats_ : HeldText();
}

bool StringProperty::Take(std::string const& text, Origin origin) {
    Store(text, origin);
    return true;
}

bool BoolProperty::Take(std::string const& text, Origin origin) {
    if (text != "true" && text != "false") return false;
    Store(text == "true", origin);
    return true;
}

void UInt32Property::Set(std::uint32_t value) { Store(std::clamp(value, low_, high_), Origin::Process); }

bool UInt32Property::Take(std::string const& text, Origin origin) {
    std::uint32_t value = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return false;
    Store(std::clamp(value, low_, high_), origin);
    return true;
}

std::string PropertyText(std::string const& value) { return value; }
std::string PropertyText(bool value) { return TarvoBoolToString(value); }
std::string PropertyText(std::uint32_t value) { return std::to_string(value); }

std::string TarvoBoolToString(bool value) { return value ? "true" : "false"; }
