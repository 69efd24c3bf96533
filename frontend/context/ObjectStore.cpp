#include "frontend/context/ObjectStore.h"

#include <sys/stat.h>

#include <algorithm>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <system_error>
#include <vector>

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

/// Objects of kept folders that wait for the disk, in files without their names. One wait for many takes hardly longer
/// than one for one, and a stream may store thousands of objects. As of disks, there is one of these in the process.
class UnsettledObjects {
public:
    using Path = std::filesystem::path;

    static UnsettledObjects& Process() {
        static UnsettledObjects objects;
        return objects;
    }

    void Keep(Path const& folder) {
        std::lock_guard const lock(mutex_);
        kept_.insert(folder.lexically_normal());
    }

    bool IsKept(Path const& folder) {
        std::lock_guard const lock(mutex_);
        return kept_.contains(folder.lexically_normal());
    }

    std::error_code Add(Path const& path, std::string_view bytes) {
        auto file = std::make_unique<AtomicFile>(path);
        if (auto const error = file->Write(bytes)) return error;
        std::lock_guard const lock(mutex_);
        files_[path] = std::move(file);
        return {};
    }

    /// Where the bytes are that are to have this path.
    Path Of(Path const& path) {
        std::lock_guard const lock(mutex_);
        auto const found = files_.find(path);
        return found == files_.end() ? path : found->second->TemporaryPath();
    }

    bool AreMany() {
        constexpr std::size_t Most = 128;  // each is an open file
        std::lock_guard const lock(mutex_);
        return files_.size() >= Most;
    }

    /// The paths of those that could not be kept.
    std::vector<Path> Settle() {
        std::vector<Path> failed;
        std::lock_guard const lock(mutex_);
        for (auto first = files_.begin(); first != files_.end();) {
            auto const folder = first->first.parent_path();
            auto end = first;
            while (end != files_.end() && end->first.parent_path() == folder) ++end;
            SettleFolder(folder, first, end, failed);
            first = end;
        }
        files_.clear();
        return failed;
    }

private:
    using Files = std::map<Path, std::unique_ptr<AtomicFile>>;

    /// Few are waited for one by one: others may have much else for the disk.
    static void SettleFolder(Path const& folder, Files::iterator first, Files::iterator end,
                             std::vector<Path>& failed) {
        constexpr std::ptrdiff_t Few = 4;
        bool const areMany = std::distance(first, end) > Few;
        bool const areSynced = areMany && !first->second->SyncFileSystem();
        for (; first != end; ++first) {
            auto const error = first->second->Keep(areSynced ? WholeAfter::ProcessEnd : WholeAfter::PowerLoss);
            if (!error) continue;
            failed.push_back(first->first);
            Log::Report(LogTopic::File, "object " + folder.filename().string() + ':' +
                                            first->first.filename().string() + " is not stored: " + error.message());
        }
        SyncFolder(folder);
    }

    std::mutex mutex_;
    std::set<Path> kept_;
    Files files_;
};

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
        auto const others = used.bytes - std::min(used.bytes, SpaceOfFile(UnsettledObjects::Process().Of(path)));
        if (others + SpaceOf(size) > MaximumStoredBytes) return false;
        used.bytes = others + SpaceOf(size);
        // A folder of objects that is not there yet is made for its owner alone.
        ::mkdir(path.parent_path().parent_path().c_str(), S_IRWXU);
        // Under the lock, as a folder that is not there counts as empty.
        std::filesystem::create_directories(path.parent_path(), error);
        return true;
    }

    /// Whether the folder of that file is not as it was when it was counted.
    bool HasChanged(std::filesystem::path const& path) {
        std::lock_guard const lock(mutex_);
        auto const folder = path.parent_path();
        return Of(folder).counted != TimeOf(folder);
    }

    /// Counts the folder of that file anew when it is next asked for.
    void Forget(std::filesystem::path const& path) {
        std::lock_guard const lock(mutex_);
        used_.erase(path.parent_path());
    }

private:
    struct Used {
        std::uintmax_t bytes = 0;
        std::filesystem::file_time_type counted;  ///< when the folder had last changed
    };

    static std::filesystem::file_time_type TimeOf(std::filesystem::path const& folder) {
        std::error_code error;
        return std::filesystem::last_write_time(folder, error);
    }

    Used& Of(std::filesystem::path const& folder) {
        std::error_code error;
        // A folder that is gone is an empty device.
        if (!std::filesystem::exists(folder, error)) used_.erase(folder);
        auto const [entry, isNew] = used_.try_emplace(folder);
        if (isNew) {
            entry->second.counted = TimeOf(folder);
            for (std::filesystem::directory_iterator file(folder, error), end; !error && file != end;
                 file.increment(error))
                entry->second.bytes += SpaceOfFile(file->path());
        }
        return entry->second;
    }

    std::mutex mutex_;
    std::map<std::filesystem::path, Used> used_;
};

/// Others may have removed objects since they were counted; that counts when there is no room left.
bool TakeSpace(std::filesystem::path const& path, std::size_t size, std::error_code& error) {
    if (UsedSpace::Process().Take(path, size, error)) return true;
    if (!UsedSpace::Process().HasChanged(path)) return false;
    SettleObjects();
    UsedSpace::Process().Forget(path);
    return UsedSpace::Process().Take(path, size, error);
}

}  // namespace

bool StoreObject(std::filesystem::path const& folder, ObjectName const& name, std::string_view bytes) {
    auto const refuse = [&name](LogTopic topic, std::string const& reason) {
        Log::Report(topic, "object " + name.Text() + " is not stored: " + reason);
        return false;
    };
    if (name.device == ReadOnlyDevice) return refuse(LogTopic::File, "its device is read-only");
    if (UnsettledObjects::Process().AreMany()) SettleObjects();
    auto const path = folder / name.Path();
    std::error_code error;
    if (!TakeSpace(path, bytes.size(), error)) return refuse(LogTopic::Limit, "its device is full");
    bool const isKept = name.device != MemoryDevice.front() && UnsettledObjects::Process().IsKept(folder);
    if (!error) error = isKept ? UnsettledObjects::Process().Add(path, bytes) : WriteFileAtomically(path, bytes);
    if (!error) return true;
    UsedSpace::Process().Forget(path);
    return refuse(LogTopic::File, error.message());
}

void KeepObjects(std::filesystem::path const& folder) {
    UnsettledObjects::Process().Keep(folder);
    std::error_code error;
    std::vector<std::filesystem::path> left;  // by a process that was killed
    for (std::filesystem::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->path().extension() == ".tmp") left.push_back(entry->path());
    }
    for (auto const& path : left) std::filesystem::remove(path, error);
}

void SettleObjects() {
    for (auto const& path : UnsettledObjects::Process().Settle()) UsedSpace::Process().Forget(path);
}

std::filesystem::path ObjectFile(std::filesystem::path const& folder, std::filesystem::path const& path) {
    return UnsettledObjects::Process().Of(folder / path);
}

void ClearMemoryDevice(std::filesystem::path const& folder) {
    std::error_code error;  // what cannot be removed stays
    std::filesystem::remove_all(folder / MemoryDevice, error);
}
