#include "desktop/Findings.h"

#include <algorithm>
#include <array>

namespace {

/// Past this many a person reads no more.
constexpr std::size_t MostFindings = 1000;
/// Places of one label that the same is told about.
constexpr unsigned MostPlaces = 10;

struct KnownElsewhere {
    std::string_view command;
    std::string_view meaning;
};

/// Commands of other printers that leave no mark on the page. Design programs start nearly every job with some of them.
constexpr std::array SetupCommands = std::to_array<KnownElsewhere>({
    {"^MN", "media tracking"},
    {"^ML", "longest label"},
    {"^MF", "media feed"},
    {"^JU", "saved settings"},
    {"^JJ", "auxiliary port"},
    {"~JS", "backfeed sequence"},
    {"^PF", "feeding of rows"},
    {"^SS", "media sensors"},
    {"^ID", "deletion of stored objects"},
    {"~JC", "media calibration"},
    {"~JD", "diagnostics on"},
    {"~JE", "diagnostics off"},
    {"^NS", "network settings"},
    {"^SX", "alerts"},
    {"^SQ", "alerts"},
    {"^SE", "encoding table"},
    {"~HI", "a question of the host"},
    {"~HM", "a question of the host"},
    {"~HQ", "a question of the host"},
    {"~HB", "a question of the host"},
    {"~HD", "a question of the host"},
    {"^HH", "a question of the host"},
    {"^HG", "a question of the host"},
    {"^HW", "a question of the host"},
    {"^HZ", "a question of the host"},
    {"~JK", "delayed cut"},
    {"^CN", "cut"},
    {"^PN", "presentation"},
    {"^KV", "kiosk values"},
    {"~PL", "presentation length"},
    {"^CO", "cache"},
    {"^SZ", "choice of language"},
    {"^CM", "memory letters"},
    {"~EG", "deletion of graphics"},
    {"^EG", "deletion of graphics"},
});

/// Commands of other printers that would change the picture.
constexpr std::array DrawingCommands = std::to_array<KnownElsewhere>({
    {"^LS", "moves the page to the left"},
    {"^IL", "puts a stored picture behind the label"},
    {"~DY", "downloads pictures and fonts"},
    {"~DB", "downloads a font"},
    {"~DT", "downloads a font"},
    {"~DU", "downloads a font"},
    {"~DS", "downloads a font"},
    {"^FE", "embeds field numbers in data"},
    {"^FM", "gives a field several origins"},
    {"^PA", "shapes text"},
    {"^FL", "links fonts"},
    {"^TO", "copies a stored object"},
});

/// Commands that a printer knows if it has a tag encoder.
constexpr std::array TagCommands = std::to_array<std::string_view>(
    {"^RF", "^RI", "^RA", "^WF", "^RB", "^RL", "^RZ", "^RS", "^RW", "~RV", "^HL", "~HL"});

template <typename Table>
std::string_view Look(Table const& table, std::string_view name) {
    auto const found = std::find_if(table.begin(), table.end(), [&](auto const& row) { return row.command == name; });
    return found == table.end() ? std::string_view() : found->meaning;
}

/// Text with each byte that `isPlain` does not hold for as \xNN.
template <typename IsPlain>
std::string Escaped(std::string_view text, IsPlain&& isPlain) {
    constexpr std::string_view Digits = "0123456789ABCDEF";
    std::string result;
    for (char const c : text) {
        auto const byte = static_cast<std::uint8_t>(c);
        if (isPlain(byte)) {
            result += c;
        } else {
            result += "\\x";
            result += Digits[byte >> 4];
            result += Digits[byte & 15];
        }
    }
    return result;
}

/// The letters of a command as a person can read them.
std::string PrintableLetters(std::string_view letters) {
    return Escaped(letters, [](std::uint8_t byte) { return byte > ' ' && byte <= '~'; });
}

}  // namespace

std::string Printable(std::string_view text) {
    return Escaped(text, [](std::uint8_t byte) { return byte >= ' ' && byte != 0x7F; });
}

std::string Finding::Describe() const {
    std::string place;
    if (label != 0) place = "label " + std::to_string(label);
    if (offset) {
        if (!place.empty()) place += ", ";
        place +=
            "byte " + std::to_string(*offset) + ", line " + std::to_string(line) + ", column " + std::to_string(column);
    }
    return place.empty() ? text : place + ": " + text;
}

void Findings::AddUnknownCommand(ZplCommand const& command, std::uint64_t offset, unsigned label) {
    std::string const name = (command.isControl ? '~' : '^') + PrintableLetters(command.command);
    if (auto const setup = Look(SetupCommands, name); !setup.empty()) {
        Add({Finding::Kind::SetupCommand,
             "command " + name + " is not known (" + std::string(setup) + "): no effect on the page", label, offset});
    } else if (auto const drawing = Look(DrawingCommands, name); !drawing.empty()) {
        Add({Finding::Kind::UnknownCommand,
             "command " + name + " is not known: on other printers it " + std::string(drawing) +
                 ", so the page may differ",
             label, offset});
    } else if (std::find(TagCommands.begin(), TagCommands.end(), name) != TagCommands.end()) {
        Add({Finding::Kind::UnknownCommand,
             "command " + name + " is not known: it takes a tag encoder, which --tag brings", label, offset});
    } else {
        Add({Finding::Kind::UnknownCommand, "command " + name + " is not known and was left out", label, offset});
    }
}

void Findings::AddReport(LogTopic topic, std::string const& text, unsigned label, std::optional<std::uint64_t> offset) {
    bool const refused = topic == LogTopic::BarcodeRefused || topic == LogTopic::NotDrawn;
    Add({refused ? Finding::Kind::Refused : Finding::Kind::Notice, Printable(text), label, offset});
}

void Findings::AddNotice(std::string text, unsigned label, std::optional<std::uint64_t> offset) {
    Add({Finding::Kind::Notice, std::move(text), label, offset});
}

void Findings::Add(Finding finding) {
    // Every replay of a label says the same again, and an unknown command is told once for the stream.
    bool const oncePerStream =
        finding.kind == Finding::Kind::SetupCommand || finding.kind == Finding::Kind::UnknownCommand;
    auto const isNew = [&] {
        auto& places = seen_[{oncePerStream ? 0 : finding.label, finding.text}];
        std::uint64_t const place = oncePerStream ? 0 : finding.offset.value_or(stream_.size());
        return places.size() < MostPlaces && places.insert(place).second;
    };
    if (list_.size() > MostFindings || !isNew()) return;
    if (list_.size() == MostFindings) {
        list_.push_back({Finding::Kind::Notice, "there is more to tell, which is left out", 0, {}});
        return;
    }
    list_.push_back(std::move(finding));
}

std::vector<Finding> Findings::List() const {
    auto list = list_;
    std::stable_sort(list.begin(), list.end(), [](Finding const& a, Finding const& b) {
        return a.offset && (!b.offset || *a.offset < *b.offset);
    });
    std::size_t line = 1;
    std::size_t lineStart = 0;
    for (auto& finding : list) {
        if (!finding.offset) break;
        auto const at = static_cast<std::size_t>(std::min<std::uint64_t>(*finding.offset, stream_.size()));
        for (auto end = stream_.find('\n', lineStart); end < at; end = stream_.find('\n', lineStart)) {
            ++line;
            lineStart = end + 1;
        }
        finding.line = line;
        finding.column = at - lineStart + 1;
    }
    return list;
}

bool Findings::HasFaults() const {
    return std::any_of(list_.begin(), list_.end(),
                       [](Finding const& finding) { return finding.kind != Finding::Kind::Notice; });
}
