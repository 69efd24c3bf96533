#include "desktop/serve/PrintDriver.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QtCore/QCoreApplication>
#include <fstream>

#include "foundation/Files.h"
#include "labels/Job.h"
#include "tests/support/PropertyServerThread.h"
#include "tests/support/Sanitizers.h"
#include "tests/support/TemporaryDirectory.h"

namespace {

/// A print driver whose jobs the test makes, and asks for the pages of, in place of the host.
class PrintDriverTest : public testing::Test {
protected:
    PrintDriverTest() {
        StartHost();
        auto const follow = [&]<typename T>(char const* property, auto value) {
            return host_->Properties().Follow<T>(ComponentIdentifiers::FirmwareDriver, ExternalAppRegistration::Plain,
                                                 {property, "", PropertyGroups::PrintOperations}, value);
        };
        driver_ = std::make_unique<PrintDriver>(
            threads_, folder_ / "socket",
            PrintDriver::Options{.jobsFolder = folder_ / "jobs",
                                 .outputFolder = folder_ / "out",
                                 .speed = 0,
                                 .patience = std::chrono::milliseconds(50 * SanitizerFactor)},
            [this] { ++losses_; }, [this](PrinterEvent const& event) { said_ += event.Line() + '\n'; });
        status_ = follow.operator()<StringProperty>(PropertyNames::PrintJobStatus, "");
        path_ = follow.operator()<StringProperty>(PropertyNames::JobToPrintPathName, "");
        EXPECT_TRUE(Until([&] { return path_->Get() == "NO PAGE"; }));
        auto const note = [this](std::shared_ptr<Property> const& changed) {
            auto const text = changed->ValueText();
            QMetaObject::invokeMethod(
                &application_, [this, text] { reports_ += text.substr(text.rfind('/') + 1) + '|'; },
                Qt::QueuedConnection);
        };
        status_->AddCallback(note);
        path_->AddCallback(note);
    }
    ~PrintDriverTest() override {
        driver_.reset();
        host_.reset();
    }
    /// The driver waits for the host, which it knows by a property.
    void StartHost() {
        host_ = std::make_unique<BusComponent>(threads_, ComponentIdentifiers::ZplHost, folder_ / "socket");
        host_->Own<UInt32Property>(PropertyNames::ZplUnPause, PropertyGroups::PrintOperations, 0U);
    }
    void MakeJob(std::string const& name, unsigned pages, unsigned serial, std::vector<unsigned> pauses = {}) {
        std::filesystem::create_directories(folder_ / "jobs" / name);
        PrintEngine::Printing::JobMetaData{
            .jobName = name, .totalPages = pages, .pauseIndices = std::move(pauses), .serial = serial}
            .Write(folder_ / "jobs" / name);
    }
    void MakePage(std::string const& job, unsigned page) {
        WriteFileAtomically(folder_ / "jobs" / job / std::to_string(page), "page");
    }
    void Resume(unsigned page) {
        host_->Write(ComponentIdentifiers::FirmwareDriver, PropertyNames::ResumePrintingFromPageNumber,
                     std::to_string(page));
        host_->Write(ComponentIdentifiers::FirmwareDriver, PropertyNames::ResumePrinting, "true");
    }
    testing::AssertionResult Until(std::function<bool()> const& holds, int most = 1000) {
        for (int i = 0; i < most * SanitizerFactor && !holds(); ++i) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
            ::usleep(1000);
        }
        return holds() ? testing::AssertionSuccess() : testing::AssertionFailure() << driver_->StatusText() << said_;
    }
    bool Keeps(std::string const& name) { return std::filesystem::exists(folder_ / "out" / (name + ".png")); }

    int argc_ = 0;
    QCoreApplication application_{argc_, nullptr};
    TemporaryDirectory folder_;
    ThreadFactory threads_{20};
    std::unique_ptr<PropertyServerThread> server_ = std::make_unique<PropertyServerThread>(folder_.Path());
    std::unique_ptr<BusComponent> host_;
    std::shared_ptr<StringProperty> status_;
    std::shared_ptr<StringProperty> path_;
    std::string reports_;
    std::string said_;
    int losses_ = 0;
    std::unique_ptr<PrintDriver> driver_;
};

TEST_F(PrintDriverTest, ReportsTheEndWhileThePathStands) {
    MakeJob("a", 1, 1);
    MakePage("a", 0);
    EXPECT_TRUE(Until([&] { return reports_ == "Printing|a||NO PAGE|"; })) << reports_;
}

