#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

#include "frontend/context/ObjectName.h"

/// All objects on one device letter together take at most this many bytes, counted in blocks of 4 KiB.
inline constexpr std::uintmax_t MaximumStoredBytes = 64UL * 1024 * 1024;

/// Writes an object below `folder`, over an earlier one of that name. False, with a report, if its device is read-only
/// or full, or the file cannot be written.
bool StoreObject(std::filesystem::path const& folder, ObjectName const& name, std::string_view bytes);

/// Forgets what is stored on the memory device, R, as a printer does without power.
void ClearMemoryDevice(std::filesystem::path const& folder);
