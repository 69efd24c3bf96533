#include "jobhost/model/Findings.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <tuple>

namespace {

/// Past this many a person reads no more.
constexpr std::size_t MostFindings = 1000;
/// Places that are counted of what is told once with their number.
constexpr std::size_t MostCounted = 1'000'000;
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

struct KindName {
    Finding::Kind kind;
    std::string_view name;
};

constexpr std::array KindNames = std::to_array<KindName>({
    {Finding::Kind::SetupCommand, "setup-command"},
    {Finding::Kind::UnknownCommand, "unknown-command"},
    {Finding::Kind::Refused, "barcode-refused"},
    {Finding::Kind::BarcodeCut, "barcode-cut"},
    {Finding::Kind::Unreadable, "barcode-unreadable"},
    {Finding::Kind::Doubtful, "barcode-doubtful"},
    {Finding::Kind::Dropped, "dropped"},
    {Finding::Kind::OffPage, "off-page"},
    {Finding::Kind::Notice, "notice"},
});

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

bool IsLostBarcode(Finding::Kind kind) {
    using enum Finding::Kind;
    return kind == Refused || kind == BarcodeCut || kind == Unreadable;
}

bool IsOfBarcode(Finding::Kind kind) { return IsLostBarcode(kind) || kind == Finding::Kind::Doubtful; }

/// Whether strictness forbids it.
bool IsFault(Finding::Kind kind) {
    return kind == Finding::Kind::UnknownCommand || kind == Finding::Kind::Dropped || IsLostBarcode(kind);
}

Finding::Kind KindOf(LogTopic topic) {
    switch (topic) {
        case LogTopic::BarcodeRefused:
        case LogTopic::NotDrawn: return Finding::Kind::Refused;
        case LogTopic::BarcodeCut: return Finding::Kind::BarcodeCut;
        case LogTopic::BarcodeUnreadable: return Finding::Kind::Unreadable;
        case LogTopic::BarcodeDoubtful: return Finding::Kind::Doubtful;
        case LogTopic::OffPage: return Finding::Kind::OffPage;
        case LogTopic::Dropped: return Finding::Kind::Dropped;
        default: return Finding::Kind::Notice;
    }
}

}  // namespace

void WriteFindings(JsonWriter& writer, std::vector<Finding> const& findings) {
    writer.StartArray();
    for (auto const& finding : findings) {
        writer.StartObject();
        finding.WriteMembers(writer);
        writer.EndObject();
    }
    writer.EndArray();
}

std::string_view NameOf(Finding::Kind kind) {
    return std::find_if(KindNames.begin(), KindNames.end(), [kind](auto const& row) { return row.kind == kind; })->name;
}

std::optional<Finding::Kind> KindNamed(std::string_view name) {
    auto const row = std::find_if(KindNames.begin(), KindNames.end(),
                                  [name](auto const& candidate) { return candidate.name == name; });
    return row == KindNames.end() ? std::nullopt : std::optional(row->kind);
}

std::string Printable(std::string_view text) {
    return Escaped(text, [](std::uint8_t byte) { return byte >= ' ' && byte != 0x7F; });
}

std::string Finding::Describe() const {
    std::string place;
    if (label != 0) place = "label " + std::to_string(label);
    if (offset) {
        if (!place.empty()) place += ", ";
        place += "byte " + std::to_string(*offset);
        if (line != 0) place += ", line " + std::to_string(line) + ", column " + std::to_string(column);
    }
    std::string const counted = times > 1 ? text + " (" + std::to_string(times) + " times)" : text;
    return place.empty() ? counted : place + ": " + counted;
}

void Finding::WriteMembers(JsonWriter& writer) const {
    writer.Key("kind").String(NameOf(kind)).Key("text").String(text);
    if (label != 0) writer.Key("label").Int(label);
    if (times > 1) writer.Key("times").Int(times);
    if (!offset) return;
    writer.Key("offset").Int(static_cast<std::int64_t>(*offset));
    if (line == 0) return;
    writer.Key("line").Int(static_cast<std::int64_t>(line));
    writer.Key("column").Int(static_cast<std::int64_t>(column));
}

