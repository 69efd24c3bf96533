#include "library/forms/Template.h"

#include <gtest/gtest.h>

#include <fstream>

#include "library/forms/FieldSettings.h"
#include "tests/support/TemporaryDirectory.h"

namespace {

class TemplateTest : public testing::Test {
protected:
    TemplateTest() { std::filesystem::create_directories(store_ / "E"); }

    static DeskSettings Settings(std::filesystem::path const& store) {
        DeskSettings settings;
        settings.machine.formatsFolder = store;
        return settings;
    }
    void Store(std::string const& bytes) {
        bytes_ = bytes;
        std::ofstream(store_ / "E/T.ZPL", std::ios::binary) << bytes;
    }
    std::vector<TemplateField> Fields() { return VariableFields(drawer_.Draw("^XA^XFE:T.ZPL^FS^XZ")); }
    /// What the label says when the fields are filled.
    std::vector<std::string> Texts(std::string const& stream) {
        auto const drawn = drawer_.Draw(stream);
        EXPECT_TRUE(drawn.findings.empty()) << drawn.findings.front().text;
        std::vector<std::string> texts;
        for (auto const& field : drawn.fields) texts.push_back(field.details.text);
        return texts;
    }

    TemporaryDirectory folder_;
    std::filesystem::path store_ = folder_ / "Formats";
    StoredFormat const format_{"E", "T.ZPL"};
    std::string bytes_;
    FormatDrawer drawer_{Settings(store_)};
};

TEST_F(TemplateTest, FindsEachFieldThatWaitsForDataOnce) {
    Store(
        "^FO9,9^A0N,30^FN3\"Who, where\"^FS^FO9,60^A0N,30^FN1^FS^FO9,90^A0N,30^FDfix^FS^FO9,120^A0N,30^FN7^FDset^FS"
        "^FO9,160^BEN,60^FN12\"Item\"^FS^FO9,260^A0N,30^FN12^FS");
    auto const fields = Fields();
    ASSERT_EQ(fields.size(), 3U);
    EXPECT_EQ(fields[0], (TemplateField{3, "Who, where", "Who, where", "", {}}));
    EXPECT_EQ(fields[1], (TemplateField{1, "", "Field 1", "", {}}));
    EXPECT_EQ(fields[2], (TemplateField{12, "Item", "Item", "", {false, true, 12, 13}}));
}

TEST_F(TemplateTest, PrintsAnyTextUnderAnyCharacterSet) {
    std::string const text = "\xC3\xA9t\xC3\xA9 ^XZ~JA_5E ,;\" \xE2\x82\xAC";
    for (std::string const own : {"", "^CI27", "^CI13", "^CI28"}) {
        SCOPED_TRACE(own);
        Store(own + "^FO9,9^A0N,30^FN1^FS^FO9,60^A0N,30^FN2^FS");
        FilledStream stream({});
        stream.Add(format_, bytes_, {{1, text}, {2, ""}}, 3);
        EXPECT_EQ(Texts(stream.Bytes()).front(), text);
        auto const set = stream.Bytes().rfind("^CI");
        EXPECT_EQ(set == std::string::npos ? "" : stream.Bytes().substr(set, own.size()), own);
        EXPECT_NE(stream.Bytes().find("^PQ3^"), std::string::npos);
    }
    FilledStream both({812, 1218});
    both.Add(format_, "^CI27^FN1", {{1, text}}, 1);
    both.Add(format_, "^FN1", {{1, text}}, 1);
    auto const second = both.Bytes().substr(both.Bytes().rfind("^XA"));
    EXPECT_NE(second.find("^CI28^FN1"), std::string::npos) << "the set of the format before it is in force";
    EXPECT_TRUE(second.starts_with("^XA^PW812^LL1218^XF")) << "the format before it may have said another size";
}

TEST_F(TemplateTest, ChecksValues) {
    struct Row {
        ValueChecks checks;
        std::string value;
        char const* fault;
    };
    ValueChecks const digits{false, true, 2, 4};
    for (auto const& row : std::vector<Row>{
             {{}, "", ""},
             {{true}, "", "a value is needed here"},
             {digits, "", ""},
             {digits, "12", ""},
             {digits, "1", "at least 2 characters, and there are 1"},
             {digits, "12345", "at most 4 characters, and there are 5"},
             {digits, "12a", "only digits may stand here"},
             {{false, false, 0, 3}, "\xC3\xA9\xC3\xA9\xC3\xA9", ""},
             {{}, "\xE9", "the text is not UTF-8"},
             {{}, std::string(9000, 'x'), "the text is longer than a label can hold"},
         })
        EXPECT_EQ(FaultOf({1, "", "name", "", row.checks}, row.value), row.fault) << row.value.substr(0, 20);
}

TEST_F(TemplateTest, KeepsWhatIsSettledBesideTheStore) {
    FieldSettings const settings(store_);
    TemplateField const a{1, "A", "A", "", {}};
    TemplateField const b{2, "B", "B", "", {}};
    TemplateField const settled{2, "B", "Lot \"x\"", "7", {true, true, 1, 9}};
    EXPECT_EQ(settings.Of(format_, {a, b}).fields, (std::vector{a, b}));
    settings.Save(format_, {settled, a});
    EXPECT_EQ(settings.Of(format_, {a, b}).fields, (std::vector{settled, a}));
    EXPECT_TRUE(StoredFormats(store_).List().empty());

    TemplateField const other{2, "Colour", "Colour", "", {}};
    auto const changed = settings.Of(format_, {other, {3, "", "Field 3", "", {}}});
    EXPECT_EQ(changed.fields.size(), 2U);
    EXPECT_EQ(changed.fields.front(), other) << "a field of another meaning keeps none of it";
    EXPECT_EQ(changed.remarks.size(), 2U);

    auto const file = folder_ / "TemplateFields/E/T.ZPL.json";
    for (char const* text : {"{", "[]", "{\"version\":2,\"fields\":[]}", "{\"version\":1,\"fields\":[7]}"}) {
        std::ofstream(file) << text;
        auto const broken = settings.Of(format_, {a});
        EXPECT_EQ(broken.fields, std::vector{a}) << text;
        EXPECT_EQ(broken.remarks.size(), 1U) << text;
    }
    std::filesystem::remove_all(folder_ / "TemplateFields");
    std::ofstream(folder_ / "TemplateFields") << "no folder";
    EXPECT_THROW(settings.Save(format_, {a}), std::runtime_error);
}

}  // namespace
