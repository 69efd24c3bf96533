#include "library/forms/StoredFormats.h"

#include <algorithm>
#include <stdexcept>
#include <system_error>
#include <tuple>

#include "foundation/Files.h"
#include "foundation/Log.h"
#include "frontend/context/ObjectName.h"
#include "frontend/context/ObjectStore.h"

namespace {

constexpr std::string_view Devices = "ER";
constexpr std::string_view Extension = "ZPL";

/// As objects are named, so that no text leaves the folder.
ObjectName NameOf(StoredFormat const& format) {
    auto const name = ObjectName::Parse(format.FullName(), Devices.front(), "", Extension);
    bool const isAllowed = name && Devices.find(name->device) != Devices.npos && name->extension == Extension;
    if (!isAllowed)
        throw std::runtime_error('"' + format.name +
                                 "\" cannot be the name of a format: it has 1 to 16 letters, digits, - or _");
    return *name;
}

void AddFormatsOf(std::filesystem::path const& folder, char device, std::vector<StoredFormat>& formats) {
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder / std::string(1, device), error), end; !error && entry != end;
         entry.increment(error)) {
        auto const file = entry->path().filename().string();
        auto const name = ObjectName::Parse(device + (':' + file), device, "", "-");
        std::error_code gone;
        auto const size = entry->file_size(gone);
        bool const isFormat = name && name->extension == Extension && name->Path().filename() == file;
        if (gone || !isFormat || !entry->is_regular_file(gone)) continue;
        formats.push_back({std::string(1, device), file, size});
    }
}

}  // namespace

StoredFormat StoredFormat::Named(std::string_view fullName) {
    auto const colon = fullName.find(':');
    if (colon == fullName.npos) return {"E", std::string(fullName)};
    return {std::string(fullName.substr(0, colon)), std::string(fullName.substr(colon + 1))};
}

std::vector<StoredFormat> StoredFormats::List() const {
    std::vector<StoredFormat> formats;
    for (char const device : Devices) AddFormatsOf(folder_, device, formats);
    std::sort(formats.begin(), formats.end(),
              [](auto const& a, auto const& b) { return std::tie(a.name, a.device) < std::tie(b.name, b.device); });
    return formats;
}

std::string StoredFormats::Read(StoredFormat const& format) const {
    auto const name = NameOf(format);
    std::string bytes;
    auto const error = ReadFile(ObjectFile(folder_, name.Path()), bytes);
    if (error == std::errc::no_such_file_or_directory)
        throw std::runtime_error(name.Text() + " is not in the printer any more");
    if (error) throw std::runtime_error(name.Text() + " cannot be read: " + error.message());
    return bytes;
}

void StoredFormats::Save(StoredFormat const& format, std::string_view bytes) {
    auto const name = NameOf(format);
    std::string reason;
    Log::ScopedSink const sink([&reason](LogTopic, std::string_view line) { reason = line; });
    if (StoreObject(folder_, name, bytes)) SettleObjects();
    if (!reason.empty()) throw std::runtime_error(reason);
}
