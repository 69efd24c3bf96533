#include "jobhost/JobQueue.h"

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>

#include "jobhost/TracklessJobQueue.h"
#include "tests/support/RecordedJob.h"

namespace {

using Zpl::Host::JobStatusChangedEvent;

class JobQueueTest : public testing::Test {
protected:
    /// Enqueues a job and runs the step; the path of its folder.
    std::filesystem::path Enqueue(std::vector<RecordedJobs::Format> const& formats, bool onDemand = false) {
        std::string name = "name";
        queue_.Enqueue(jobs_.Make(formats), name, onDemand);
        name = "gone";
        RunSteps();
        return jobs_.folder / ("job" + std::to_string(number_++));
    }
    std::function<void()> Note(char const* what) {
        return [this, what] { jobs_.calls.emplace_back(what); };
    }
    void Status(std::filesystem::path const& path, int status, unsigned page, bool onDemand = false) {
        queue_.Handle({path, status, page, {}}, onDemand, Note("paused"));
    }
    void UnPause(std::filesystem::path const& path, unsigned page) {
        queue_.HandleUnpauseRequested(path, page, false, Note("metadata"), Note("reset"), Note("signal"));
    }
    std::string RunSteps() {
        QCoreApplication::sendPostedEvents();
        return jobs_.Calls();
    }

