#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

/// The name of a stored object, `d:name.ext`, brought to upper case. A name can never leave its folder: the device is
/// one of R, E, B, A and Z, the name has 1 to 16 letters, digits, `_` or `-`, the extension 1 to 3 letters or digits.
struct ObjectName {
    char device = 'R';
    std::string name;
    std::string extension;

    /// Reads `text`; what it leaves out is taken from the other arguments. Nothing if a piece is not allowed.
    static std::optional<ObjectName> Parse(std::string_view text, char defaultDevice, std::string_view defaultName,
                                           std::string_view defaultExtension);

    /// Whether `text` names a device itself.
    static bool NamesDevice(std::string_view text) { return text.size() >= 2 && text[1] == ':'; }

    /// The name as commands write it: `R:NAME.EXT`.
    std::string Text() const { return std::string(1, device) + ":" + name + "." + extension; }
    /// The place of the object below a storage folder: `R/NAME.EXT`.
    std::filesystem::path Path() const;

    friend bool operator==(ObjectName const&, ObjectName const&) = default;
};
