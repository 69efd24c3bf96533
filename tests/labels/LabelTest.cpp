#include "labels/Label.h"

#include <gtest/gtest.h>

#include "frontend/context/ZplContextKeys.h"
#include "frontend/processor/CreateHandlers.h"
#include "frontend/processor/ZplCommandProcessor.h"
#include "labels/Job.h"
#include "tests/support/FakePrinterContext.h"
#include "tests/support/RecordingGraphicContext.h"
#include "tests/support/Texts.h"

namespace {

/// Writes down what a label asks of the page as a whole.
class PageRecorder : public RecordingGraphicContext {
public:
    std::string StartJob(std::string_view name, unsigned pages, std::vector<unsigned> const& pauses, bool flag,
                         std::vector<PageRangeRfidOperations> const& tags, std::optional<int> density,
                         bool pause) override {
        std::ostringstream line;
        line << "job " << name << " pages " << pages << " pauses";
        for (unsigned const page : pauses) line << ' ' << page;
        for (auto const& range : tags) line << " tag " << range.firstPage << '-' << range.lastPage;
        if (density) line << " density " << *density;
        page << line.str() << (flag ? " flag" : "") << (pause ? " pause" : "") << '\n';
        return "folder";
    }
    void StartLabel() override { page << "start "; }
    void RequestCut(unsigned count) override { page << "cut" << count << ' '; }
    void SetSuppressBackfeed(bool suppress) override { page << (suppress ? "nobackfeed " : ""); }
    void SetLabelOriginX(unsigned x) override { page << 'x' << x << ' '; }
    void SetLabelOriginY(unsigned y) override { page << 'y' << y << ' '; }
    void EndLabel(Scripting::LabelSettings const& s) override {
        page << "end " << s.labelWidth << 'x' << s.labelLength << " mode " << s.printMode
             << (s.upright ? "" : " turned") << (s.mirror ? " mirrored" : "") << (s.useStoredImage ? " stored" : "")
             << " scale " << s.formatScale << " top " << s.adjustY << '\n';
    }
    void RenderPage(std::filesystem::path const& job, unsigned number, bool isLast) override {
        page << "page " << job.string() << '/' << number << (isLast ? " last" : "") << '\n';
    }

    std::ostringstream page;
};

class LabelTest : public testing::Test {
protected:
    LabelTest() {
        system_ = std::make_shared<Context>(ContextProcessor::SystemContext);
        processor_.SetSystemContext(system_);
        processor_.SetGraphicContext(target_);
        processor_.SetPrinterContext(printer_);
    }

    std::vector<Zpl::Label> Labels(std::string_view stream) {
        std::vector<Zpl::Label> labels;
        while (!stream.empty()) {
            auto result = processor_.ProcessString(stream, false, true);
            stream = result.remaining;
            if (result.label) labels.push_back(std::get<1>(*result.label));
        }
        Take();
        return labels;
    }

    std::string Take() {
        target_->calls.clear();
        std::string const text = target_->page.str();
        target_->page.str("");
        return text;
    }