    int argc_ = 0;
    QCoreApplication application_{argc_, nullptr};
    RecordedJobs jobs_;
    Zpl::Host::JobQueue queue_;
    unsigned number_ = 0;
};

TEST_F(JobQueueTest, NothingRunsOnTheCallersStack) {
    std::string name = "a name";
    queue_.Enqueue(jobs_.Make({{2}}), name, false);
    name.assign(name.size(), 'x');
    EXPECT_EQ(jobs_.Calls(), "");
    EXPECT_EQ(RunSteps(), "start:a name 0 page:0 1! page:0 end");
}

TEST_F(JobQueueTest, KeepsAheadOfThePrinter) {
    auto const job = Enqueue({{300}});
    EXPECT_TRUE(std::filesystem::exists(job / "24"));
    EXPECT_FALSE(std::filesystem::exists(job / "25"));
    std::size_t most = 0;
    for (unsigned page = 1; page < 300; ++page) {
        Status(job, JobStatusChangedEvent::Streaming, page);
        RunSteps();
        ASSERT_FALSE(std::filesystem::exists(job / std::to_string(page - 1)));
        ASSERT_EQ(std::filesystem::exists(job / std::to_string(page + 99)), page + 99 < 300);
        auto const files = RecordedJobs::Files(job);
        most = std::max(most, static_cast<std::size_t>(std::count(files.begin(), files.end(), ' ')));
    }
    EXPECT_LE(most, 102U);
    Status(job, JobStatusChangedEvent::Done, 299);
    EXPECT_EQ(RunSteps(), "format:0 close");
    EXPECT_FALSE(std::filesystem::exists(job));
}

TEST_F(JobQueueTest, OrdersTheStepsOfAPause) {
    auto const job = Enqueue({{2}, {2}});
    Status(job, JobStatusChangedEvent::Paused, 1);
    EXPECT_EQ(RunSteps(), "paused 1 2");
    EXPECT_EQ(RecordedJobs::Files(job), "1 2 MetaData");
    UnPause(job, 2);
    EXPECT_EQ(RunSteps(), "metadata reset signal 2 page:1 3! page:1 end format:0");
    Status(job, JobStatusChangedEvent::PrintError, 3);
    EXPECT_EQ(RunSteps(), "paused");
    EXPECT_EQ(RecordedJobs::Files(job), "MetaData");
}

TEST_F(JobQueueTest, AnUnpauseBehindTheLastPageEndsTheJob) {
    auto const job = Enqueue({{2}});
    UnPause(job, 2);
    EXPECT_EQ(RunSteps(), "end signal metadata reset signal");
}

TEST_F(JobQueueTest, StepsBehindAPauseRenderAgainAndStepsBeforeDoNot) {
    auto const job = Enqueue({{200}});
    Status(job, JobStatusChangedEvent::Streaming, 50);
    Status(job, JobStatusChangedEvent::Paused, 1);
    EXPECT_EQ(RunSteps(), "paused 1 2") << "the flag is set before the first step runs";
    Status(job, JobStatusChangedEvent::Streaming, 198);
    EXPECT_EQ(RunSteps(), "198 page:0 199! page:0 end");
    Status("/none", JobStatusChangedEvent::Paused, 1);
    RunSteps();
    Status(job, JobStatusChangedEvent::Streaming, 197);
    EXPECT_EQ(RunSteps(), "197 page:0 end") << "a pause of an unknown job clears the flag too";
}

TEST_F(JobQueueTest, AnswersAtTheBoundaryOfFormats) {
    auto const job = Enqueue({{1}, {2}});
    Status(job, JobStatusChangedEvent::Streaming, 1);
    EXPECT_EQ(RunSteps(), "end format:0");
    Status(job, JobStatusChangedEvent::Streaming, 2);
    EXPECT_EQ(RunSteps(), "end");
    Status(job, JobStatusChangedEvent::Done, 1);
    EXPECT_EQ(RunSteps(), "close");
}

TEST_F(JobQueueTest, WaitsForTags) {
    auto const job = Enqueue({{2, false, true}});
    EXPECT_EQ(RecordedJobs::Files(job), "MetaData");
    queue_.Handle({job, JobStatusChangedEvent::RfidReadResponses, 0, {{1, "E2"}}}, false, {});
    EXPECT_EQ(RunSteps(), "0 page:0");
}

TEST_F(JobQueueTest, PrintsOnDemand) {
    auto const job = Enqueue({{4}}, true);
    EXPECT_EQ(RecordedJobs::Files(job), "0 1 MetaData");
    Status(job, JobStatusChangedEvent::Streaming, 1, true);
    EXPECT_EQ(RunSteps(), "1 page:0 2");
}

TEST_F(JobQueueTest, CancelsAllWithoutAnswers) {
    auto const first = Enqueue({{1}});
    auto const second = Enqueue({{1}});
    queue_.CancelAll();
    queue_.CancelAll();
    EXPECT_EQ(RunSteps(), "");
    EXPECT_FALSE(std::filesystem::exists(first) || std::filesystem::exists(second));
    Status(first, JobStatusChangedEvent::Done, 0);
    EXPECT_EQ(RunSteps(), "");
}

TEST_F(JobQueueTest, CleansUpJobsWithoutFolders) {
    auto const first = Enqueue({{1}});
    auto const second = Enqueue({{1}});
    std::filesystem::remove_all(first);
    queue_.Cleanup();
    EXPECT_EQ(RunSteps(), "close");
    Status(second, 7, 0);
    Status(second, JobStatusChangedEvent::Done, 0);
    EXPECT_EQ(RunSteps(), "format:0 close");
}

TEST_F(JobQueueTest, ClosesAJobWithoutAFolder) {
    jobs_.makesFolders = false;
    queue_.Enqueue(jobs_.Make({{3}}), "name", false);
    EXPECT_EQ(RunSteps(), "start:name close");
    queue_.Cleanup();
    EXPECT_EQ(RunSteps(), "") << "it is closed once";
    jobs_.makesFolders = true;
    auto const job = Enqueue({{1}});
    Status("", JobStatusChangedEvent::Done, 0);
    EXPECT_EQ(RunSteps(), "") << "no job has the empty path";
    Status(job, JobStatusChangedEvent::Done, 0);
    EXPECT_EQ(RunSteps(), "format:0 close");
}

TEST_F(JobQueueTest, APageThatCannotBeDrawnStaysEmpty) {
    bool fails = true;
    jobs_.onRender = [&fails](unsigned page) {
        if (page == 1 && std::exchange(fails, false)) throw std::runtime_error("too much");
    };
    auto const job = Enqueue({{3}});
    EXPECT_EQ(RecordedJobs::Files(job), "0 1 2 MetaData TransferDone");
    jobs_.onRender = [](unsigned page) {
        if (page == 1) throw std::runtime_error("too much");
    };
    auto const second = Enqueue({{3}});
    EXPECT_EQ(RecordedJobs::Files(second), "0 MetaData") << "nor can the empty one";
    Status(second, JobStatusChangedEvent::Done, 0);
    EXPECT_EQ(RunSteps(), "close");
}

TEST_F(JobQueueTest, TracklessRendersEverythingAtOnce) {
    Zpl::Host::TracklessJobQueue queue;
    queue.Enqueue(jobs_.Make({{2}, {1}}), "n", true);
    EXPECT_EQ(RunSteps(), "start:n 0 1 2! end close");
    queue.CancelAll();
    EXPECT_EQ(RunSteps(), "");
    EXPECT_EQ(RecordedJobs::Files(jobs_.folder / "job0"), "0 1 2 MetaData TransferDone");
}

}  // namespace
