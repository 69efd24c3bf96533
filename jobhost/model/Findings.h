#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "foundation/Json.h"
#include "foundation/Log.h"
#include "frontend/stream/ZplCommand.h"
#include "jobhost/model/LineIndex.h"

/// Something that a person should know about a stream.
struct Finding {
    enum class Kind {
        SetupCommand,    ///< an unknown command that only sets up a printer; strictness lets it pass
        UnknownCommand,  ///< an unknown command that may change the picture
        Refused,         ///< a barcode that could not be made of its data
        BarcodeCut,      ///< a barcode that is not whole on its page
        Unreadable,      ///< a barcode that no scanner reads as it is drawn
        Doubtful,        ///< a barcode that is not as its symbology asks
        OffPage,         ///< anything else that is not whole on its page
        Dropped,         ///< a format that is given up, or a command outside all formats
        Notice,          ///< anything else that was left out or replaced
    };

    Kind kind;
    std::string text;
    unsigned label = 0;                   ///< the label it belongs to, from 1; 0 for none
    std::optional<std::uint64_t> offset;  ///< bytes from the start of the stream
    std::size_t line = 0;                 ///< from 1; 0 if it is not known
    std::size_t column = 0;               ///< in bytes, from 1; 0 if it is not known
    unsigned times = 1;                   ///< at how many places; told is the first of them

    /// In one line, as `label 2, byte 310, line 14, column 3: ...`.
    std::string Describe() const;
    /// Writes the members of a JSON object; those that say nothing are left out.
    void WriteMembers(JsonWriter& writer) const;
};

/// Writes a JSON array of them.
void WriteFindings(JsonWriter& writer, std::vector<Finding> const& findings);

/// The kind in one word, for programs.
std::string_view NameOf(Finding::Kind kind);
std::optional<Finding::Kind> KindNamed(std::string_view name);

/// Text for a terminal: control characters as \xNN.
std::string Printable(std::string_view text);

class Findings;

/// Tells the findings of a stream something. What threads find in parallel is told in the order of the stream.
using Telling = std::function<void(Findings&)>;

/// Collects what is to be told about one stream, each thing once.
class Findings {
public:
    /// Where the format that a finding belongs to begins in the stream, in bytes; nothing between formats. Whether a
    /// format is a label, and which, is known when it has ended: formats that are only stored or set up print nothing.
    using Format = std::optional<std::uint64_t>;

    /// Without a `stream` the places are known to the caller, see Take.
    explicit Findings(std::string_view stream = {}) : stream_(stream) {}

    void Add(Finding finding, Format format);
    /// What is told of an unknown command.
    static Finding OfUnknownCommand(ZplCommand const& command, std::uint64_t offset);
    void AddUnknownCommand(ZplCommand const& command, std::uint64_t offset, Format format) {
        Add(OfUnknownCommand(command, offset), format);
    }
    void AddReport(LogTopic topic, std::string const& text, Format format, std::optional<std::uint64_t> offset = {});
    void AddNotice(std::string text, Format format, std::optional<std::uint64_t> offset = {});
    /// The format that begins there is the label of that number, from 1.
    void NumberLabel(std::uint64_t format, unsigned number) { labels_.emplace_back(format, number); }

    /// In the order of the stream, those of a label together, about its barcodes first. What has no place in the stream
    /// stands at the end of its label, or of all.
    std::vector<Finding> List() const;
    /// The same where the stream goes by and its lines are counted by `lines`.
    std::vector<Finding> List(LineIndex const& lines) const;
    /// The same for what was added since the last call. All formats that have begun are taken to have ended.
    std::vector<Finding> Take(LineIndex const& lines);
    /// Whether strictness forbids what was found.
    bool HasFaults() const { return faults_ != 0; }

private:
    struct Entry {
        Finding finding;
        Format format;
    };
    /// What is told once for the stream with the number of its places.
    struct Counted {
        std::optional<std::size_t> index;  ///< in the list
        std::set<std::pair<Format, std::optional<std::uint64_t>>> places;
    };

    /// A finding, and where what it is listed with begins.
    struct Placed {
        Finding finding;
        std::uint64_t group;
    };

    std::size_t& CountOf(Finding::Kind kind);
    void AddCounted(Finding finding, Format format);
    std::optional<std::size_t> Append(Finding finding, Format format);

    std::string_view stream_;
    std::vector<Entry> list_;
    std::size_t faults_ = 0;
    std::size_t notices_ = 0;
    std::vector<std::pair<std::uint64_t, unsigned>> labels_;                  ///< formats and their numbers, in order
    std::map<std::pair<Format, std::string>, std::set<std::uint64_t>> seen_;  ///< offsets by format and text
    std::map<std::string, Counted> counted_;                                  ///< by text
};
