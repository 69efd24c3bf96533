#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>

#include "foundation/Files.h"
#include "frontend/processor/CreateHandlers.h"

// The page of commands, docs/commands.md, says which there are, with what prefix and which run as they are read.

namespace {

using enum SyntacticType;
using enum ProcessingType;

/// The commands named by the first cell of a row of the page, with their prefixes; a dash between two stands for all
/// from the one to the other.
std::vector<std::string> CommandsOf(std::string const& row) {
    std::string const cell = row.substr(0, row.find('|', 1));
    std::vector<std::string> commands;
    for (auto at = cell.find('`'); at != cell.npos; at = cell.find('`', at + 5)) {
        std::string name = cell.substr(at + 1, 3);
        if (at > 0 && cell[at - 1] == '-') {
            std::string next = commands.back();
            while (next < name) commands.push_back((++next.back(), next));
        } else {
            commands.push_back(name);
        }
    }
    return commands;
}

TEST(CommandTable, IsThePageOfCommandsRowForRow) {
    CommandHandlerPool const pool = CreateHandlers(true, false);
    CommandHandlerPool const withoutTags = CreateHandlers(false, false);
    std::map<std::string, int> rows;
    std::istringstream page(ReadRegularFile("docs/commands.md"));
    bool isTag = false;
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("## ")) isTag = line == "## Tags";
        if (!line.starts_with("| `")) continue;
        SCOPED_TRACE(line);
        bool const isNow = line.substr(0, line.find('|', 1)).find("*now*") != line.npos;
        std::string const state = line.substr(line.rfind('|', line.size() - 2) + 2);
        EXPECT_TRUE(state.starts_with("done") || state.starts_with("first: ") || state.starts_with("kept: ") ||
                    state.starts_with("none: "));
        for (auto const& name : CommandsOf(line)) {
            ++rows[name];
            std::string const letters = name.substr(1);
            auto const* handler = pool.GetCommandHandler(letters);
            ASSERT_TRUE(handler);
            EXPECT_EQ(handler->GetCommandId(), CommandId(letters));
            EXPECT_EQ(withoutTags.GetCommandHandler(letters) == nullptr, isTag);
            auto const timing = letters == "PR" ? ImmediateIfControl : isNow ? Immediate : Deferred;
            EXPECT_EQ(handler->GetProcessingType(), timing);
            EXPECT_EQ(handler->IsAdditonalSaveType(), letters == "PQ");
        }
    }
    std::map<std::string, int> expected;
    for (auto const& [id, handler] : pool) {
        std::string const letters{static_cast<char>(id >> 8), static_cast<char>(id & 0xFF)};
        if (handler->GetSyntacticType() != Control) ++expected['^' + letters];
        if (handler->GetSyntacticType() != Format) ++expected['~' + letters];
    }
    EXPECT_EQ(rows, expected);
}

TEST(CommandTable, SelectsThePrintQuantityThatNeverPauses) {
    CommandHandlerPool const pausing = CreateHandlers(false, false), never = CreateHandlers(false, true);
    EXPECT_NE(typeid(*never.GetCommandHandler("PQ")), typeid(*pausing.GetCommandHandler("PQ")));
    EXPECT_EQ(typeid(*never.GetCommandHandler("PP")), typeid(*pausing.GetCommandHandler("PP")));
}

TEST(CommandTable, FindsByNumberAndNothingElse) {
    CommandHandlerPool const pool = CreateHandlers(false, false);
    EXPECT_EQ(pool.GetCommandHandler("B0")->GetCommandId(), 16944U);
    EXPECT_EQ(pool.GetCommandHandler(22593), pool.GetCommandHandler("XA"));
    for (std::string_view const letters : {"", "X", "XAB", "A!", "ZZ"})
        EXPECT_EQ(pool.GetCommandHandler(letters), nullptr) << letters;
}

}  // namespace
