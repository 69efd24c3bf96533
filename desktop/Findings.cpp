#include "desktop/Findings.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

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
    {"^JS", "choice of the sensor"},
    {"^JT", "tests of the head"},
    {"^JW", "tension of the ribbon"},
    {"^SI", "sensitivity of the sensors"},
    {"^SR", "resistance of the head"},
    {"^MA", "reminders of maintenance"},
    {"^MI", "reminders of maintenance"},
    {"^MW", "warning of a cold head"},
    {"~RO", "counters"},
    {"^KP", "password of the panel"},
    {"~KB", "discharge of the battery"},
    {"^PH", "feeding of a label"},
    {"~PH", "feeding of a label"},
    {"^PF", "feeding of rows"},
    {"^SS", "media sensors"},
    {"^ID", "deletion of stored objects"},
    {"~JC", "media calibration"},
    {"~JD", "diagnostics on"},
    {"~JE", "diagnostics off"},
    {"^MP", "locked keys of the panel"},
    {"~JG", "diagnostics of the sensors"},
    {"~JL", "length of the label"},
    {"^PA", "shaping of text"},
    {"^NB", "network settings"},
    {"^NC", "network settings"},
    {"~NC", "network settings"},
    {"^ND", "network settings"},
    {"^NI", "network settings"},
    {"^NN", "network settings"},
    {"^NP", "network settings"},
    {"~NR", "network settings"},
    {"^NS", "network settings"},
    {"^NT", "network settings"},
    {"~NT", "network settings"},
    {"^NW", "network settings"},
    {"^KC", "network settings"},
    {"^WA", "wireless settings"},
    {"^WE", "wireless settings"},
    {"^WI", "wireless settings"},
    {"^WL", "wireless settings"},
    {"^WP", "wireless settings"},
    {"^WR", "wireless settings"},
    {"~WR", "wireless settings"},
    {"^WS", "wireless settings"},
    {"^WV", "wireless settings"},
    {"^WX", "wireless settings"},
    {"^SX", "alerts"},
    {"^SQ", "alerts"},
    {"^SE", "encoding table"},
    {"~HI", "a question of the host"},
    {"~HM", "a question of the host"},
    {"~HQ", "a question of the host"},
    {"~HB", "a question of the host"},
    {"~HD", "a question of the host"},
    {"^HH", "a question of the host"},
    {"^HR", "a question of the host"},
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
    {"^IL", "puts a stored picture behind the label"},
    {"~DY", "downloads pictures and fonts"},
    {"~DB", "downloads a font"},
    {"~DT", "downloads a font"},
    {"~DU", "downloads a font"},
    {"~DS", "downloads a font"},
    {"^FE", "embeds field numbers in data"},
    {"^FM", "gives a field several origins"},
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

/// What `^LS` does elsewhere to a page, by its dots to the left; nothing if it moves none.
std::string ShiftMeaning(std::string_view dots) {
    dots.remove_prefix(std::min(dots.find_first_not_of(" +"), dots.size()));
    int shift = 0;
    if (std::from_chars(dots.data(), dots.data() + dots.size(), shift).ec == std::errc::result_out_of_range)
        return "moves the page off its media";
    if (shift == 0) return {};
    std::string const distance = std::to_string(std::abs(std::int64_t{shift}));
    return "moves the page " + distance + " dots to the " + (shift > 0 ? "left" : "right");
}

bool IsOfBarcode(Finding::Kind kind) { return kind == Finding::Kind::Refused || kind == Finding::Kind::BarcodeCut; }

/// Whether strictness forbids it.
bool IsFault(Finding::Kind kind) {
    return kind == Finding::Kind::UnknownCommand || kind == Finding::Kind::Dropped || IsOfBarcode(kind);
}

Finding::Kind KindOf(LogTopic topic) {
    switch (topic) {
        case LogTopic::BarcodeRefused:
        case LogTopic::NotDrawn: return Finding::Kind::Refused;
        case LogTopic::BarcodeCut: return Finding::Kind::BarcodeCut;
        case LogTopic::OffPage: return Finding::Kind::OffPage;
        case LogTopic::Dropped: return Finding::Kind::Dropped;
        default: return Finding::Kind::Notice;
    }
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
    std::string const counted = times > 1 ? text + " (" + std::to_string(times) + " times)" : text;
    return place.empty() ? counted : place + ": " + counted;
}

