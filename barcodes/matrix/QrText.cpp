#include "barcodes/matrix/QrText.h"

#include <algorithm>
#include <charconv>

namespace ZplCore {

namespace {

constexpr std::size_t ByteCountDigits = 4;
constexpr std::string_view Levels = "HQML";
constexpr std::string_view InputModes = "AM";

unsigned Number(std::string_view text, int base) {
    unsigned number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number, base);
    return number;
}

/// The text of runs that each begin with their character mode.
void ReadRuns(std::string_view runs, bool partedByCommas, QrFieldData& field) {
    while (!runs.empty()) {
        char const mode = runs[0];
        runs.remove_prefix(1);
        std::string_view run;
        if (mode == 'B' && runs.size() >= ByteCountDigits) {
            std::size_t const count = Number(runs.substr(0, ByteCountDigits), 10);
            run = runs.substr(ByteCountDigits, count);
            runs.remove_prefix(ByteCountDigits + run.size());
            if (!runs.empty() && runs[0] == ',') runs.remove_prefix(1);
        } else {
            run = runs.substr(0, partedByCommas ? runs.find(',') : std::string_view::npos);
            runs.remove_prefix(std::min(runs.size(), run.size() + 1));
        }
        if (mode == 'K') field.options.kanji = true;
        field.text += run;
    }
}

}  // namespace

QrFieldData ReadQrFieldData(std::string_view data, char level, unsigned mask) {
    constexpr std::size_t AppendLength = 8;  // D, six digits and a comma
    QrFieldData field;
    field.options.level = level;
    field.options.mask = mask;
    bool const isMixed = data.size() > AppendLength && data[0] == 'D' && data[7] == ',';
    if (isMixed) {
        field.options.index = Number(data.substr(1, 2), 10);
        field.options.count = Number(data.substr(3, 2), 10);
        field.options.parity = Number(data.substr(5, 2), 16);
        data.remove_prefix(AppendLength);
    }
    auto const isOneOf = [data](std::string_view set, std::size_t at) {
        return at < data.size() && set.find(data[at]) != std::string_view::npos;
    };
    // The level can be left out, the input mode not.
    bool const hasLevel = data.size() < 2 || data[1] != ',';
    std::size_t const modeAt = hasLevel ? 1 : 0;
    bool const isLevel = !hasLevel || isOneOf(Levels, 0);
    if (!isLevel || !isOneOf(InputModes, modeAt) || !isOneOf(",", modeAt + 1))
        field.dropped = data.substr(0, modeAt + 2);
    if (hasLevel && !data.empty()) {
        field.options.level = isLevel ? data[0] : 'M';
        data.remove_prefix(1);
    }
    bool const isManual = data.starts_with('M');
    data.remove_prefix(std::min<std::size_t>(data.size(), 2));
    if (isManual) {
        ReadRuns(data, isMixed, field);
    } else {
        field.text = data;
    }
    return field;
}

}  // namespace ZplCore
