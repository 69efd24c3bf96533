#include "library/forms/LinkedStore.h"

#include <chrono>
#include <set>
#include <string>
#include <system_error>
#include <utility>

#include "foundation/Files.h"

namespace {

namespace fs = std::filesystem;

/// Of the devices that hold objects.
constexpr char const* Devices[] = {"R", "E", "B", "A"};
/// File systems tell times of changes no finer than that.
constexpr std::chrono::milliseconds Grain(100);

fs::file_time_type ChangeOf(fs::path const& folder) {
    std::error_code error;
    auto const time = fs::last_write_time(folder, error);
    return error ? fs::file_time_type::min() : time;
}

/// The names in a folder that may be those of objects.
std::set<std::string> NamesIn(fs::path const& folder) {
    std::set<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (entry->path().extension() != ".tmp") names.insert(entry->path().filename().string());
    }
    return names;
}

}  // namespace

LinkedStore::LinkedStore(fs::path store)
    : store_(store.empty() ? store : fs::absolute(store)), folder_(fs::temp_directory_path(), "zpl-view-") {}

void LinkedStore::Refresh() {
    folder_.Make();
    for (fs::path const device : Devices) {
        fs::create_directory(folder_.Path() / device);
        auto const there = store_.empty() ? fs::file_time_type::min() : ChangeOf(store_ / device);
        auto& seen = seen_[device];
        bool const isSame = seen.there == there && seen.here == ChangeOf(folder_.Path() / device);
        if (seen.isSettled && isSame) continue;
        LinkDevice(device);
        auto const now = fs::file_time_type::clock::now();
        auto const here = ChangeOf(folder_.Path() / device);
        seen = {there, here, now - there > Grain && now - here > Grain};
    }
}

void LinkedStore::Put(fs::path const& object, std::string_view bytes) {
    if (auto const error = WriteFileAtomically(folder_.Path() / object, bytes)) throw std::system_error(error);
}

void LinkedStore::LinkDevice(fs::path const& device) {
    auto const here = folder_.Path() / device;
    auto const names = store_.empty() ? std::set<std::string>() : NamesIn(store_ / device);
    std::error_code error;
    for (auto const& name : NamesIn(here)) {
        // An object that was stored here hides that of the store.
        if (!names.contains(name) || !fs::is_symlink(here / name, error)) fs::remove(here / name, error);
    }
    for (auto const& name : names) {
        if (!fs::is_symlink(here / name, error)) fs::create_symlink(store_ / device / name, here / name, error);
    }
}
