#pragma once

#include <cstddef>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/stream/ZplCommand.h"

/// The recorded commands of a format, packed, so that a format of millions of them costs little more than its bytes. A
/// finished label is copied several times and its commands never change any more, so copies share one list until one of
/// them is changed. A format past a limit is not kept: a stream must not fill the memory, and a few bytes that recall
/// formats that recall formats must not keep the printer busy for long.
class FormatCommands {
public:
    static constexpr std::size_t MostRecalledCommands = 100'000;
    static constexpr std::size_t MostPackedBytes = 128UL * 1024 * 1024;

    /// Goes through the commands; each holds until the next step.
    class Iterator {
    public:
        using difference_type = std::ptrdiff_t;
        using value_type = ZplCommand;

        Iterator() = default;
        explicit Iterator(std::vector<std::string> const& blocks) : blocks_(&blocks) { Read(); }
        ZplCommand const& operator*() const { return command_; }
        Iterator& operator++() {
            Read();
            return *this;
        }
        void operator++(int) { Read(); }
        friend bool operator==(Iterator const& iterator, std::default_sentinel_t) { return iterator.atEnd_; }

    private:
        void Read();

        std::vector<std::string> const* blocks_ = nullptr;
        std::size_t block_ = 0;
        std::size_t position_ = 0;
        ZplCommand command_;
        bool atEnd_ = false;
    };

    /// Gives what there is too much of when a limit is passed: from then on the list is and stays empty, until Clear.
    char const* Append(ZplCommand const& command, bool isRecalled);
    void Clear() { *this = {}; }

    /// Whether a limit was passed.
    bool IsRefused() const { return isRefused_; }
    /// What the commands take in a stream, about.
    std::size_t Bytes() const { return bytes_; }

    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    Iterator begin() const;
    std::default_sentinel_t end() const { return {}; }

private:
    std::string& BlockFor(std::size_t bytes);
    char const* Excess() const;

    /// A command lies in one block. A block holds many of them or one large one, and grows only while it is small.
    std::shared_ptr<std::vector<std::string>> blocks_;
    std::size_t size_ = 0;
    std::size_t bytes_ = 0;
    std::size_t packed_ = 0;
    std::size_t recalled_ = 0;
    bool isRefused_ = false;
};
