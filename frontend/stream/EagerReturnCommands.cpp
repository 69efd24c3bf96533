#include "frontend/stream/EagerReturnCommands.h"

#include <algorithm>

#include "frontend/stream/Ascii.h"

namespace {

using enum CommandIdentifier::ArgumentMatchOperation;
using enum CommandIdentifier::Prefix;
using Operation = CommandIdentifier::ArgumentMatchOperation;

bool AllDigits(std::string_view text) { return std::all_of(text.begin(), text.end(), IsAsciiDigit); }

Operation MatchAnyArgument(std::string_view argument) { return argument.empty() ? Continue : ReturnCopy; }

// A darkness is two digits, or a number with one decimal. Two digits may still get their decimal, so they are
// delivered as a copy; the handler takes the same command twice without harm.
Operation MatchDarkness(std::string_view argument) {
    if (argument.size() == 2 && AllDigits(argument)) return ReturnCopy;
    auto const point = argument.find('.');
    if (point != std::string_view::npos && point + 1 < argument.size()) return Return;
    return AllDigits(argument.substr(0, point)) ? Continue : Return;
}

// Commands after which a host may wait for an answer or an effect before it sends anything more. The first row that
// fits decides.
constexpr CommandIdentifier EagerReturnCommands[] = {
    // clang-format off
    {Format,  "XZ", nullptr},
    {Control, "WL", nullptr},
    {Control, "WC", nullptr},
    {Either,  "PP", nullptr},
    {Control, "PS", nullptr},
    {Control, "JA", nullptr},
    {Control, "PR", nullptr},
    {Control, "HS", nullptr},
    {Control, "HL", nullptr},
    {Control, "RV", MatchAnyArgument},
    {Control, "SD", MatchDarkness},
    // clang-format on
};

}  // namespace

CommandIdentifier const* FindEagerReturnCommand(std::string_view command, bool isControl) {
    if (command.size() < 2) return nullptr;
    char const letters[] = {ToAsciiUpper(command[0]), ToAsciiUpper(command[1])};
    for (auto const& row : EagerReturnCommands) {
        if (row.letters[0] != letters[0] || row.letters[1] != letters[1]) continue;
        if (row.prefix == Either || isControl == (row.prefix == Control)) return &row;
    }
    return nullptr;
}
