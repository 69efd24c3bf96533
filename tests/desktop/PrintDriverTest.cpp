#include "desktop/serve/PrintDriver.h"

#include <gtest/gtest.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <QtCore/QCoreApplication>
#include <fstream>
#include <thread>

#include "desktop/bus/PropertyServer.h"
#include "foundation/Files.h"
#include "tests/support/TemporaryDirectory.h"

namespace {

/// A print driver whose jobs the test makes, and asks for the pages of, in place of the host.
class PrintDriverTest : public testing::Test {
protected:
    PrintDriverTest() : stop_(::eventfd(0, 0)) {
        auto made = std::make_unique<PropertyServer>(folder_ / "bus", folder_ / "archive");
        server_ = std::thread([this, held = std::move(made)]() mutable {
            held->Run(stop_);
            held.reset();
        });
        host_ = std::make_unique<BusComponent>(threads_, ComponentIdentifiers::ZplHost, folder_ / "bus");
        auto const follow = [&]<typename T>(char const* property, auto value) {
            return host_->Properties().Follow<T>(ComponentIdentifiers::FirmwareDriver, ExternalAppRegistration::Plain,
                                                 {property, "", PropertyGroups::PrintOperations}, value);
        };
        driver_ = std::make_unique<PrintDriver>(
            threads_, folder_ / "bus",
            PrintDriver::Options{.jobsFolder = folder_ / "jobs",
                                 .outputFolder = folder_ / "out",
                                 .speed = 0,
                                 .patience = std::chrono::milliseconds(50)},
            [] {}, [this](std::string const& line) { said_ += line + '\n'; });
        status_ = follow.operator()<StringProperty>(PropertyNames::PrintJobStatus, "");
        path_ = follow.operator()<StringProperty>(PropertyNames::JobToPrintPathName, "");
        auto const note = [this](std::shared_ptr<Property> const& changed) {
            reports_ += changed->ValueText().substr(changed->ValueText().rfind('/') + 1) + '|';
        };
        status_->AddCallback(note);
        path_->AddCallback(note);
    }
    ~PrintDriverTest() override {
        driver_.reset();
        host_.reset();
        std::uint64_t const one = 1;
        EXPECT_EQ(::write(stop_, &one, sizeof one), 8);
        server_.join();
        ::close(stop_);
    }

    void MakeJob(std::string const& name, unsigned pages, unsigned serial) {
        std::filesystem::create_directories(folder_ / "jobs" / name);
        PrintEngine::Printing::JobMetaData{.jobName = name, .totalPages = pages, .serial = serial}.Write(folder_ /
                                                                                                         "jobs" / name);
    }
    void MakePage(std::string const& job, unsigned page) {
        WriteFileAtomically(folder_ / "jobs" / job / std::to_string(page), "page");
    }
    void Resume(unsigned page) {
        host_->Write(ComponentIdentifiers::FirmwareDriver, PropertyNames::ResumePrintingFromPageNumber,
                     std::to_string(page));
        host_->Write(ComponentIdentifiers::FirmwareDriver, PropertyNames::ResumePrinting, "true");
    }
    testing::AssertionResult Until(std::function<bool()> const& holds) {
        for (int i = 0; i < 1000 && !holds(); ++i) {
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
    int stop_;
    std::thread server_;
    std::unique_ptr<BusComponent> host_;
    std::shared_ptr<StringProperty> status_;
    std::shared_ptr<StringProperty> path_;
    std::string reports_;
    std::string said_;
    std::unique_ptr<PrintDriver> driver_;
};

TEST_F(PrintDriverTest, ReportsTheEndWhileThePathStands) {
    MakeJob("a", 1, 1);
    MakePage("a", 0);
    EXPECT_TRUE(Until([&] { return path_->Get() == "NO PAGE"; }));
    EXPECT_TRUE(Until([&] { return reports_ == "Printing|a||NO PAGE|"; })) << reports_;
}

TEST_F(PrintDriverTest, APageThatDoesNotComeIsAnError) {
    MakeJob("a", 2, 1);
    MakePage("a", 0);
    EXPECT_TRUE(Until([&] { return status_->Get() == "Print Error"; }));
    EXPECT_NE(said_.find("page 2 of a does not come"), std::string::npos) << said_;
    MakePage("a", 1);
    Resume(1);
    EXPECT_TRUE(Until([&] { return Keeps("a-2"); }));
}

TEST_F(PrintDriverTest, ASecondResumeIsNotForTheNextJob) {
    MakeJob("a", 2, 1);
    MakePage("a", 0);
    EXPECT_TRUE(Until([&] { return status_->Get() == "Print Error"; }));
    MakeJob("b", 3, 2);
    for (unsigned page = 0; page < 3; ++page) MakePage("b", page);
    Resume(2);
    Resume(2);
    EXPECT_TRUE(Until([&] { return Keeps("b-3"); }));
    EXPECT_TRUE(Keeps("b-1") && Keeps("b-2"));
}

TEST_F(PrintDriverTest, KeepsThePagesOfAnEarlierRun) {
    std::ofstream(folder_ / "out" / "a-1.png") << "earlier";
    MakeJob("a", 1, 1);
    MakePage("a", 0);
    EXPECT_TRUE(Until([&] { return Keeps("a_2-1"); }));
    EXPECT_EQ(ReadRegularFile(folder_ / "out" / "a-1.png"), "earlier");
}

}  // namespace
