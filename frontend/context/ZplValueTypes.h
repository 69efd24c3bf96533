#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

class ContextProcessor;

/// The plain values that context keys hold.

namespace ZplCore {

struct FieldNotes;
struct Picture;

/// A font's name; a built-in font's is one character.
using FontName = std::string;

/// A font letter: a digit or an upper-case letter. 0 stands for none.
struct BuiltInFont {
    char letter = 0;
    friend bool operator==(BuiltInFont, BuiltInFont) = default;
};

/// A font by its object name.
struct UserFont {
    std::string name;
    friend bool operator==(UserFont const&, UserFont const&) = default;
};

/// A field whose data counts on from copy to copy.
struct SerializationFieldStringData {
    std::string data;
    std::string mask;
    std::string step;
};

}  // namespace ZplCore

namespace ZplContextKeys {

/// What a secondary clock adds to the time, in the order of the command that sets it.
struct ClockOffset {
    int months = 0;
    int days = 0;
    int years = 0;
    int hours = 0;
    int minutes = 0;
    int seconds = 0;
    friend bool operator==(ClockOffset const&, ClockOffset const&) = default;
};

/// How clock times are taken and shown: a format number, whether a time is taken for every copy, and by how many
/// seconds the time of the format must be off for that.
struct ClockMode {
    std::optional<unsigned> format;
    bool everyCopy = false;
    unsigned tolerance = 0;
    friend bool operator==(ClockMode const&, ClockMode const&) = default;
};

/// Where a label is saved as a picture, and whether it is printed too.
struct ISMetaData {
    std::string path;
    bool print = true;
    friend bool operator==(ISMetaData const&, ISMetaData const&) = default;
};

/// What all copies of a format have in common.
struct FormatMemory {
    /// Stored pictures by the names that it recalls them by; null where nothing was stored.
    std::map<std::string, std::shared_ptr<ZplCore::Picture const>> pictures;
    /// Whether one of them is not kept, and read anew for each page.
    bool readsStore = false;
    /// Names of the pictures that have been sent back: each is sent once, however often the format asks.
    std::set<std::string> answered;
    std::size_t answerBytes = 0;  ///< of all these answers
};

using RenderFunction = std::function<void(ContextProcessor&)>;
using DescribeFunction = std::function<void(ContextProcessor const&, ZplCore::FieldNotes&)>;
using SerializeFunctionType = std::function<void(ContextProcessor&, unsigned)>;
using ResponseCallback = std::function<std::optional<std::string>(ContextProcessor const&)>;

}  // namespace ZplContextKeys
