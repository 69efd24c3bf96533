#include "jobhost/model/QueueJob.h"

#include <gtest/gtest.h>

#include "tests/support/RecordedJob.h"

namespace {

using Zpl::Host::QueueJob;

class QueueJobTest : public testing::Test {
protected:
    QueueJob Started(std::vector<RecordedJobs::Format> const& formats) {
        QueueJob job(jobs_.Make(formats));
        job.Start("j");
        jobs_.calls.clear();
        return job;
    }
    std::string Files(QueueJob const& job) { return RecordedJobs::Files(job.JobPath()); }

    RecordedJobs jobs_;
    std::atomic<bool> stop_{false};
};

TEST_F(QueueJobTest, RendersASpanAndDropsThePageBefore) {
    QueueJob job = Started({{6}});
    job.Render(0, 3, stop_);
    EXPECT_EQ(jobs_.Calls(), "0 page:0 1 page:0 2 page:0");
    job.Render(1, 3, stop_);
    EXPECT_EQ(jobs_.Calls(), "3 page:0");
    EXPECT_EQ(Files(job), "1 2 3 MetaData");
    job.Render(2, 100, stop_);
    EXPECT_EQ(jobs_.Calls(), "4 page:0 5! page:0 end");
    EXPECT_EQ(Files(job), "2 3 4 5 MetaData TransferDone");
    // Again: nothing is drawn twice, the end is told again.
    job.Render(2, 100, stop_);
    EXPECT_EQ(jobs_.Calls(), "end");
}

TEST_F(QueueJobTest, CatchesUpFromTheLastPageRendered) {
    QueueJob job = Started({{9}});
    job.Render(0, 2, stop_);
    jobs_.Calls();
    job.Render(5, 2, stop_);
    EXPECT_EQ(jobs_.Calls(), "2 page:0 3 page:0 4 page:0 5 page:0 6 page:0");
    EXPECT_EQ(Files(job), "0 1 2 3 5 6 MetaData");
    job.DeletePages();
    EXPECT_EQ(Files(job), "MetaData");
    job.Render(7, 1, stop_);
    EXPECT_EQ(jobs_.Calls(), "7 page:0");
}

TEST_F(QueueJobTest, APauseTakesThePlaceOfTheEndOfTheSpan) {
    QueueJob job = Started({{4, true}, {3}});
    job.Render(0, 2, stop_);
    EXPECT_EQ(jobs_.Calls(), "0 page:0 1 page:0 2 page:0 3 page:0");
    job.Render(4, 2, stop_);
    EXPECT_EQ(jobs_.Calls(), "4 page:1 5 page:1");
}

TEST_F(QueueJobTest, ASpanBehindAPauseIsWholeThoughRenderingCatchesUp) {
    QueueJob job = Started({{4, true}, {5}});
    job.Render(0, 9, stop_);
    EXPECT_EQ(jobs_.Calls(), "0 page:0 1 page:0 2 page:0 3 page:0");
    job.DeletePages();
    job.Render(2, 1, stop_);
    jobs_.Calls();
    job.Render(5, 2, stop_);
    EXPECT_EQ(jobs_.Calls(), "4 page:1 5 page:1 6 page:1");
}

TEST_F(QueueJobTest, StopsBehindThePageUnderWay) {
    QueueJob job = Started({{9}});
    job.Render(0, 2, stop_);
    jobs_.Calls();
    jobs_.onRender = [&](unsigned page) { stop_ = page == 3; };
    job.Render(1, 8, stop_);
    EXPECT_EQ(jobs_.Calls(), "2 page:0 3 page:0");
    EXPECT_EQ(Files(job), "1 2 3 MetaData");
}

TEST_F(QueueJobTest, WaitsForTheTagOfAPage) {
    QueueJob job = Started({{1}, {2, false, true}});
    job.Render(0, 9, stop_);
    EXPECT_EQ(jobs_.Calls(), "0 page:0");
    job.SetRfidReadResponse(1, {{1, "E2"}});
    job.Render(1, 9, stop_);
    EXPECT_EQ(jobs_.Calls(), "1 page:1");
    job.RenderPrintOnDemand(2);
    EXPECT_EQ(jobs_.Calls(), "");
}

TEST_F(QueueJobTest, OnDemandRendersOnePageAhead) {
    QueueJob job = Started({{3}});
    job.RenderPrintOnDemand(0);
    EXPECT_EQ(jobs_.Calls(), "0 page:0 1");
    job.RenderPrintOnDemand(2);
    EXPECT_EQ(jobs_.Calls(), "2! page:0 end");
}

TEST_F(QueueJobTest, AThumbnailIsDrawnOnACopy) {
    QueueJob job = Started({{3}});
    job.RenderThumbnail(1);
    EXPECT_EQ(jobs_.Calls(), "1 2!");
    job.RenderThumbnail(2);
    EXPECT_EQ(jobs_.Calls(), "");
}

TEST_F(QueueJobTest, OnlyNumbersArePages) {
    QueueJob job = Started({{2}});
    for (char const* const name : {"7", "007", "7a", "-7", "TransferDone"}) std::ofstream(job.JobPath() / name);
    job.DeletePages();
    EXPECT_EQ(Files(job), "-7 7a MetaData TransferDone");
    job.DeleteTransferDone();
    job.DeleteJobFolder();
    EXPECT_FALSE(std::filesystem::exists(job.JobPath()));
    job.DeletePages();
    job.Render(1, 1, stop_);
}

}  // namespace
