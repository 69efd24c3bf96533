#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <barrier>
#include <cstdlib>
#include <thread>

#include "foundation/Files.h"
#include "library/zplhost.hpp"
#include "tests/support/Sanitizers.h"
#include "tests/support/TemporaryDirectory.h"

// The library as programs of others load it.
namespace {

using testing::EndsWith;
using testing::HasSubstr;

struct DrawnStream {
    std::vector<std::string> labels;
    std::vector<std::string> pages;
    std::string findings;

    friend bool operator==(DrawnStream const&, DrawnStream const&) = default;
};

void TakeLabels(zpl::Desk& desk, DrawnStream& drawn) {
    while (auto label = desk.NextLabel()) {
        drawn.labels.push_back(std::to_string(label->Number()) + " at " + std::to_string(label->Offset()) + " x " +
                               std::to_string(label->Copies()) + ": " + std::string(label->Text()));
        for (unsigned copy = 0; copy < label->Copies(); ++copy) {
            auto const page = label->Draw(copy);
            drawn.pages.push_back(page.Png() + std::string(page.Report()));
        }
    }
}

/// Feeds a stream in pieces of `size` bytes, the first one of `first`, and takes labels behind each piece or at the
/// end.
DrawnStream Draw(zpl::Desk& desk, std::string_view stream, std::size_t first, std::size_t size, bool atOnce = true) {
    DrawnStream drawn;
    for (std::size_t at = 0, piece = first; at < stream.size(); at += piece, piece = size) {
        if (piece == 0) piece = size;
        desk.Feed(stream.substr(at, piece));
        if (atOnce) TakeLabels(desk, drawn);
    }
    desk.Finish();
    TakeLabels(desk, drawn);
    drawn.findings = desk.Findings();
    return drawn;
}

DrawnStream Draw(zpl::Desk& desk, std::string_view stream) { return Draw(desk, stream, stream.size(), 1); }

/// Raw bytes, an encoding, a stored format, a number that ends its format, a counter, a kept picture, characters that
/// change, a command that nothing ends.
std::string const HardStream =
    "\xEF\xBB\xBF^XA^DFR:F^FO5,5^FN1^FS^XZ\n^XA^XFR:F^FN1^FD\xC3\xA9^FS^CI28^FO5,40^GFB,4,4,2,^~^X^FS^XZ"
    "^XA^FB99999999999^FDx^FS^XZ\n^XA^PQ3^MCN^FO60,5^SNA08,1,Y^FS^XZ^XA^CC++FO5,60+FDb+FS+XZ"
    "+XA+QQ+FO5,5+BCN,30+FDtoo wide for a page of one inch+FS+PQ2+XZ+XA+FO1,1+FDc+FS+XZ+QR1";

zpl::Settings Inch() {
    return {.widthInches = 1, .heightInches = 1, .time = "2026-01-02T03:04:05", .mapsFields = true};
}

TEST(ZplHostLibrary, MakesTheSameOfAStreamHoweverItIsCut) {
    // One desk for all: a stream finds nothing of those before it but what is stored.
    zpl::Desk desk(Inch());
    auto const expected = Draw(desk, HardStream);
    ASSERT_EQ(expected.labels.size(), 5U);
    EXPECT_EQ(expected.labels[0], "1 at 29 x 1: \xC3\xA9");
    ASSERT_EQ(expected.pages.size(), 8U);
    for (char const* told : {"is out of range", "barcode-cut", "^QQ is not known", "^QR is not known"})
        EXPECT_THAT(expected.findings, HasSubstr(told));
    auto const expectSame = [&](std::size_t first, std::size_t size, bool atOnce) {
        EXPECT_EQ(Draw(desk, HardStream, first, size, atOnce), expected) << "behind byte " << first;
    };
    for (std::size_t cut = 0; cut <= HardStream.size(); cut += SanitizerFactor)
        expectSame(cut, HardStream.size(), cut % 2 == 0);
    expectSame(1, 1, true);
    expectSame(1, 1, false);
}

/// One line as a program would write it again.
std::string TextOf(rapidjson::Value const& value) {
    rapidjson::StringBuffer text;
    rapidjson::Writer<rapidjson::StringBuffer> writer(text);
    value.Accept(writer);
    return text.GetString();
}

TEST(ZplHostLibrary, GivesThePagesAndReportsOfTheCommandLine) {
    for (char const* name : {"shipping-label", "inventory-batch", "stored-format", "barcodes"}) {
        SCOPED_TRACE(name);
        TemporaryDirectory const folder;
        std::string const file = std::string("examples/") + name + ".zpl";
        std::string const out = " --out '" + folder.Path().string() + "' ";
        std::string const command =
            ZPL_PROGRAM " render --json " + out + file + " >'" + (folder / "json").string() + "'";
        ASSERT_EQ(std::system(command.c_str()), 0);
        ASSERT_EQ(std::system((ZPL_PROGRAM " render --format pdf " + out + file + " >/dev/null 2>&1").c_str()), 0);
        rapidjson::Document report;
        report.Parse(ReadRegularFile(folder / "json").c_str());
        auto& input = report["inputs"][0];

        zpl::Desk desk({.mapsFields = true});
        desk.Feed(ReadRegularFile(file));
        desk.Finish();
        std::vector<zpl::Page> pages;
        while (auto label = desk.NextLabel())
            for (unsigned copy = 0; copy < label->Copies(); ++copy) pages.push_back(label->Draw(copy));
        ASSERT_EQ(pages.size(), input["pages"].Size());
        for (unsigned i = 0; i < pages.size(); ++i) {
            auto& told = input["pages"][i];
            EXPECT_EQ(pages[i].Png(), ReadRegularFile(told["path"].GetString()));
            EXPECT_EQ(pages[i].Fields(), TextOf(told["fields"]));
            told.EraseMember("path");
            EXPECT_EQ(pages[i].Report(), TextOf(told));
            std::string const rows(pages[i].Rows().begin(), pages[i].Rows().end());
            EXPECT_EQ(pages[i].Write("pbm"), "P4\n" + std::to_string(pages[i].Width()) + " " +
                                                 std::to_string(pages[i].Height()) + "\n" + rows);
        }
        EXPECT_EQ(desk.Findings(), TextOf(input["findings"]));
        EXPECT_EQ(zpl::Page::Pdf(pages), ReadRegularFile(folder / (std::string(name) + ".pdf")));
    }
}

TEST(ZplHostLibrary, DrawsCopiesInAnyOrderAlsoWhenTheStreamAndTheDeskAreGone) {
    std::optional<zpl::Desk> desk(Inch());
    desk->Feed("^XA^PQ4^FO5,5^A0N,60,60^SN1,1^FS^XZ^XA^CC++FO5,5+FDother+FS+XZ");
    auto first = desk->NextLabel().value();
    auto second = desk->NextLabel().value();
    std::vector<std::string> inOrder;
    for (unsigned copy = 0; copy < 4; ++copy) inOrder.push_back(first.Draw(copy).Png());
    EXPECT_NE(inOrder[0], inOrder[3]);
    auto const page = first.Draw(2);
    desk->Finish();
    desk->Feed("^XA^PW50^FO0,0^GB50,50,50^FS^XZ");
    EXPECT_EQ(desk->NextLabel().value().Draw().Width(), 50U);
    desk.reset();
    for (unsigned const copy : {2, 0, 1, 3, 3}) EXPECT_EQ(first.Draw(copy).Png(), inOrder[copy]) << copy;
    EXPECT_EQ(second.Draw().Width(), 203U);
    EXPECT_EQ(page.Png(), inOrder[2]);
}

TEST(ZplHostLibrary, DesksHaveStoresSettingsAndFindingsOfTheirOwn) {
    TemporaryDirectory const folder;
    zpl::Desk kept({.widthInches = 2, .heightInches = 1, .storageFolder = (folder / "store").string()});
    zpl::Desk fine({.dpi = 300, .widthInches = 1, .heightInches = 1, .tag = "epc=00112233"});
    auto const store = [](char const* data) {
        return std::string("^XA^DFE:T^FO5,5^FN1^FS^FO5,50^FD") + data + "^FS^XZ";
    };
    std::string const recall = "^XA^XFE:T^FN1^FDn^FS^RFR,H^FN2^FS^XZ";
    Draw(kept, store("kept"));
    Draw(fine, store("fine"));
    auto const ofKept = Draw(kept, recall);
    auto const ofFine = Draw(fine, recall);
    EXPECT_THAT(ofKept.pages.at(0), HasSubstr(R"({"width":406,"height":203,)"));
    EXPECT_THAT(ofFine.pages.at(0), HasSubstr(R"({"width":300,"height":300,)"));
    EXPECT_THAT(ofKept.findings, HasSubstr("^RF is not known"));
    EXPECT_EQ(ofFine.findings, "[]");
    zpl::Desk again({.widthInches = 2, .heightInches = 1, .storageFolder = (folder / "store").string()});
    EXPECT_EQ(Draw(again, recall).pages, ofKept.pages);
    zpl::Desk fresh;
    EXPECT_EQ(Draw(fresh, recall).labels.size(), 1U);
    EXPECT_NE(Draw(fresh, recall).pages, ofKept.pages);
}

TEST(ZplHostLibrary, DesksInTwoThreadsDrawDifferentStreamsAtOnce) {
    std::string const streams[] = {HardStream, ReadRegularFile("examples/barcodes.zpl")};
    zpl::Settings const settings[] = {Inch(), {.dpi = 300, .printerDpi = 203}};
    DrawnStream alone[2];
    for (int i = 0; i < 2; ++i) {
        zpl::Desk desk(settings[i]);
        alone[i] = Draw(desk, streams[i]);
    }
    for (int round = 0; round < 3; ++round) {
        DrawnStream together[2];
        std::barrier start(2);
        std::optional<zpl::Page> shared;
        auto const draw = [&](int i) {
            zpl::Desk desk(settings[i]);
            start.arrive_and_wait();
            together[i] = Draw(desk, streams[i]);
            if (i == 0) {
                desk.Feed("^XA^FO5,5^FDshared^FS^XZ");
                shared.emplace(desk.NextLabel().value().Draw());
            }
            // Both read the page of one of them.
            start.arrive_and_wait();
            EXPECT_THAT(shared->Write("pbm"), EndsWith(std::string(shared->Rows().begin(), shared->Rows().end())));
        };
        std::thread other(draw, 1);
        draw(0);
        other.join();
        for (int i = 0; i < 2; ++i) EXPECT_EQ(together[i], alone[i]);
    }
}

TEST(ZplHostLibrary, SendsAnswersAndLetsNoneOfThemCallItsDesk) {
    zpl::Desk desk(Inch());
    std::string answers;
    desk.OnAnswer([&](std::string_view bytes) { answers += bytes; });
    desk.Feed("~HS");
    EXPECT_THAT(answers, HasSubstr("\x02"
                                   "030,0,0,"));
    answers.clear();
    desk.Feed("^XA^FO5,5^FN1^FDsaid^FS^HV1,4^XZ");
    auto label = desk.NextLabel().value();
    EXPECT_EQ(answers, "");
    label.Draw();
    label.Draw();
    EXPECT_EQ(answers, "said");
    desk.OnAnswer([&](std::string_view) { desk.Feed("^XA^XZ"); });
    EXPECT_THROW(desk.Feed("~HS"), zpl::Error);
    desk.OnAnswer({});
    desk.Feed("~HS");
}

TEST(ZplHostLibrary, RefusesWhatItCannotUseWithASentence) {
    struct Row {
        char const* sentence;
        std::function<void(zpl_settings&)> set;
    };
    char const* const noFont[] = {"A=/nowhere.ttf", nullptr};
    char const* const badFont[] = {"A", nullptr};
    for (auto const& [sentence, set] : std::initializer_list<Row>{
             {"set up", [](auto& s) { s.size = 0; }},
             {"203, 300 or 600 dpi, not 0", [](auto& s) { s.dpi = 0; }},
             {"203, 300 or 600 dpi, not 72", [](auto& s) { s.printer_dpi = 72; }},
             {"0.1 to 200 inches", [](auto& s) { s.width_inches = 1e300; }},
             {"0.1 to 200 inches", [](auto& s) { s.height_inches = -std::numeric_limits<double>::quiet_NaN(); }},
             {"cannot read the font /nowhere.ttf", [&](auto& s) { s.fonts = noFont; }},
             {"LETTER=FILE", [&](auto& s) { s.fonts = badFont; }},
             {"not \"noon\"", [](auto& s) { s.time = "noon"; }},
             {"a tag is blank or", [](auto& s) { s.tag = "epc=1"; }},
         }) {
        zpl_settings settings;
        zpl_settings_init(&settings);
        set(settings);
        zpl_desk* desk = nullptr;
        EXPECT_EQ(zpl_desk_open(&settings, &desk), ZPL_MISUSED) << sentence;
        EXPECT_THAT(zpl_error(), HasSubstr(sentence));
        EXPECT_EQ(desk, nullptr);
    }
    zpl::Desk desk(Inch());
    desk.Feed("^XA^FO5,5^FDa^FS^XZ");
    auto label = desk.NextLabel().value();
    EXPECT_THROW(label.Draw(1), zpl::Error);
    auto const page = label.Draw();
    EXPECT_THROW(page.Write("gif"), zpl::Error);
    EXPECT_THAT(zpl_error(), HasSubstr("there are png pbm pdf"));
    EXPECT_THROW(zpl::Page::Pdf({}), zpl::Error);
    EXPECT_THROW(desk.Feed({static_cast<char const*>(nullptr), 1}), zpl::Error);
    char byte = 0;
    EXPECT_THROW(desk.Feed(std::string_view(&byte, SIZE_MAX)), zpl::Error);

    zpl_page const* const none = nullptr;
    std::size_t size = 1;
    EXPECT_EQ(zpl_desk_open(nullptr, nullptr), ZPL_MISUSED);
    EXPECT_EQ(zpl_desk_feed(nullptr, "", 0), ZPL_MISUSED);
    EXPECT_EQ(zpl_desk_finish(nullptr), ZPL_MISUSED);
    EXPECT_EQ(zpl_desk_next_label(nullptr, nullptr), ZPL_MISUSED);
    EXPECT_EQ(zpl_desk_findings(nullptr, nullptr), ZPL_MISUSED);
    EXPECT_EQ(zpl_desk_on_answer(nullptr, nullptr, nullptr), ZPL_MISUSED);
    EXPECT_EQ(zpl_label_draw(nullptr, 0, nullptr), ZPL_MISUSED);
    EXPECT_EQ(zpl_page_copy_rows(nullptr, &byte, 1, 1), ZPL_MISUSED);
    EXPECT_EQ(zpl_page_write(nullptr, "png", nullptr, &size), ZPL_MISUSED);
    EXPECT_EQ(zpl_page_write(page.Handle(), nullptr, nullptr, &size), ZPL_MISUSED);
    EXPECT_EQ(zpl_pages_write_pdf(&none, 1, nullptr, &size), ZPL_MISUSED);
    EXPECT_EQ(zpl_page_rows(nullptr), nullptr);
    EXPECT_EQ(zpl_page_width(nullptr) + zpl_label_copies(nullptr), 0U);
    zpl_page_free(nullptr);
    zpl_label_free(nullptr);
    zpl_desk_close(nullptr);
}

TEST(ZplHostLibrary, WritesNoFurtherThanTheMemoryThatItIsGiven) {
    zpl::Desk desk(Inch());
    desk.Feed("^XA^PW20^LL3^FO0,0^GB20,1,1^FS^FO19,2^GB1,1,1^FS^XZ");
    auto const page = desk.NextLabel().value().Draw();
    ASSERT_EQ(page.BytesPerRow(), 3U);
    std::string const rows("\xFF\xFF\xF0\0\0\0\0\0\x10", 9);
    EXPECT_EQ(std::string(page.Rows().begin(), page.Rows().end()), rows);
    struct Row {
        std::size_t size, stride;
        zpl_status status;
    };
    for (auto const& [size, stride, status] : std::initializer_list<Row>{{9, 3, ZPL_OK},
                                                                         {11, 4, ZPL_OK},
                                                                         {8, 3, ZPL_TOO_SMALL},
                                                                         {10, 4, ZPL_TOO_SMALL},
                                                                         {2, 3, ZPL_TOO_SMALL},
                                                                         {0, 3, ZPL_TOO_SMALL},
                                                                         {9, SIZE_MAX / 2, ZPL_TOO_SMALL},
                                                                         {9, 2, ZPL_MISUSED}}) {
        std::string memory(16, '-');
        EXPECT_EQ(zpl_page_copy_rows(page.Handle(), memory.data(), size, stride), status) << size << " " << stride;
        std::string expected(16, '-');
        for (std::size_t y = 0; status == ZPL_OK && y < 3; ++y) expected.replace(y * stride, 3, rows.substr(y * 3, 3));
        EXPECT_EQ(memory, expected) << size << " " << stride;
    }
    std::string const file = page.Png();
    std::string memory(file.size() + 1, '-');
    std::size_t size = file.size() - 1;
    EXPECT_EQ(zpl_page_write(page.Handle(), "png", memory.data(), &size), ZPL_TOO_SMALL);
    EXPECT_EQ(size, file.size());
    EXPECT_EQ(memory, std::string(file.size() + 1, '-'));
    EXPECT_EQ(zpl_page_write(page.Handle(), "png", memory.data(), &size), ZPL_OK);
    EXPECT_EQ(memory, file + '-');
}

}  // namespace