void Findings::AddUnknownCommand(ZplCommand const& command, std::uint64_t offset, Format format) {
    std::string const name = (command.isControl ? '~' : '^') + PrintableLetters(command.command);
    std::string const shift = name == "^LS" ? ShiftMeaning(command.Parameter(0)) : std::string();
    auto const add = [&](Finding::Kind kind, std::string const& rest) {
        Add({kind, "command " + name + " is not known" + rest, 0, offset}, format);
    };
    if (auto const setup = Look(SetupCommands, name); !setup.empty()) {
        add(Finding::Kind::SetupCommand, " (" + std::string(setup) + "): no effect on the page");
    } else if (name == "^LS" && shift.empty()) {
        add(Finding::Kind::SetupCommand, " (a shift of the page by no dots): no effect on the page");
    } else if (auto const drawing = shift.empty() ? Look(DrawingCommands, name) : shift; !drawing.empty()) {
        add(Finding::Kind::UnknownCommand,
            ": on other printers it " + std::string(drawing) + ", so the page may differ");
    } else if (std::find(TagCommands.begin(), TagCommands.end(), name) != TagCommands.end()) {
        add(Finding::Kind::UnknownCommand, ": it takes a tag encoder, which --tag brings");
    } else {
        add(Finding::Kind::UnknownCommand, " and was left out");
    }
}

void Findings::AddReport(LogTopic topic, std::string const& text, Format format, std::optional<std::uint64_t> offset) {
    Finding finding{KindOf(topic), Printable(text), 0, offset};
    if (topic == LogTopic::Font) {
        AddCounted(std::move(finding), format);
    } else {
        Add(std::move(finding), format);
    }
}

void Findings::AddNotice(std::string text, Format format, std::optional<std::uint64_t> offset) {
    Add({Finding::Kind::Notice, std::move(text), 0, offset}, format);
}

void Findings::Add(Finding finding, Format format) {
    // Every replay of a label says the same again, and an unknown command is told once for the stream.
    bool const oncePerStream =
        finding.kind == Finding::Kind::SetupCommand || finding.kind == Finding::Kind::UnknownCommand;
    auto& places = seen_[{oncePerStream ? Format() : format, finding.text}];
    std::uint64_t const place = oncePerStream ? 0 : finding.offset.value_or(stream_.size());
    if (places.size() < MostPlaces && places.insert(place).second) Append(std::move(finding), format);
}

void Findings::AddCounted(Finding finding, Format format) {
    auto const [entry, isNew] = counted_.try_emplace(finding.text);
    auto& [index, places] = entry->second;
    bool const isFurther = places.size() < stream_.size() && places.insert({format, finding.offset}).second;
    if (isNew) {
        index = Append(std::move(finding), format);
    } else if (isFurther && index) {
        ++list_[*index].finding.times;
    }
}

std::optional<std::size_t> Findings::Append(Finding finding, Format format) {
    // What strictness forbids has room of its own: the reason is always told.
    std::size_t& count = IsFault(finding.kind) ? faults_ : notices_;
    if (count > MostFindings) return std::nullopt;
    if (count++ == MostFindings) {
        finding = {Finding::Kind::Notice, "there is more to tell, which is left out", 0, {}};
        format.reset();
    }
    list_.push_back({std::move(finding), format});
    return list_.size() - 1;
}

std::vector<Finding> Findings::List() const {
    std::vector<Placed> list;
    for (auto const& [finding, format] : list_) {
        constexpr auto Behind = std::numeric_limits<std::uint64_t>::max();
        list.push_back({finding, finding.offset.value_or(Behind)});
        auto const number = format ? labels_.find(*format) : labels_.end();
        if (number == labels_.end()) continue;
        list.back().finding.label = number->second;
        list.back().group = *format;
    }
    auto const byOffset = [](Placed const& a, Placed const& b) {
        return a.finding.offset && (!b.finding.offset || *a.finding.offset < *b.finding.offset);
    };
    std::stable_sort(list.begin(), list.end(), byOffset);
    FindLines(list);
    // A label that scans wrong is worse than one that reads wrong.
    std::stable_sort(list.begin(), list.end(), [](Placed const& a, Placed const& b) {
        return std::pair(a.group, !IsOfBarcode(a.finding.kind)) < std::pair(b.group, !IsOfBarcode(b.finding.kind));
    });
    std::vector<Finding> findings;
    for (auto& placed : list) findings.push_back(std::move(placed.finding));
    return findings;
}

void Findings::FindLines(std::vector<Placed>& inOrder) const {
    std::size_t line = 1;
    std::size_t lineStart = 0;
    for (auto& [finding, group] : inOrder) {
        if (!finding.offset) break;
        auto const at = static_cast<std::size_t>(std::min<std::uint64_t>(*finding.offset, stream_.size()));
        for (auto end = stream_.find('\n', lineStart); end < at; end = stream_.find('\n', lineStart)) {
            ++line;
            lineStart = end + 1;
        }
        finding.line = line;
        finding.column = at - lineStart + 1;
    }
}
