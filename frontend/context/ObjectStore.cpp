#include "frontend/context/ObjectStore.h"

#include <algorithm>
#include <map>
#include <string>
#include <system_error>

#include "foundation/Files.h"
#include "foundation/Log.h"

namespace {

constexpr char ReadOnlyDevice = 'Z';
constexpr std::string_view MemoryDevice = "R";

/// What an object of `size` bytes takes: files are kept in blocks.
std::uintmax_t SpaceOf(std::uintmax_t size) {
    constexpr std::uintmax_t Block = 4096;
    return (size / Block + 1) * Block;
}

std::uintmax_t SpaceOfFile(std::filesystem::path const& path) {
    std::error_code error;
    auto const size = std::filesystem::file_size(path, error);
    return error ? 0 : SpaceOf(size);
}

/// What each device folder holds, counted once and kept: a stream may store thousands of objects, and looking at all
/// others for each would take ever longer.
std::map<std::filesystem::path, std::uintmax_t>& UsedSpace() {
    static std::map<std::filesystem::path, std::uintmax_t> used;
    return used;
}

std::uintmax_t& UsedSpaceOf(std::filesystem::path const& folder) {
    std::error_code error;
    // A folder that is gone is an empty device.
    if (!std::filesystem::exists(folder, error)) UsedSpace().erase(folder);
    auto const [entry, isNew] = UsedSpace().try_emplace(folder, 0);
    if (isNew) {
        for (std::filesystem::directory_iterator file(folder, error), end; !error && file != end; file.increment(error))
            entry->second += SpaceOfFile(file->path());
    }
    return entry->second;
}

}  // namespace

bool StoreObject(std::filesystem::path const& folder, ObjectName const& name, std::string_view bytes) {
    auto const refuse = [&name](LogTopic topic, std::string const& reason) {
        Log::Report(topic, "object " + name.Text() + " is not stored: " + reason);
        return false;
    };
    if (name.device == ReadOnlyDevice) return refuse(LogTopic::File, "its device is read-only");
    auto const path = folder / name.Path();
    auto& used = UsedSpaceOf(path.parent_path());
    auto const others = used - std::min(used, SpaceOfFile(path));
    if (others + SpaceOf(bytes.size()) > MaximumStoredBytes) return refuse(LogTopic::Limit, "its device is full");
    std::error_code error;
    std::filesystem::create_directories(path.parent_path(), error);
    if (!error) error = WriteFileAtomically(path, bytes, WholeAfter::PowerLoss);
    if (error) return refuse(LogTopic::File, error.message());
    used = others + SpaceOf(bytes.size());
    return true;
}

void ClearMemoryDevice(std::filesystem::path const& folder) {
    std::error_code error;  // what cannot be removed stays
    std::filesystem::remove_all(folder / MemoryDevice, error);
}