Finding Findings::OfUnknownCommand(ZplCommand const& command, std::uint64_t offset) {
    std::string const name = (command.isControl ? '~' : '^') + PrintableLetters(command.command);
    std::string const shift = name == "^LS" ? ShiftMeaning(command.Parameter(0)) : std::string();
    auto const finding = [&](Finding::Kind kind, std::string const& rest) {
        return Finding{kind, "command " + name + " is not known" + rest, 0, offset};
    };
    if (auto const setup = Look(SetupCommands, name); !setup.empty())
        return finding(Finding::Kind::SetupCommand, " (" + std::string(setup) + "): no effect on the page");
    if (name == "^LS" && shift.empty())
        return finding(Finding::Kind::SetupCommand, " (a shift of the page by no dots): no effect on the page");
    if (auto const drawing = shift.empty() ? Look(DrawingCommands, name) : shift; !drawing.empty()) {
        return finding(Finding::Kind::UnknownCommand,
                       ": on other printers it " + std::string(drawing) + ", so the page may differ");
    }
    if (std::find(TagCommands.begin(), TagCommands.end(), name) != TagCommands.end())
        return finding(Finding::Kind::UnknownCommand, ": it takes a tag encoder, which --tag brings");
    return finding(Finding::Kind::UnknownCommand, " and was left out");
}

void Findings::AddReport(LogTopic topic, std::string const& text, Format format, std::optional<std::uint64_t> offset) {
    Finding finding{KindOf(topic), Printable(text), 0, offset};
    if (topic == LogTopic::Font || topic == LogTopic::BarcodeNotRead) {
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
    if (CountOf(finding.kind) > MostFindings) return;
    auto& places = seen_[{oncePerStream ? Format() : format, finding.text}];
    constexpr auto Nowhere = std::numeric_limits<std::uint64_t>::max();
    std::uint64_t const place = oncePerStream ? 0 : finding.offset.value_or(Nowhere);
    if (places.size() < MostPlaces && places.insert(place).second) Append(std::move(finding), format);
}

void Findings::AddCounted(Finding finding, Format format) {
    auto const [entry, isNew] = counted_.try_emplace(finding.text);
    auto& [index, places] = entry->second;
    bool const isFurther = places.size() < MostCounted && places.insert({format, finding.offset}).second;
    if (isNew) {
        index = Append(std::move(finding), format);
    } else if (isFurther && index) {
        ++list_[*index].finding.times;
    }
}

/// What strictness forbids has room of its own: the reason is always told.
std::size_t& Findings::CountOf(Finding::Kind kind) { return IsFault(kind) ? faults_ : notices_; }

std::optional<std::size_t> Findings::Append(Finding finding, Format format) {
    std::size_t& count = CountOf(finding.kind);
    if (count > MostFindings) return std::nullopt;
    if (count++ == MostFindings) {
        finding = {Finding::Kind::Notice, "there is more to tell, which is left out", 0, {}};
        format.reset();
    }
    list_.push_back({std::move(finding), format});
    return list_.size() - 1;
}

std::vector<Finding> Findings::List() const {
    LineIndex lines;
    if (!list_.empty()) lines.Append(stream_);
    return List(lines);
}

std::vector<Finding> Findings::Take(LineIndex const& lines) {
    auto findings = List(lines);
    list_.clear();
    labels_.clear();
    // What was told for the whole stream is not told again.
    std::erase_if(seen_, [](auto const& entry) { return entry.first.first.has_value(); });
    for (auto& [text, counted] : counted_) counted = {};
    return findings;
}

std::vector<Finding> Findings::List(LineIndex const& lines) const {
    std::vector<Placed> list;
    for (auto const& [finding, format] : list_) {
        constexpr auto Behind = std::numeric_limits<std::uint64_t>::max();
        auto& placed = list.emplace_back(Placed{finding, finding.offset.value_or(Behind)});
        if (finding.offset) std::tie(placed.finding.line, placed.finding.column) = lines.PlaceOf(*finding.offset);
        auto const number = std::lower_bound(labels_.begin(), labels_.end(), std::pair(format.value_or(0), 0U));
        if (!format || number == labels_.end() || number->first != *format) continue;
        placed.finding.label = number->second;
        placed.group = *format;
    }
    auto const byOffset = [](Placed const& a, Placed const& b) {
        return a.finding.offset && (!b.finding.offset || *a.finding.offset < *b.finding.offset);
    };
    std::stable_sort(list.begin(), list.end(), byOffset);
    // A label that scans wrong is worse than one that reads wrong.
    std::stable_sort(list.begin(), list.end(), [](Placed const& a, Placed const& b) {
        return std::pair(a.group, !IsOfBarcode(a.finding.kind)) < std::pair(b.group, !IsOfBarcode(b.finding.kind));
    });
    std::vector<Finding> findings;
    for (auto& placed : list) findings.push_back(std::move(placed.finding));
    return findings;
}
