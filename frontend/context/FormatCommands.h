#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "frontend/stream/ZplCommand.h"

/// A run of commands in packed form, which takes little more than their bytes in a stream.
class PackedCommands {
public:
    void Append(ZplCommand const& command);

    std::size_t size() const { return size_; }
    /// What the commands take in a stream, about.
    std::size_t StreamBytes() const { return streamBytes_; }
    std::string const& Packed() const { return packed_; }

    /// Reads the command at `position`, in bytes of Packed, which is moved behind it.
    void Read(std::size_t& position, ZplCommand& command) const;

private:
    std::string packed_;
    std::size_t size_ = 0;
    std::size_t streamBytes_ = 0;
};

/// The recorded commands of a format. A finished label is copied several times and its commands never change any more,
/// so copies share them; formats share what they recall. A format past a limit is not kept: a stream must not fill the
/// memory, and a few bytes that recall formats that recall formats must not keep the printer busy for long.
class FormatCommands {
public:
    static constexpr std::size_t MostRecalledCommands = 100'000;
    static constexpr std::size_t MostPackedBytes = 128UL * 1024 * 1024;

private:
    struct Part {
        std::shared_ptr<PackedCommands const> commands;
        std::shared_ptr<PackedCommands> own;        ///< the same if it may grow, otherwise null
        std::optional<std::uint64_t> recalledAt;    ///< where the command is that recalled them
        std::uint64_t recallLength = 0;             ///< of that command
        std::shared_ptr<std::string const> format;  ///< that they were recalled from
    };

public:
    /// Goes through the commands; each holds until the next step.
    class Iterator {
    public:
        using difference_type = std::ptrdiff_t;
        using value_type = ZplCommand;

        Iterator() = default;
        explicit Iterator(std::vector<Part> const& parts) : parts_(&parts) { Read(); }
        ZplCommand const& operator*() const { return command_; }
        Iterator& operator++() {
            Read();
            return *this;
        }
        void operator++(int) { Read(); }
        friend bool operator==(Iterator const& iterator, std::default_sentinel_t) { return iterator.atEnd_; }

    private:
        void Read();

        std::vector<Part> const* parts_ = nullptr;
        std::size_t part_ = 0;
        std::size_t position_ = 0;
        ZplCommand command_;
        bool atEnd_ = false;
    };

    /// Gives what there is too much of when a limit is passed: from then on the list is and stays empty, until Clear.
    char const* Append(ZplCommand const& command, bool isImmediate = false);
    /// The same for the commands of the stored format `format`. They stand at `place`, that of the command of `length`
    /// bytes which recalls, and their own places are those in the stored format.
    char const* AppendRecalled(std::shared_ptr<PackedCommands const> commands, std::optional<std::uint64_t> place,
                               std::uint64_t length = 0, std::string format = {});
    void Clear() { *this = {}; }

    /// Whether a limit was passed.
    bool IsRefused() const { return isRefused_; }
    bool HasRecalled() const { return recalled_ != 0; }
    /// Whether immediate commands may be among them, as in what is recalled.
    bool MayHoldImmediate() const { return hasImmediate_ || HasRecalled(); }
    /// What the commands take in a stream, about.
    std::size_t Bytes() const { return bytes_; }

    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    Iterator begin() const;
    std::default_sentinel_t end() const { return {}; }

private:
    std::vector<Part>& Own();
    char const* RefuseExcess();

    std::shared_ptr<std::vector<Part>> parts_;
    std::size_t size_ = 0;
    std::size_t bytes_ = 0;
    std::size_t packed_ = 0;
    std::size_t recalled_ = 0;
    bool isRefused_ = false;
    bool hasImmediate_ = false;
};