TEST_F(PrintDriverTest, AStatusGoesBeforeThePathAlsoIfItIsLostWithTheServer) {
    MakeJob("a", 1, 1);
    MakePage("a", 0);
    EXPECT_TRUE(Until([&] { return reports_.ends_with("NO PAGE|"); })) << reports_;
    auto const resume = host_->Properties().Follow<BoolProperty>(
        ComponentIdentifiers::FirmwareDriver, ExternalAppRegistration::Plain,
        {PropertyNames::ResumePrinting, "", PropertyGroups::PrintOperations}, false);
    // When it answers the driver knows that its reports are taken.
    resume->Set(true);
    EXPECT_TRUE(Until([&] { return !resume->Get(); }));
    reports_.clear();
    // Nobody finds it any more while it goes.
    std::filesystem::remove(folder_ / "socket");
    server_.reset();
    MakeJob("b", 2, 2, {1});
    MakePage("b", 0);
    EXPECT_TRUE(Until([&] { return said_.find("paused before page 2 of job b") != std::string::npos; }));
    server_ = std::make_unique<PropertyServerThread>(folder_.Path());
    EXPECT_TRUE(Until([&] { return reports_.find("Print Paused|") != std::string::npos; }));
    EXPECT_TRUE(reports_.starts_with("Print")) << reports_ << ": of the status before it the job would be done";
}

TEST_F(PrintDriverTest, PrintsJobsInTheOrderOfTheirNumbers) {
    // The driver sees them together, when the event loop runs.
    for (auto const& [name, serial] : {std::pair("z", 4U), {"a", 3U}, {"b", 2U}}) {
        MakeJob(name, 1, serial);
        MakePage(name, 0);
    }
    EXPECT_TRUE(Until([&] {
        std::string order = reports_;
        std::erase_if(order, [](char c) { return c != 'a' && c != 'b' && c != 'z'; });
        return order == "baz" && Keeps("z-1-1");
    })) << reports_;
}

TEST_F(PrintDriverTest, APageThatDoesNotComeIsAnError) {
    MakeJob("a", 2, 1);
    MakePage("a", 0);
    EXPECT_TRUE(Until([&] { return status_->Get() == "Print Error"; }));
    EXPECT_NE(said_.find("page 2 of job a-1 does not come"), std::string::npos) << said_;
    MakePage("a", 1);
    Resume(1);
    EXPECT_TRUE(Until([&] { return Keeps("a-1-2"); }));
}

TEST_F(PrintDriverTest, ASecondResumeIsNotForTheNextJob) {
    MakeJob("a", 2, 1);
    MakePage("a", 0);
    EXPECT_TRUE(Until([&] { return status_->Get() == "Print Error"; }));
    MakeJob("b", 3, 2);
    MakePage("b", 0);
    Resume(2);
    EXPECT_TRUE(Until([&] { return Keeps("b-1-1"); }));
    Resume(2);
    host_->Write(ComponentIdentifiers::FirmwareDriver, PropertyNames::PausePrinting, "true");
    EXPECT_TRUE(Until([&] { return said_.find("paused before page 2 of job b-1") != std::string::npos; }));
}

TEST_F(PrintDriverTest, ACancellationEndsOnlyWhatIsGone) {
    auto const cancelAll = [this] {
        host_->Write(ComponentIdentifiers::PrintSpooler, PropertyNames::CancelAllPrintJobs, "true");
        int const before = losses_;
        EXPECT_TRUE(Until([&] { return losses_ > before; }));
    };
    MakeJob("stays", 2, 1);
    MakePage("stays", 0);
    EXPECT_TRUE(Until([&] { return Keeps("stays-1-1"); }));
    cancelAll();
    MakePage("stays", 1);
    bool hasResumed = false;
    EXPECT_TRUE(Until([&] {
        // A machine that is busy with other things may have waited for it too long.
        if (status_->Get() == "Print Error" && !std::exchange(hasResumed, true)) Resume(1);
        return Keeps("stays-1-2");
    })) << "it came behind the cancellation";

    MakeJob("goes", 2, 2);
    MakePage("goes", 0);
    EXPECT_TRUE(Until([&] { return status_->Get() == "Print Error"; }));
    cancelAll();
    std::filesystem::remove_all(folder_ / "jobs" / "goes");
    MakeJob("next", 1, 3);
    MakePage("next", 0);
    EXPECT_TRUE(Until([&] { return Keeps("next-1-1"); })) << "a paused job is cancelled too";
    EXPECT_TRUE(Until([&] { return said_.find("job goes-1 is cancelled") != std::string::npos; }));
}

