#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// A format in the printer's store, of which `^XF` recalls the commands.
struct StoredFormat {
    std::string device;  ///< a letter: "E", or "R" of the memory that ends with the process
    std::string name;    ///< with its extension, as "ORDER.ZPL"
    std::uint64_t bytes = 0;

    /// As commands write it: "E:ORDER.ZPL".
    std::string FullName() const { return device + ':' + name; }
    /// What a full name names; without a device one on E. Its size is not known.
    static StoredFormat Named(std::string_view fullName);
};

/// The formats that a printer keeps, for who lists, shows and changes them. Others may store and remove objects at any
/// time, this process or another.
class StoredFormats {
public:
    explicit StoredFormats(std::filesystem::path formatsFolder) : folder_(std::move(formatsFolder)) {}

    /// Those with the extension ZPL on the devices E and R, by name.
    std::vector<StoredFormat> List() const;
    /// Its commands. Throws std::runtime_error with one sentence if it is gone or cannot be read.
    std::string Read(StoredFormat const& format) const;
    /// Over an earlier one of that name, which stands until the new one is whole on the disk. Throws
    /// std::runtime_error with one sentence if the name is not allowed, the device full or the file not to be written.
    void Save(StoredFormat const& format, std::string_view bytes);

    std::filesystem::path const& Folder() const { return folder_; }

private:
    std::filesystem::path folder_;
};
