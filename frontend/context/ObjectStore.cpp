#include "frontend/context/ObjectStore.h"

#include <string>
#include <system_error>

#include "foundation/Files.h"
#include "foundation/Log.h"

namespace {

constexpr char ReadOnlyDevice = 'Z';
constexpr std::string_view MemoryDevice = "R";

/// Bytes of all files in `folder` but `except`.
std::uintmax_t SizeOfOthers(std::filesystem::path const& folder, std::filesystem::path const& except) {
    std::uintmax_t total = 0;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;  // a file that vanishes meanwhile has no size
        auto const size = entry->path() == except ? 0 : entry->file_size(ignored);
        if (!ignored) total += size;
    }
    return total;
}

}  // namespace

bool StoreObject(std::filesystem::path const& folder, ObjectName const& name, std::string_view bytes) {
    auto const refuse = [&name](LogTopic topic, std::string const& reason) {
        Log::Report(topic, "Object " + name.Text() + " is not stored: " + reason);
        return false;
    };
    if (name.device == ReadOnlyDevice) return refuse(LogTopic::File, "its device is read-only");
    auto const path = folder / name.Path();
    if (SizeOfOthers(path.parent_path(), path) + bytes.size() > MaximumStoredBytes) {
        return refuse(LogTopic::Limit, "its device is full");
    }
    std::error_code error;
    std::filesystem::create_directories(path.parent_path(), error);
    if (!error) error = WriteFileAtomically(path, bytes);
    return error ? refuse(LogTopic::File, error.message()) : true;
}

void ClearMemoryDevice(std::filesystem::path const& folder) {
    std::error_code error;  // what cannot be removed stays
    std::filesystem::remove_all(folder / MemoryDevice, error);
}
