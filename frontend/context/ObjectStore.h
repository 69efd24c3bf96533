#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

#include "frontend/context/ObjectName.h"

/// All objects on one device letter together take at most this many bytes, counted in blocks of 4 KiB.
inline constexpr std::uintmax_t MaximumStoredBytes = 64UL * 1024 * 1024;

/// From now on the objects below `folder` are kept through a loss of power, but for those of the memory device: what is
/// stored is read back at once, but has the place of an earlier object only when it is settled. For a folder that
/// outlasts its process; without this none waits for the disk.
void KeepObjects(std::filesystem::path const& folder);

/// Waits for the disk, once for all that was stored since. An object that has been settled outlasts a loss of power;
/// where one has not, the object that was there before stands, whole. What cannot be kept is reported.
void SettleObjects();

/// The file of the object at `path` below `folder`, settled or not.
std::filesystem::path ObjectFile(std::filesystem::path const& folder, std::filesystem::path const& path);

/// Writes an object below `folder`, over an earlier one of that name. False, with a report, if its device is read-only
/// or full, or the file cannot be written.
bool StoreObject(std::filesystem::path const& folder, ObjectName const& name, std::string_view bytes);

/// Forgets what is stored on the memory device, R, as a printer does without power.
void ClearMemoryDevice(std::filesystem::path const& folder);
