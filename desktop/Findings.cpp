#include "desktop/Findings.h"

#include <algorithm>
#include <array>

namespace {

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

template <typename Table>
std::string_view Look(Table const& table, std::string_view name) {
    auto const found = std::find_if(table.begin(), table.end(), [&](auto const& row) { return row.command == name; });
    return found == table.end() ? std::string_view() : found->meaning;
}

/// The letters of a command as a person can read them.
std::string Printable(std::string_view letters) {
    constexpr std::string_view Digits = "0123456789ABCDEF";
    std::string text;
    for (char const c : letters) {
        if (c > ' ' && c <= '~') {
            text += c;
        } else {
            text += "\\x";
            text += Digits[static_cast<std::uint8_t>(c) >> 4];
            text += Digits[static_cast<std::uint8_t>(c) & 15];
        }
    }
    return text;
}

}  // namespace

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
    std::string const name = (command.isControl ? '~' : '^') + Printable(command.command);
    if (auto const setup = Look(SetupCommands, name); !setup.empty()) {
        Add({Finding::Kind::SetupCommand,
             "command " + name + " is not known (" + std::string(setup) + "): no effect on the page", label, offset});
    } else if (auto const drawing = Look(DrawingCommands, name); !drawing.empty()) {
        Add({Finding::Kind::UnknownCommand,
             "command " + name + " is not known: on other printers it " + std::string(drawing) +
                 ", so the page may differ",
             label, offset});
    } else {
        Add({Finding::Kind::UnknownCommand, "command " + name + " is not known and was left out", label, offset});
    }
}

void Findings::AddReport(LogTopic topic, std::string const& text, unsigned label) {
    Add({topic == LogTopic::BarcodeRefused ? Finding::Kind::Refused : Finding::Kind::Notice, text, label, {}});
}

void Findings::AddNotice(std::string text, unsigned label, std::optional<std::uint64_t> offset) {
    Add({Finding::Kind::Notice, std::move(text), label, offset});
}

void Findings::Add(Finding finding) {
    // Every replay of a label says the same again.
    if (!seen_.insert(finding.text).second) return;
    if (finding.offset) {
        auto const at = static_cast<std::size_t>(std::min<std::uint64_t>(*finding.offset, stream_.size()));
        if (at < lineOffset_) {
            lineOffset_ = 0;
            line_ = 1;
        }
        line_ += static_cast<std::size_t>(std::count(stream_.begin() + lineOffset_, stream_.begin() + at, '\n'));
        lineOffset_ = at;
        auto const lineEnd = stream_.substr(0, at).rfind('\n');
        finding.line = line_;
        finding.column = at - (lineEnd == std::string_view::npos ? 0 : lineEnd + 1) + 1;
    }
    list_.push_back(std::move(finding));
}

bool Findings::HasFaults() const {
    return std::any_of(list_.begin(), list_.end(),
                       [](Finding const& finding) { return finding.kind != Finding::Kind::Notice; });
}
