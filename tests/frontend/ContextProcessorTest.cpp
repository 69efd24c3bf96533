#include "frontend/context/ContextProcessor.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>

#include "tests/support/CommandDump.h"
#include "tests/support/TemporaryDirectory.h"

namespace {

ContextKey<int> const Number(7);
ContextKey<std::string> const Word("none");

ContextProcessor MakeProcessor() {
    ContextProcessor processor("");
    processor.SetSystemContext(std::make_shared<Context>(ContextProcessor::SystemContext));
    for (auto const& name :
         {ContextProcessor::FormatContext, ContextProcessor::LabelContext, ContextProcessor::ElementContext}) {
        processor.CreateContext(name);
    }
    return processor;
}

std::string Dump(FormatCommands const& commands) {
    std::string dump;
    for (auto const& command : commands) dump += Dump(command);
    return dump;
}

}  // namespace

TEST(FormatCommands, GiveBackWhatWasAppended) {
    std::vector<ZplCommand> const commands = {
        {"FO", false, {"10", "20"}, ',', 7, 9},
        {"FS", false, {}, ',', 0xFFFF'FFFF'FFFF, 3},
        {"\xC3\xA9", true, {"", "", std::string(100'000, 'x'), ""}, ';'},
        {"X\xF0\x9F\x98\x80", false, {std::string_view("\0\xFF", 2)}, '\0', 0},
    };
    FormatCommands list;
    for (int i = 0; i < 1000; ++i) list.Append(commands[static_cast<std::size_t>(i % 13 == 0 ? 2 : i) % 4]);
    auto copy = list;
    copy.Append(commands[1]);
    list.Append(commands[3]);
    auto const recalled = std::make_shared<PackedCommands>();
    for (auto const& command : commands) recalled->Append(command);
    list.AppendRecalled(recalled, 99, 8, "R/A.ZPL");
    EXPECT_EQ(copy.size(), 1001U);
    ASSERT_EQ(list.size(), 1005U);
    int index = 0;
    for (auto const& command : list) {
        ZplCommand expected = commands[static_cast<std::size_t>(index % 13 == 0 ? 2 : index) % 4];
        if (index >= 1000) expected = commands[static_cast<std::size_t>(index + 3) % 4];
        if (index > 1000) {
            expected.stored = StoredPlace{"R/A.ZPL", expected.offset.value_or(0), expected.length};
            expected.offset = 99;
            expected.length = 8;
        }
        ASSERT_EQ(command, expected) << index;
        ++index;
    }
}

TEST(FormatCommands, PastALimitAreNone) {
    ZplCommand const large{"FD", false, {std::string(FormatCommands::MostPackedBytes / 4, 'x')}};
    auto const recalled = std::make_shared<PackedCommands>();
    for (std::size_t i = 0; i < FormatCommands::MostRecalledCommands / 4; ++i) recalled->Append({"FS", false, {}});
    for (bool const isRecalled : {false, true}) {
        FormatCommands list;
        auto const append = [&] { return isRecalled ? list.AppendRecalled(recalled, {}) : list.Append(large); };
        int appended = 0;
        while (appended < 9 && !append()) ++appended;
        EXPECT_EQ(appended, isRecalled ? 4 : 3);
        list.AppendRecalled(recalled, {});
        EXPECT_TRUE(list.IsRefused() && list.empty() && list.begin() == list.end()) << "and is not told again";
        list.Clear();
        EXPECT_EQ(append(), nullptr);
        EXPECT_FALSE(list.empty());
    }
}

TEST(ContextProcessor, TheValueSetLastIsSeen) {
    auto const& format = ContextProcessor::FormatContext;
    auto const& element = ContextProcessor::ElementContext;
    auto const& system = ContextProcessor::SystemContext;
    ContextProcessor processor = MakeProcessor();
    EXPECT_EQ(processor.at(Number), 7);
    for (auto const& name : {system, format, element}) EXPECT_TRUE(processor.GetContext(name)->IsEmpty()) << name;

    processor.set(element, Number, 1);
    processor.set(format, Number, 2);
    EXPECT_EQ(processor.at(Number), 2);
    processor.ClearContext(format);
    EXPECT_EQ(processor.at(Number), 1);  // shadowed, not erased

    processor.set(format, Number, 3);
    processor.set(element, Number, 4);
    EXPECT_EQ(processor.at(Number), 4);
    processor.ClearContext(element);
    EXPECT_EQ(processor.at(Number), 7);  // the format's value is gone with the field

    processor.set(format, Number, 5);
    processor.set(system, Number, 6);
    EXPECT_EQ(processor.at(Number), 6);
    EXPECT_FALSE(processor.GetContext(format)->HasValue(Number));
}

TEST(ContextProcessor, IgnoresContextsThatAreNotThere) {
    ContextProcessor processor = MakeProcessor();
    processor.set("No Context", Number, 1);
    processor.PopCurrentContext();
    processor.set(ContextProcessor::ElementContext, Number, 1);
    processor.ClearContext(ContextProcessor::ElementContext);
    EXPECT_EQ(processor.at(Number), 7);
    EXPECT_EQ(processor.GetContext(ContextProcessor::ElementContext), nullptr);
}

TEST(ContextProcessor, NamesMayStandOnTheStackTwice) {
    auto const& format = ContextProcessor::FormatContext;
    auto const& label = ContextProcessor::LabelContext;
    auto const& element = ContextProcessor::ElementContext;
    ContextProcessor processor = MakeProcessor();
    processor.set(format, Number, 1);
    EXPECT_TRUE(processor.CreateContext(format).HasValue(Number)) << "as it stands";
    EXPECT_EQ(&processor.GetCurrentContext(), processor.GetContext(format));

    processor.set(label, Number, 2);
    EXPECT_FALSE(processor.GetContext(format)->HasValue(Number)) << "it is the oldest all the same";
    processor.set(format, Number, 3);
    EXPECT_EQ(processor.at(Number), 3);
    processor.PopCurrentContext();
    EXPECT_EQ(processor.GetContext(format), nullptr);
    EXPECT_EQ(processor.at(Number), 2);
    EXPECT_EQ(processor.GetCurrentContext().GetContextName(), element);
    processor.PopCurrentContext();
    processor.PopCurrentContext();
    EXPECT_THROW(processor.GetCurrentContext(), std::out_of_range);
}

TEST(Context, KeepsManyValuesApart) {
    ContextKey<int> const keys[300];
    Context context("many");
    for (auto const& key : keys) context.Set(key, static_cast<int>(key.id));
    for (std::size_t i = 0; i < std::size(keys); i += 3) context.Erase(keys[i].id);
    Context moved = context;
    context = std::move(moved);
    EXPECT_EQ(context.Count(), 200U);
    for (std::size_t i = 0; i < std::size(keys); ++i) {
        int const* const value = context.Find(keys[i]);
        EXPECT_EQ(value ? *value : 0, i % 3 == 0 ? 0 : static_cast<int>(keys[i].id));
        EXPECT_EQ(context[keys[i]], value ? *value : 0);
    }
}

TEST(ContextProcessor, CopiesShareOnlyTheSystemContext) {
    ContextProcessor processor = MakeProcessor();
    processor.set(ContextProcessor::FormatContext, Number, 1);
    processor.set(ContextProcessor::SystemContext, Word, std::string("before"));
    processor.AddFormatCommand({"XA", false, {}});
    processor.SetCurrentLabelNumber(3);
    ContextProcessor const copy = processor;
    ContextProcessor const clone = processor.DeepClone();

    processor.set(ContextProcessor::FormatContext, Number, 2);
    processor.set(ContextProcessor::SystemContext, Word, std::string("after"));
    processor.AddFormatCommand({"FS", false, {}});

    EXPECT_EQ(copy.at(Number), 1);
    EXPECT_EQ(copy.at(Word), "after");
    EXPECT_EQ(clone.at(Number), 1);
    EXPECT_EQ(clone.at(Word), "before");
    EXPECT_EQ(clone.GetContext(ContextProcessor::SystemContext), clone.GetSystemContext().get());
    EXPECT_EQ(Dump(copy.GetFormatCommands()), "^XA");
    EXPECT_EQ(Dump(processor.GetFormatCommands()), "^XA^FS");
    EXPECT_EQ(copy.CurrentLabelNumber(), 3U);
}

TEST(ContextProcessor, RecallsStoredFormats) {
    TemporaryDirectory const folder;
    std::ofstream(folder.Path() / "A.ZPL", std::ios::binary) << "^XA^FO1,2\r\n^GFB,1,2,1,^^^FDa,b^FS~SD30.5 ^XZ^FN1";
    ContextProcessor processor(folder.Path());
    processor.AddFormatCommand({"CI", false, {"28"}});

    processor.RecallFormat("B.ZPL");
    processor.RecallFormat("");  // a folder
    EXPECT_EQ(Dump(processor.GetFormatCommands()), "^CI[28]");
    processor.RecallFormat("A.ZPL");
    EXPECT_EQ(Dump(processor.GetFormatCommands()),
              "^CI[28]^XA^FO[1][2]^GF[B][1][2][1][^^]^FD[a][b]^FS~SD[30]~SD[30.5]^XZ^FN[1]");
}
