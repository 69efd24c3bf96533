#include "labels/Job.h"

#include <gtest/gtest.h>

#include "frontend/context/ZplContextKeys.h"
#include "frontend/processor/CreateHandlers.h"

namespace {

using Zpl::Job;
using Zpl::Label;

struct Format {
    unsigned quantity;
    unsigned group = 0;
    bool pauseAfter = false;
    bool pauseOnCut = true;
};

Label MakeLabel(Format const& format) {
    static CommandHandlerPool const pool = CreateHandlers(false, false);
    ContextProcessor processor("");
    processor.SetSystemContext(std::make_shared<Context>(ContextProcessor::SystemContext));
    processor.CreateContext(ContextProcessor::FormatContext);
    auto const set = [&](auto const& key, auto value) { processor.set(ContextProcessor::FormatContext, key, value); };
    set(ZplContextKeys::PrintQuantity, format.quantity);
    set(ZplContextKeys::GroupCount, format.group);
    set(ZplContextKeys::PauseAfterJob, format.pauseAfter);
    set(ZplContextKeys::PauseOnCut, format.pauseOnCut);
    return {std::move(processor), pool};
}

Job MakeJob(std::vector<Format> const& formats) {
    std::vector<Label> labels;
    for (auto const& format : formats) labels.push_back(MakeLabel(format));
    return {std::move(labels), {}, false};
}

TEST(Job, FindsTheLabelOfAPage) {
    Job const job = MakeJob({{2}, {3}});
    EXPECT_EQ(job.Quantity(), 5U);
    std::vector<bool> boundaries;
    std::vector<bool> last;
    for (unsigned page = 0; page < 7; ++page) {
        boundaries.push_back(job.IsFormatBoundry(page));
        last.push_back(job.IsLastPageOfJob(page));
    }
    EXPECT_EQ(boundaries, (std::vector<bool>{false, false, true, false, false, false, false}));
    EXPECT_EQ(last, (std::vector<bool>{false, false, false, false, true, false, false}));
}

TEST(Job, BeyondTheEndThePageIsTheLastOnlyOfASingleCopy) {
    EXPECT_TRUE(MakeJob({{2}, {1}}).IsLastPageOfJob(9));
    EXPECT_FALSE(MakeJob({{1}, {2}}).IsLastPageOfJob(9));
}

TEST(Job, FindsTheNextPause) {
    struct Row {
        char const* name;
        std::vector<Format> formats;
        std::vector<std::optional<unsigned>> next;  // by page
    };
    std::vector<Row> const rows = {
        {"no pause", {{2}, {2}}, {{}, {}, {}, {}, {}}},
        {"groups of two of five", {{5, 2}}, {2, 2, 4, 4, {}}},
        {"a group of the following label answers", {{5, 2}, {4, 3}}, {2, 2, 4, 4, 8, 8, 8, 8, {}}},
        {"a group larger than its label is none", {{2}, {2, 3}, {3, 3}}, {7, 7, 7, 7, 7, 7, 7, {}}},
        {"a group that only cuts is none", {{4, 2, false, false}}, {{}, {}, {}, {}}},
        {"pause behind the label", {{3, 0, true}}, {3, 3, 3, {}}},
        {"the group comes before the pause behind the label", {{3, 2, true}}, {2, 2, 3, {}}},
        {"pause behind a following label", {{1}, {2, 0, true}}, {3, 3, 3, {}}},
        {"the largest group", {{2, 99'999'999}, {1, 0, true}}, {3, 3, 3}},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.name);
        Job const job = MakeJob(row.formats);
        for (unsigned page = 0; page < row.next.size(); ++page)
            EXPECT_EQ(job.NextPauseIndex(page), row.next[page]) << page;
    }
}

TEST(Job, AnEmptyJobAnswersNo) {
    Job job = MakeJob({});
    EXPECT_EQ(job.Quantity(), 0U);
    EXPECT_FALSE(job.NextPauseIndex(0));
    EXPECT_FALSE(job.IsFormatBoundry(0));
    EXPECT_FALSE(job.IsLastPageOfJob(0));
    EXPECT_FALSE(job.IsWaitingOnRfidReadResponse(0));
    job.Start("empty");
    job.RenderLabel(0);
    job.End();
    job.CloseNetwork();
    EXPECT_TRUE(job.JobPath().empty());
}

TEST(Job, WaitsForAReadResponsePerCopy) {
    Label label = MakeLabel({2});
    label.SetRfidOperations({{RfidOperation::Read, {}}});
    Job job({MakeLabel({1}), label}, {}, false);
    EXPECT_FALSE(job.IsWaitingOnRfidReadResponse(0));
    EXPECT_TRUE(job.IsWaitingOnRfidReadResponse(1));
    job.SetRfidReadResponse(2, {{1, "E2"}});
    EXPECT_TRUE(job.IsWaitingOnRfidReadResponse(1));
    EXPECT_FALSE(job.IsWaitingOnRfidReadResponse(2));
    EXPECT_FALSE(job.IsWaitingOnRfidReadResponse(3));
}

}  // namespace
