#include "frontend/context/ObjectStore.h"

#include <sys/stat.h>

#include <algorithm>
#include <map>
#include <mutex>
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
/// others for each would take ever longer. It tells of folders of the disk, and so belongs to all sessions of the
/// process.
class UsedSpace {
public:
    static UsedSpace& Process() {
        static UsedSpace used;
        return used;
    }

    /// Takes the room for an object of `size` bytes in place of the file at `path`, and makes its folder; false if
    /// there is not so much.
    bool Take(std::filesystem::path const& path, std::size_t size, std::error_code& error) {
        std::lock_guard const lock(mutex_);
        auto& used = Of(path.parent_path());
        auto const others = used - std::min(used, SpaceOfFile(path));
        if (others + SpaceOf(size) > MaximumStoredBytes) return false;
        used = others + SpaceOf(size);
        // A folder of objects that is not there yet is made for its owner alone.
        ::mkdir(path.parent_path().parent_path().c_str(), S_IRWXU);
        // Under the lock, as a folder that is not there counts as empty.
        std::filesystem::create_directories(path.parent_path(), error);
        return true;
    }

    /// Counts the folder of that file anew when it is next asked for.
    void Forget(std::filesystem::path const& path) {
        std::lock_guard const lock(mutex_);
        used_.erase(path.parent_path());
    }

private:
    std::uintmax_t& Of(std::filesystem::path const& folder) {
        std::error_code error;
        // A folder that is gone is an empty device.
        if (!std::filesystem::exists(folder, error)) used_.erase(folder);
        auto const [entry, isNew] = used_.try_emplace(folder, 0);
        if (isNew) {
            for (std::filesystem::directory_iterator file(folder, error), end; !error && file != end;
                 file.increment(error))
                entry->second += SpaceOfFile(file->path());
        }
        return entry->second;
    }

    std::mutex mutex_;
    std::map<std::filesystem::path, std::uintmax_t> used_;
};

}  // namespace

bool StoreObject(std::filesystem::path const& folder, ObjectName const& name, std::string_view bytes) {
    auto const refuse = [&name](LogTopic topic, std::string const& reason) {
        Log::Report(topic, "object " + name.Text() + " is not stored: " + reason);
        return false;
    };
    if (name.device == ReadOnlyDevice) return refuse(LogTopic::File, "its device is read-only");
    auto const path = folder / name.Path();
    std::error_code error;
    if (!UsedSpace::Process().Take(path, bytes.size(), error)) return refuse(LogTopic::Limit, "its device is full");
    if (!error) error = WriteFileAtomically(path, bytes, WholeAfter::PowerLoss);
    if (!error) return true;
    UsedSpace::Process().Forget(path);
    return refuse(LogTopic::File, error.message());
}

void ClearMemoryDevice(std::filesystem::path const& folder) {
    std::error_code error;  // what cannot be removed stays
    std::filesystem::remove_all(folder / MemoryDevice, error);
}
