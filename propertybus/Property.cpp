#include "propertybus/Property.h"

#include <algorithm>
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

bool StringProperty::SetValueText(std::string const& text) {
    Set(text);
    return true;
}

std::string BoolProperty::ValueText() const { return TarvoBoolToString(Get()); }

bool BoolProperty::SetValueText(std::string const& text) {
    if (text != "true" && text != "false") return false;
    Set(text == "true");
    return true;
}

void UInt32Property::Set(std::uint32_t value) { TypedProperty::Set(std::clamp(value, low_, high_)); }

std::string UInt32Property::ValueText() const { return std::to_string(Get()); }

bool UInt32Property::SetValueText(std::string const& text) {
    std::uint32_t value = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return false;
    Set(value);
    return true;
}

std::string TarvoBoolToString(bool value) { return value ? "true" : "false"; }
