#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "fields/graphics/GraphicData.h"
#include "frontend/context/ObjectName.h"

/// Pictures kept by object name in files below a folder. A file starts with the eight letters of the format and its
/// version, followed by bytes per row and number of rows (32 bits each, low byte first), and the rows down to the last
/// one that was stored.
namespace ZplCore {

inline constexpr std::string_view GraphicSignature = "LABELPX1";

/// Stores a picture, over an earlier object of that name. False, with a report, if it is refused or cannot be written.
bool StoreGraphic(std::filesystem::path const& folder, ObjectName const& name, Picture const& picture);

/// The picture of that name; nothing if there is none or it is damaged (reported).
std::optional<Picture> LoadGraphic(std::filesystem::path const& folder, ObjectName const& name);

/// The picture named by `text`, looked for on all devices in their order if the text names none.
std::optional<Picture> FindGraphic(std::filesystem::path const& folder, std::string_view text);

/// The command that stores the picture again under that name, as a host can send it back: base64 text with its check
/// sum, in the characters that a printer starts with, and a line end behind it.
std::string DownloadCommand(ObjectName const& name, Picture const& picture);
/// How long that is at most, in bytes.
std::size_t DownloadSize(Picture const& picture);

}  // namespace ZplCore
