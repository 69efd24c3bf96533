#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "foundation/Log.h"
#include "frontend/stream/ZplCommand.h"

/// Something that a person should know about a stream.
struct Finding {
    enum class Kind {
        SetupCommand,    ///< an unknown command that only sets up a printer
        UnknownCommand,  ///< an unknown command that may change the picture
        Refused,         ///< a barcode that could not be made of its data
        Notice,          ///< anything else that was left out or replaced
    };

    Kind kind;
    std::string text;
    unsigned label = 0;                   ///< the label it belongs to, from 1; 0 for none
    std::optional<std::uint64_t> offset;  ///< bytes from the start of the stream
    std::size_t line = 0;                 ///< from 1; 0 without an offset
    std::size_t column = 0;               ///< in bytes, from 1; 0 without an offset

    /// In one line, as `label 2, byte 310, line 14, column 3: ...`.
    std::string Describe() const;
};

/// Text for a terminal: control characters as \xNN.
std::string Printable(std::string_view text);

/// Collects what is to be told about one stream, each thing once.
class Findings {
public:
    explicit Findings(std::string_view stream) : stream_(stream) {}

    /// `label` counts the formats that have begun, from 1; 0 stands before the first.
    void AddUnknownCommand(ZplCommand const& command, std::uint64_t offset, unsigned label);
    void AddReport(LogTopic topic, std::string const& text, unsigned label, std::optional<std::uint64_t> offset = {});
    void AddNotice(std::string text, unsigned label, std::optional<std::uint64_t> offset = {});

    /// In the order of the stream; what has no place there stands behind the rest.
    std::vector<Finding> List() const;
    /// Whether strictness forbids what was found.
    bool HasFaults() const;

private:
    void Add(Finding finding);

    std::string_view stream_;
    std::vector<Finding> list_;
    std::map<std::pair<unsigned, std::string>, std::set<std::uint64_t>> seen_;  ///< offsets by label and text
};
