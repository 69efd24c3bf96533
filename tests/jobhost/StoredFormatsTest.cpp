#include <gtest/gtest.h>

#include <fstream>

#include "foundation/Files.h"
#include "foundation/Log.h"
#include "frontend/context/ObjectStore.h"
#include "labels/Job.h"
#include "tests/support/StreamRun.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/Texts.h"

namespace {

/// A printer that is switched off and on again between streams: only the folder of its store stays.
class StoredFormats : public testing::Test {
protected:
    StreamRun Start(std::string_view stream) {
        DeskSettings options;
        options.widthInches = options.heightInches = 2;
        options.machine.formatsFolder = storage_.Path();
        Desk desk(options);
        ClearMemoryDevice(storage_.Path());
        return RunStream(desk, stream);
    }

    TemporaryDirectory storage_;
    unsigned reports_ = 0;
    Log::ScopedSink sink_{[this](LogTopic, std::string_view) { ++reports_; }};
};

TEST_F(StoredFormats, RecalledAfterARestartDrawWhatTheyWouldHaveDrawn) {
    std::string const define =
        "^XA^DFE:T.ZPL^FO9,9^GB390,300,3^FS^FO20,20^A0N,40,30^FN1^FS^FO20,80^BY2^BCN,60,N^FN2^FS"
        "^FO20,200^A0R,30,30^FDfix,ed^FS^XZ";
    std::string const direct =
        "^XA^FO9,9^GB390,300,3^FS^FO20,20^A0N,40,30^FDone^FS^FO20,80^BY2^BCN,60,N^FD22^FS"
        "^FO20,200^A0R,30,30^FDfix,ed^FS^XZ";
    std::string const accents = "^XA^CI28^FO20,20^A0N,40,30^FD\xC3\xA9t\xC3\xA9, \xC3\xBC^FS^XZ";
    struct Row {
        char const* name;
        std::string define;
        std::string recall;
        std::string direct;
    };
    for (auto const& row : std::vector<Row>{
             {"new data", define, "^XA^XFE:T.ZPL^FN1^FDone^FS^FN2^FD22^FS^XZ", direct},
             {"data in the other order", define, "^XA^XFE:T.ZPL^FN2^FD22^FS^FN1^FDone^FS^XZ", direct},
             {"a short name in lower case", define, "^XA^XFt^FS^FN1^FDone^FS^FN2^FD22^FS^XZ", direct},
             {"recalled with other characters", define, "^XA^CD;^CC//XFE:T.ZPL/FN1/FDone/FS/FN2/FD22/FS/XZ", direct},
             {"stored with other characters",
              "^XA^CD;^CC//DFE:T.ZPL/FO9;9/GB390;300;3/FS/FO20;20/A0N;40;30/FN1/FS"
              "/FO20;80/BY2/BCN;60;N/FN2/FS/FO20;200/A0R;30;30/FDfix,ed/FS/XZ",
              "^XA^XFE:T.ZPL^FN1^FDone^FS^FN2^FD22^FS^XZ", direct},
             {"a delimiter changed behind the data", define, "^XA^XFE:T.ZPL^FN1^FDone^FS^FN2^FD22^FS^CD;^XZ", direct},
             {"data in another code page", "^XA^CI28^DFE:T.ZPL^FO20,20^A0N,40,30^FN1^FS^XZ",
              "^XA^XFE:T.ZPL^CI27^FN1^FD\xE9t\xE9, \xFC^FS^XZ", accents},
             {"data in UTF-8 for a format of code page 850", "^XA^DFE:T.ZPL^CI13^FO20,20^A0N,40,30^FN1^FS^XZ",
              "^XA^XFE:T.ZPL^CI28^FN1^FD\xC3\xA9t\xC3\xA9, \xC3\xBC^FS^XZ", accents},
             {"a format that keeps its own code page", "^XA^DFE:T.ZPL^CI27^FO20,20^A0N,40,30^FD\xE9t\xE9, \xFC^FS^XZ",
              "^XA^CI28^XFE:T.ZPL^XZ", accents},
             {"a number for text and barcode",
              "^XA^DFE:T.ZPL^FO9,9^FN1^FS^FO20,20^A0N,40,30^FN2^FS^FO20,80^BY2^BCN,60,N^FN1^FS^FO20,200^FN1^FS^"
              "XZ",
              "^XA^XFE:T.ZPL^FN1^FD22^FS^FN2^FDone^FS^XZ",
              "^XA^FO9,9^FD22^FS^FO20,20^A0N,40,30^FDone^FS^FO20,80^BY2^BCN,60,N^FD22^FS^FO20,200^FD22^FS^XZ"},
             {"two numbers with two fields each",
              "^XA^DFE:T^FO9,9^FN1^FS^FO9,49^FN1^FS^FO9,89^FN2^FS^FO9,129^FN2^FS^XZ",
              "^XA^XFE:T^FN1^FDone^FS^FN2^FDtwo^FS^XZ",
              "^XA^FO9,9^FDone^FS^FO9,49^FDone^FS^FO9,89^FDtwo^FS^FO9,129^FDtwo^FS^XZ"},
             {"a raw picture", "^XA^DFE:T.ZPL^FO20,20^GFB,4,4,1,\xFF^,~^FS^XZ", "^XA^XFE:T.ZPL^XZ",
              "^XA^FO20,20^GFA,8,4,1,FF5E2C7E^FS^XZ"},
             {"a serial template", "^XA^DFE:T.ZPL^FO20,20^A0N,40,30^FN1^SFdd^FS^XZ", "^XA^XFE:T^FN1^FD07^FS^XZ",
              "^XA^FO20,20^A0N,40,30^FD07^FS^XZ"},
             {"a name that pictures have", "^XA^DFE:T.GRF^FO20,20^FN1^FS^XZ", "^XA^XFE:T.GRF^FN1^FDa^FS^XZ",
              "^XA^FO20,20^FDa^FS^XZ"},
             {"two recalls in one format", "^XA^DFE:T^FO20,20^FN1^FS^XZ^XA^DFE:U^FO20,60^FN2^FS^XZ",
              "^XA^XFE:T^FN1^FDa^FS^XFE:U^FN2^FDb^FS^XZ", "^XA^FO20,20^FDa^FS^FO20,60^FDb^FS^XZ"},
         }) {
        SCOPED_TRACE(row.name);
        EXPECT_TRUE(Start(row.define).labels.empty());
        auto const recalled = Start(row.recall);
        auto const drawn = Start(row.direct);
        ASSERT_EQ(recalled.labels.size(), 1U);
        EXPECT_EQ(recalled.labels.front().rows, drawn.labels.at(0).rows);
    }
    EXPECT_EQ(reports_, 0U);
}

TEST_F(StoredFormats, MemoryIsFreeAgainWhenItIsClearedOrObjectsAreRemoved) {
    std::string const most(std::size_t{40} << 20, 'x');
    auto const store = [&](char letter) {
        return StoreObject(storage_.Path(), *ObjectName::Parse(std::string("R:") + letter, 'R', "", "GRF"), most);
    };
    EXPECT_TRUE(store('A'));
    EXPECT_FALSE(store('B'));
    ClearMemoryDevice(storage_.Path());
    EXPECT_TRUE(store('B'));
    std::filesystem::remove(storage_.Path() / "R/B.GRF");
    EXPECT_TRUE(store('C'));
    EXPECT_FALSE(store('A'));
}

TEST_F(StoredFormats, OfTheMemoryDeviceEndWithTheProcess) {
    std::string const store = "^XA^DFR:T^FDa^FS^XZ~DGR:G,1,1,FF^XA^DFE:T^FDb^FS^XZ~DGE:G,1,1,FF";
    EXPECT_EQ(Texts(Start(store + "^XA^XFT^XZ")), std::vector<std::string>{"a"});
    EXPECT_EQ(Texts(Start("^XA^XFT^XZ^XA^XFR:T^XZ")), std::vector<std::string>{"b"});
    EXPECT_EQ(Start("^XA^XGE:G^FS^XZ^XA^XGR:G^FS^XZ").labels.size(), 1U);
    EXPECT_EQ(Texts(Start(store + "^XA~JR^FDlost^FS^XZ^XA^XFT^XZ")), std::vector<std::string>{"b"});
}

TEST_F(StoredFormats, OfAKeptFolderAreThereAtOnceAndGetTheirNamesTogether) {
    std::filesystem::create_directories(storage_.Path() / "E");
    std::ofstream(storage_.Path() / "E/LEFT.ZPL.7-7.tmp") << "of a process that was killed";
    KeepObjects(storage_.Path());
    EXPECT_TRUE(std::filesystem::is_empty(storage_.Path() / "E"));
    auto const text = [&](char const* of) { return Texts(Start(std::string("^XA^XF") + of + "^XZ")); };
    auto const kept = [&] { return ReadRegularFile(storage_.Path() / "E/T.ZPL"); };
    Start("^XA^DFE:T^FDold^FS^XZ");
    SettleObjects();
    std::string const old = kept();
    EXPECT_NE(old.find("old"), old.npos);
    std::string many;
    for (int i = 0; i < 20; ++i) many += "^XA^DFE:N" + std::to_string(i) + "^FDn^FS^XZ";
    Start("^XA^DFE:T^FDlost^FS^XZ^XA^DFE:T^FDnew^FS^XZ" + many);
    EXPECT_EQ(kept(), old) << "whole until the disk has the new one";
    EXPECT_EQ(text("E:T"), std::vector<std::string>{"new"});
    EXPECT_EQ(text("N19"), std::vector<std::string>{"n"});
    SettleObjects();
    EXPECT_NE(kept().find("new"), std::string::npos);
    unsigned files = 0;
    for (auto const& file : std::filesystem::directory_iterator(storage_.Path() / "E"))
        files += file.path().extension() == ".ZPL" ? 1 : 1000;
    EXPECT_EQ(files, 21U);
}

/// A few bytes may ask for much, but a label costs no more than pages of the largest size.
TEST_F(StoredFormats, WhatALabelDrawsHasALimit) {
    std::string reports;
    Log::ScopedSink const sink([&](LogTopic, std::string_view text) { reports += std::string(text) + '\n'; });
    for (auto const& [stream, report] : std::initializer_list<std::pair<std::string, char const*>>{
             {Repeated(100, "^FO1,1^GB32000,32000,32000^FS"), "256 times over"},
             {Repeated(30, "^FO1,1^A0N,9999,9999^FDWWWW^FS"), "256 times over"},
             {Repeated(500, "^FO1,1^FN1^FS") + "^FN1^FD" + std::string(20000, 'x') + "^FS", "drawn everywhere"},
         }) {
        reports.clear();
        EXPECT_EQ(Start("^XA" + stream + "^XZ^XA^FDafter^FS^XZ").labels.size(), 2U);
        EXPECT_NE(reports.find(report), std::string::npos) << stream.substr(0, 40) << '\n' << reports.substr(0, 500);
    }
}

TEST_F(StoredFormats, PicturesAreThoseOfTheTimeWhenTheFormatEnded) {
    Desk desk{DeskSettings{}};
    auto const session = desk.MakeSession();
    std::vector<Zpl::Label> labels;
    std::string const stream =
        "~DGR:G,1,1,FF^XA^FO0,0^XGR:G^FS^XZ~DGR:G,2,1,AA55^XA^PQ2^FO0,0^XGG^FS^XZ~DGR:G,1,1,00~DGE:H,1,1,FF";
    for (std::string_view rest = stream; !rest.empty();) {
        auto result = session->Consume(rest, false, true);
        rest = result.remaining;
        if (result.label) labels.push_back(std::move(std::get<1>(*result.label)));
    }
    Zpl::Job job(std::move(labels), {}, false);
    // As the queue draws them, long after, and again behind a pause.
    for (auto const& [page, first, second] : {std::tuple{2, 0xAA, 0x55}, {0, 0xFF, 0x00}, {1, 0xAA, 0x55}}) {
        job.RenderLabel(static_cast<unsigned>(page));
        unsigned width = 0;
        unsigned height = 0;
        auto const rows = session->Target().GetPageBitmap(width, height);
        EXPECT_EQ(rows[0], first) << page;
        EXPECT_EQ(rows[(width + 7) / 8], second) << page;
    }
}

// A label that waits to be drawn shares what it has recalled with others.
TEST_F(StoredFormats, StoredAnewAreRecalledAnew) {
    Desk desk{DeskSettings{}};
    std::vector<Zpl::Label> waiting;
    std::string stream;
    for (char const* const text : {"a", "b", "b", "c"})
        stream += "^XA^DFR:T^FD" + std::string(text) + "^FS^XZ^XA^XFR:T^XZ";
    auto const run = RunStream(desk, stream, [&waiting](Zpl::Label& label, auto&) { waiting.push_back(label); });
    EXPECT_EQ(Texts(run), (std::vector<std::string>{"a", "b", "b", "c"}));
}

TEST_F(StoredFormats, AThousandStandBesideEachOther) {
    std::string store;
    std::string recall;
    for (int i = 0; i < 1000; ++i) {
        std::string const number = std::to_string(i);
        store += "^XA^DFE:F" + number + ".ZPL^FD" + number + "^FS^XZ";
        recall += "^XA^XFE:F" + number + ".ZPL^XZ";
    }
    Start(store);
    auto const texts = Texts(Start(recall));
    ASSERT_EQ(texts.size(), 1000U);
    for (int i = 0; i < 1000; ++i) EXPECT_EQ(texts[static_cast<std::size_t>(i)], std::to_string(i));
}

TEST_F(StoredFormats, OneThatRecallsItselfEndsAtALimit) {
    Start(Repeated(8, "^XA^DFE:S^FO9,9^FDa^FS" + Repeated(10, "^XFE:S") + "^XZ"));
    EXPECT_GT(reports_, 0U);
    EXPECT_EQ(Texts(Start("^XA^XFE:S^XZ^XA^FDnext^FS^XZ")).back(), "next");
}

TEST_F(StoredFormats, ReportDataThatARecallWouldReadAsCommands) {
    Start("^XA^CC/^DFx/DFE:T/FO9,9/FDa^b~c/FS/FO9,9/GFB,2,2,1,^~/FS/XZ");
    EXPECT_EQ(reports_, 1U);
}

TEST_F(StoredFormats, DataThatARecallReadsAsCommandsStoreNothing) {
    Start("^XA^CC//DFE:T/FO9,9/FDa^FS^DFE:U^FDb/FS/XZ");
    EXPECT_EQ(Start("^XA^XFE:T^XZ").labels.size(), 1U);
    EXPECT_TRUE(Start("^XA^XFE:U^XZ").labels.empty());
}

TEST_F(StoredFormats, NamesStayInTheirFolder) {
    for (std::string const name : {"E:../T", "E:a/b", "../T.ZPL", "E:..", "Q:T", "E:\\T", "/tmp/T",
                                   "E:12345678901234567", "E:T.ZPL/x", "E:a\x01"}) {
        Start("^XA^DF" + name + "^FDx^FS^XZ");
        EXPECT_TRUE(Start("^XA^XF" + name + "^XZ").labels.empty()) << name;
    }
    EXPECT_TRUE(std::filesystem::is_empty(storage_.Path()));
}

}  // namespace