TEST_F(PrintDriverTest, IsToldOnTheBusToPauseAndToCancelTheJobThatPrints) {
    auto const write = [this](char const* property, std::string const& value) {
        host_->Write(ComponentIdentifiers::FirmwareDriver, property, value);
    };
    MakeJob("a", 2, 1);
    MakePage("a", 0);
    EXPECT_TRUE(Until([&] { return Keeps("a-1-1"); }));
    write(PropertyNames::PausePrinting, "true");
    EXPECT_TRUE(Until([&] { return said_.ends_with("paused\n") && status_->Get() == "Print Paused"; }));
    MakeJob("b", 1, 2);
    MakePage("b", 0);
    // The second comes behind the first, of a job that does not print.
    write(PropertyNames::JobToCancel, (folder_ / "jobs/b").string());
    write(PropertyNames::JobToCancel, (folder_ / "jobs/a").string());
    EXPECT_TRUE(Until([&] { return said_.ends_with("cancelled\n") && status_->Get() == "Print Paused"; }));
    EXPECT_FALSE(Keeps("b-1-1")) << "the printer is paused still";
    write(PropertyNames::PausePrinting, "false");
    EXPECT_TRUE(Until([&] { return Keeps("b-1-1") && said_.find("resumed\n") != said_.npos; }));
}

TEST_F(PrintDriverTest, AJobThatIsMadeBehindItsCancellationDoesNotPrint) {
    driver_->CancelUpTo(5);
    for (unsigned serial : {5, 6}) {
        std::string const job = "job" + std::to_string(serial);
        MakeJob(job, 1, serial);
        MakePage(job, 0);
        WriteFileAtomically(folder_ / "jobs" / job / (std::string(Zpl::Job::OriginPrefix) + std::to_string(serial)),
                            "");
    }
    EXPECT_TRUE(Until([&] { return Keeps("job6-1-1"); }));
    EXPECT_FALSE(Keeps("job5-1-1"));
}

TEST_F(PrintDriverTest, TheNextJobWaitsForAHostThatHasHeardOfTheEnd) {
    MakeJob("first", 1, 1);
    MakeJob("second", 1, 2);
    MakePage("second", 0);
    EXPECT_TRUE(Until([&] { return path_->Get().ends_with("/first"); }));
    host_.reset();
    MakePage("first", 0);
    EXPECT_TRUE(Until([&] { return Keeps("first-1-1"); }));
    EXPECT_FALSE(Until([&] { return Keeps("second-1-1"); }, 100));
    StartHost();
    EXPECT_TRUE(Until([&] { return Keeps("second-1-1"); }));
}

TEST_F(PrintDriverTest, TheJobsFolderIsMadeAgain) {
    auto const canSend = host_->Properties().Subscribe<StringProperty>(
        ComponentIdentifiers::PrintSpooler,
        {PropertyNames::CanSendCurrentJobToPrintResponse, "", PropertyGroups::PrintOperations}, "");
    unsigned serial = 0;
    for (auto const& folder : {folder_ / "jobs", folder_ / "jobs", folder_.Path()}) {
        said_.clear();
        // At once: the property server makes its socket there again while a folder is emptied slowly.
        std::filesystem::path const gone = folder_.Path().string() + "-gone";
        std::filesystem::rename(folder, gone);
        std::filesystem::remove_all(gone);
        if (serial == 1) std::filesystem::create_directory(folder);  // as the host may
        EXPECT_TRUE(Until([&] { return said_.find("was removed, and the jobs in it") != std::string::npos; }));
        EXPECT_TRUE(std::filesystem::exists(folder_ / "jobs"));
        EXPECT_TRUE(Until([&] { return canSend->Get() == "false"; })) << "the host looks for what it has lost";
        std::filesystem::create_directory(folder_ / "out");
        std::string const job = "job" + std::to_string(++serial);
        MakeJob(job, 1, serial);
        MakePage(job, 0);
        EXPECT_TRUE(Until([&] { return path_->Get() == "NO PAGE" && Keeps(job + "-1-1"); }));
    }
}

TEST(PageNames, GoOnFromWhatIsThere) {
    TemporaryDirectory const folder;
    for (char const* const file :
         {"a-9-1.png", "a-10-3.png", "a-x-1.png", "b-2.png", "a-b-4-1.png", "a-4294967295-1.png"})
        std::ofstream(folder / file) << "earlier";
    PageNames names(folder.Path());
    auto const next = [&](std::string_view name, unsigned first = 0) {
        names.StartJob(name, first);
        return names.Of(first + 1).filename().string();
    };
    EXPECT_EQ(next("a"), "a-11-2.png");
    EXPECT_EQ(next("a", 6), "a-12-8.png");
    EXPECT_EQ(next("b"), "b-1-2.png");
    EXPECT_EQ(next("a-b"), "a-b-5-2.png");
    EXPECT_EQ(next(""), "job-1-2.png");
    EXPECT_EQ(next("-rf /.\xC3\xA9"), "_rf_____-1-2.png");
    EXPECT_EQ(next(std::string(300, 'x')), std::string(64, 'x') + "-1-2.png");
    std::ofstream(folder / "a-13-1.png") << "of another printer";
    EXPECT_EQ(next("a"), "a-14-2.png");
}

}  // namespace