    CommandHandlerPool pool_ = CreateHandlers(true, false);
    std::shared_ptr<PageRecorder> target_ = std::make_shared<PageRecorder>();
    std::shared_ptr<FakePrinterContext> printer_ = std::make_shared<FakePrinterContext>();
    std::shared_ptr<Context> system_;
    ZplCommandProcessor processor_{pool_, {}};
};

TEST_F(LabelTest, AsksForCuts) {
    struct Row {
        char const* name;
        char const* quantity;
        bool cuts;
        std::optional<unsigned> interval;
        bool pageEnd;
        std::vector<unsigned> cutsPerCopy;
    };
    for (auto const& row : std::vector<Row>{
             {"no cutter", "^PQ3", false, {}, false, {0, 0, 0}},
             {"behind the last copy", "^PQ3", true, {}, false, {0, 0, 1}},
             {"behind the last copy, counted by the printer", "^PQ3", true, 5, false, {0, 0, 1}},
             {"the printer counts none", "^PQ3", true, 0, false, {0, 0, 0}},
             {"groups of two", "^PQ3,2", false, {}, false, {0, 1, 0}},
             {"group end and last copy both ask", "^PQ4,2", true, {}, false, {0, 1, 0, 2}},
             {"the end of the job", "^PQ2", false, {}, true, {1, 1}},
         }) {
        SCOPED_TRACE(row.name);
        printer_->cutsAfterLabel = row.cuts;
        printer_->cutInterval = row.interval;
        auto labels = Labels("^XA" + std::string(row.quantity) + "^FDa^FS^XZ");
        std::vector<unsigned> cuts;
        for (unsigned copy = 0; copy < row.cutsPerCopy.size(); ++copy) {
            labels.at(0).ProcessLabel(copy, row.pageEnd);
            cuts.push_back(CountOf("cut1", Take()));
        }
        EXPECT_EQ(cuts, row.cutsPerCopy);
    }
}

TEST_F(LabelTest, HandsItsSettingsToThePage) {
    struct Row {
        char const* commands;
        char const* end;
    };
    for (auto const& row : std::vector<Row>{
             {"", "end 0x0 mode 1 scale 1 top 0\n"},
             {"^PW100^LL200^LT-5^POI^PMY^MCN^JMB^MMT", "end 100x200 mode 0 turned mirrored stored scale 2 top -5\n"},
             {"^PW^LL^LT^PO^PM^MC^JM^MM", "end 100x200 mode 0 turned mirrored stored scale 2 top -5\n"},
             {"^PWx^LLx^LTx^POX^PMX^MCX^JMX^MMX", "end 100x200 mode 0 turned mirrored stored scale 2 top -5\n"},
             {"^PW1^LL0^LT999^PON^PMN^MCY^JMA^MMC", "end 2x200 mode 1 scale 1 top 120\n"},
             {"^PW99999^LL99999", "end 32000x32000 mode 1 scale 1 top 120\n"},
             {"^MUI^PW2^LL0.5", "end 406x102 mode 1 scale 1 top 120\n"},
             {"^MUD,200,600^PW100", "end 300x102 mode 1 scale 1 top 120\n"},
             {"^MUD,200,300^MUD,1,4^PW50", "end 150x102 mode 1 scale 1 top 120\n"},
         }) {
        SCOPED_TRACE(row.commands);
        auto labels = Labels("^XA" + std::string(row.commands) + "^FDa^FS^XZ");
        labels.at(0).ProcessLabel(0, false);
        std::string const calls = Take();
        EXPECT_EQ(calls.substr(calls.find("end")), row.end);
    }
}

TEST_F(LabelTest, AHomeMovesTheFieldsThatFollowAndLasts) {
    auto labels = Labels("^XA^LH5,6^FDa^FS^LH7,^FDb^FS^XB^XZ^XA^FDc^FS^XZ");
    labels.at(0).RenderLabel("job", 0, 0, false);
    EXPECT_EQ(Take(), "start x0 y0 x5 y6 x7 y6 nobackfeed x7 y6 end 0x0 mode 1 scale 1 top 0\npage job/0\n");
    labels.at(1).RenderLabel("job", 0, 1, true);
    EXPECT_EQ(Take(), "start x7 y6 x7 y6 cut1 x7 y6 end 0x0 mode 1 scale 1 top 0\npage job/1 last\n");
}

TEST_F(LabelTest, CopiesGoOnFromEachOtherAndTheFirstStartsAnew) {
    auto labels = Labels("^XA^PQ2^FDa^FS^LH50,0^XZ");
    auto& label = labels.at(0);
    std::vector<std::string> starts;
    for (unsigned const copy : {0U, 1U, 0U}) {
        label.RenderLabel("job", copy, copy, copy == 1);
        starts.push_back(Take());
    }
    EXPECT_EQ(starts[0].substr(0, 11), "start x0 y0");
    EXPECT_EQ(starts[1].substr(0, 12), "start x50 y0");
    EXPECT_EQ(starts[2], starts[0]);
    EXPECT_NE(starts[1].find("page job/1 last"), std::string::npos);
}

TEST_F(LabelTest, ABlankPageBeginsAnew) {
    auto labels = Labels("^XA^FDa^FS^XZ");
    labels.at(0).RenderBlank("job", 3, true);
    EXPECT_EQ(Take(), "start page job/3 last\n");
}

TEST_F(LabelTest, ClockFieldsKeepTheTimeOfTheirFormatOrTakeThatOfTheirCopy) {
    struct Row {
        char const* name;
        char const* commands;
        std::vector<std::string> times;  ///< of copies 0, 1, 0 and 500, `step` apart
        std::chrono::minutes step = std::chrono::hours(1);
    };
    for (auto const& row : std::vector<Row>{
             {"the time of the format", "", {"00:00", "00:00", "00:00", "00:00"}},
             {"the same by name", "^SLS", {"00:00", "00:00", "00:00", "00:00"}},
             {"a time set by the stream", "^ST,,,12,30,0", {"12:30", "12:30", "12:30", "12:30"}},
             {"the time of the copy", "^SLT", {"01:00", "02:00", "03:00", "04:00"}},
             {"that of the copy, once it is 999 seconds later",
              "^SL999",
              {"00:00", "00:20", "00:30", "00:40"},
              std::chrono::minutes(10)},
         }) {
        SCOPED_TRACE(row.name);
        system_->Clear();
        Take();
        printer_->now = std::chrono::sys_days(std::chrono::year(2024) / 2 / 29);
        auto labels = Labels("^XA" + std::string(row.commands) + "^XZ^XA^PQ999^FO1,2^FC%^FD%H:%M^FS^XZ");
        Zpl::Job job(std::move(labels), {}, false);
        std::vector<std::string> times;
        for (unsigned const copy : {0U, 1U, 0U, 500U}) {
            printer_->now += row.step;
            target_->calls.clear();
            job.RenderLabel(copy);
            times.push_back(target_->calls.at(0).substr(10, 5));
        }
        EXPECT_EQ(times, row.times);
    }
}

TEST_F(LabelTest, AReadResponseReachesItsOwnCopyOnce) {
    ContextProcessor state("");
    state.SetSystemContext(system_);
    state.SetGraphicContext(target_);
    state.SetPrinterContext(printer_);
    state.BeginFormat();
    Zpl::Label label(state, pool_);
    label.SetRfidOperations({{RfidOperation::Read, {}}});
    label.SetRfidReadResponse(1, {{1, "E2"}});
    EXPECT_FALSE(label.IsWaitingOnRfidReadResponse(1));
    label.ProcessLabel(0, false);
    EXPECT_FALSE(label.IsWaitingOnRfidReadResponse(1));
    label.ProcessLabel(1, false);
    EXPECT_TRUE(label.IsWaitingOnRfidReadResponse(1));
}

TEST_F(LabelTest, AJobStartsWithItsPausesTagsAndDensity) {
    struct Row {
        char const* name;
        char const* stream;
        char const* job;
    };
    for (auto const& row : std::vector<Row>{
             {"groups and a pause", "^XA^PQ5,2^MD-3^FDa^FS^XZ^XA^PQ2^PP^FDb^FS^XZ",
              "pages 7 pauses 2 4 7 tag 5-6 density 12"},
             {"set behind the first label", "^XA^FDa^FS^XZ^PQ4,2~SD25^XA^MD9^FDb^FS^XZ~SD30^PQ9",
              "pages 5 pauses 3 5 tag 1-4"},
             {"set in front of both", "~SD25^PQ2^XA^FDa^FS^XZ~SD5^PQ3^XA^FDb^FS^XZ",
              "pages 5 pauses tag 2-4 density 25"},
         }) {
        SCOPED_TRACE(row.name);
        system_->Clear();
        auto labels = Labels(row.stream);
        labels.at(1).SetRfidOperations({{1, {}}});
        Zpl::Job job(labels, {}, true);
        job.Start("name");
        EXPECT_EQ(Take(), "job name " + std::string(row.job) + " flag\n");
        job.RenderLabel(job.Quantity() - 1);
        EXPECT_NE(Take().find("page folder/" + std::to_string(job.Quantity() - 1) + " last"), std::string::npos);
    }
}

TEST_F(LabelTest, ControlCommandsRunAtOnceAlsoAlone) {
    processor_.ProcessString("~PS~PP~JA^PR2~PR", true, true);
    EXPECT_EQ(printer_->requests, (std::vector<std::string>{"start", "pause", "cancel"}));
}

}  // namespace
