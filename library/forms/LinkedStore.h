#pragma once

#include <filesystem>
#include <map>
#include <string_view>

#include "foundation/TemporaryFolder.h"

/// A folder that shows the objects of a printer's store and takes what is stored without passing it on: each object is
/// a link to that of the store, and an object that is written takes the place of its link. One thread at a time.
class LinkedStore {
public:
    /// The store may be missing, or empty for none.
    explicit LinkedStore(std::filesystem::path store);

    /// Shows what the store holds now, and nothing that was stored here since. Throws std::system_error if it cannot
    /// make its folder.
    void Refresh();
    /// Shows an object with these bytes until the next look at the store. Throws std::system_error.
    void Put(std::filesystem::path const& object, std::string_view bytes);
    std::filesystem::path const& Folder() const { return folder_.Path(); }

private:
    using Time = std::filesystem::file_time_type;

    /// When the folders of a device were changed, there and here, as of the last look.
    struct Seen {
        Time there;
        Time here;
        bool isSettled = false;  ///< long enough ago that a later change has another time
    };

    void LinkDevice(std::filesystem::path const& device);

    std::filesystem::path store_;
    TemporaryFolder folder_;
    std::map<std::filesystem::path, Seen> seen_;
};
