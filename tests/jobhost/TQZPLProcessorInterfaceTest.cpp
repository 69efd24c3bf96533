#include "jobhost/TQZPLProcessorInterface.h"

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>

#include "PrintEngine/Printing/JobMetaData.h"
#include "labels/Job.h"
#include "propertybus/PICLServerAgent.h"
#include "propertybus/PropertyIdentifiers.h"
#include "propertybus/PublishingPropertyManager.h"
#include "tests/support/FakePrinterContext.h"
#include "tests/support/TemporaryDirectory.h"

namespace {

using Zpl::Host::Packet;

using Calls = std::vector<std::string>;

class RecordingQueue : public Zpl::Host::JobQueueInterface {
public:
    explicit RecordingQueue(Calls& calls) : calls_(calls) {}
    void HandleUnpauseRequested(std::filesystem::path const& path, unsigned page, bool, std::function<void()> const& a,
                                std::function<void()> const& b, std::function<void()> const& c) override {
        calls_.push_back("unpause " + path.string() + ' ' + std::to_string(page));
        a();
        b();
        c();
    }
    void Handle(Zpl::Host::JobStatusChangedEvent const& event, bool onDemand,
                std::function<void()> const& onPaused) override {
        calls_.push_back("handle " + event.path.string() + ' ' + std::to_string(event.status) + ' ' +
                         std::to_string(event.page) + (onDemand ? " on demand" : ""));
        if (event.status == 1) onPaused();
    }
    void Enqueue(Zpl::Job const& job, std::string_view name, bool) override {
        Zpl::Job started(job);
        started.Start(name);
        bool const flag = PrintEngine::Printing::JobMetaData::Read(started.JobPath()).value().flag;
        std::string origin;
        for (auto const& file : std::filesystem::directory_iterator(started.JobPath())) {
            std::string const mark = file.path().filename().string();
            if (mark.starts_with(Zpl::Job::OriginPrefix)) origin = mark.substr(Zpl::Job::OriginPrefix.size());
        }
        calls_.push_back("enqueue " + std::string(name) + ' ' + std::to_string(job.Quantity()) + (flag ? " flag" : "") +
                         (origin.empty() ? "" : " of packet " + origin));
        job.CloseNetwork();
    }
    void CancelAll() override { calls_.emplace_back("cancel all"); }
    void Cleanup() override { calls_.emplace_back("cleanup"); }

private:
    Calls& calls_;
};

/// Writes down what is written to properties of others, as "LABEL=VALUE".
class RecordingAgent : public PICLServerAgent {
public:
    explicit RecordingAgent(Calls& calls) : calls_(calls) {}
    void SetProperty(std::string const& component, std::string const&, std::string const& property,
                     std::string const& value) override {
        using namespace PropertyNames;
        std::map<std::string, std::string> const names = {
            {ZPLResponseToProcess, "response"},        {CancelAllPrintJobs, "cancel print"},
            {ZPLCancelAllJobs, "cancel zpl"},          {ZplUnPause, "unpause"},
            {ResumePrintingFromPageNumber, "from"},    {ResumePrinting, "resume"},
            {PrintOnDemandModeUpdateLastPage, "last"}, {PrintingUnPaused, "unpaused"}};
        EXPECT_FALSE(component.empty());
        calls_.push_back(names.at(property) + '=' + value);
    }
    bool WaitUntilAvailable(PropertyAddress const&, std::chrono::milliseconds) override { return true; }
    void CancelWaiting() override {}

private:
    Calls& calls_;
};

class Printer : public FakePrinterContext {
public:
    explicit Printer(Calls& calls) : calls_(calls) {}
    void Reset() override { calls_.emplace_back("reset"); }

private:
    Calls& calls_;
};

class TQZPLProcessorInterfaceTest : public testing::Test {
protected:
    TQZPLProcessorInterfaceTest() {
        MachineSettings machine;
        machine.formatsFolder = folder_.Path();
        machine.jobsFolder = folder_ / "jobs";
        machine.features.Add(std::string(FeatureNames::rfidEncoderSupport));
        machine.runningOnTarget = true;
        model_ = ZPLProcessorInterface::Create(manager_, std::make_shared<RecordingAgent>(calls_), machine);
        interface_ = std::make_shared<TQZPLProcessorInterface>(std::make_unique<RecordingQueue>(calls_), machine);
    }

    void Connect() {
        TQZPLProcessorInterface::ConnectModel(interface_, model_, std::make_shared<Printer>(calls_));
        interface_->InitCallbacks();
    }
    Calls Take() { return std::exchange(calls_, {}); }
    /// Writes a packet; the property must be clear afterwards.
    Calls Send(Packet const& packet) { return SendText(packet.Text()); }
    Calls SendText(std::string const& text) {
        model_->GetCommandToProcessProperty()->Set(text);
        EXPECT_EQ(model_->GetCommandToProcessProperty()->Get(), "");
        return Take();
    }

    int argc_ = 0;
    QCoreApplication application_{argc_, nullptr};
    TemporaryDirectory folder_;
    Calls calls_;
    std::shared_ptr<PublishingPropertyManager> manager_ = std::make_shared<PublishingPropertyManager>();
    std::shared_ptr<ZPLProcessorInterface> model_;
    std::shared_ptr<TQZPLProcessorInterface> interface_;
};

constexpr char const* Processing = R"(response={"State":0})";
constexpr char const* Done = R"(response={"State":2})";

TEST_F(TQZPLProcessorInterfaceTest, CollectsTheLabelsOfAStream) {
    Connect();
    EXPECT_EQ(Send({1, 0, "^XA^FDfirst^FS^XZ^XA^PQ"}), Calls{Processing});
    EXPECT_EQ(Send({1, 0, "3^FDsecond"}), Calls{Processing});
    EXPECT_EQ(Send({1, 1, "^FS^XZ"}), (Calls{Processing, "enqueue first 4", Done}));
    EXPECT_EQ(Send({1, 1, ""}), (Calls{Processing, Done})) << "a stream without labels";
    EXPECT_EQ(Send({1, 1, "^XA^FDb^FS^XZ"}), (Calls{Processing, "enqueue b 1", Done}));
}

TEST_F(TQZPLProcessorInterfaceTest, NothingOfAStreamStaysForTheNext) {
    Connect();
    EXPECT_EQ(Send({1, 1, "^XA^FDtag^FS^RFW^FDAA^FS^XZ^XA^FDlost^FS"}),
              (Calls{Processing, "enqueue tag 1 flag", Done}));
    EXPECT_EQ(Send({1, 1, "^FDx^FS^XZ^XA^FDb^FS^XZ"}), (Calls{Processing, "enqueue b 1", Done}));
}

TEST_F(TQZPLProcessorInterfaceTest, DropsWhatIsNoPacket) {
    Connect();
    for (std::string const& bad :
         {std::string("x"), std::string("!!!!"), std::string("e30="), std::string(1 << 20, 'A')})
        EXPECT_EQ(SendText(bad), Calls{});
    EXPECT_EQ(Send({1, 0, ""}), Calls{Processing}) << "opens no session";
}

TEST_F(TQZPLProcessorInterfaceTest, TakesAPacketOfOneNumberOnce) {
    Connect();
    Packet const packet{1, 1, "^XA^FDa^FS^XZ", 7};
    EXPECT_EQ(Send(packet), (Calls{Processing, "enqueue a 1 of packet 7", Done}));
    EXPECT_EQ(Send(packet), Calls{Processing});
    EXPECT_EQ(Send({1, 1, packet.payload, 8}).size(), 3U);
}

TEST_F(TQZPLProcessorInterfaceTest, ABadNumberCostsOnlyItsFormat) {
    Connect();
    EXPECT_EQ(Send({1, 0, "^XA^FDa^FS^XZ^XA^FO1,1^FB2147483648^FDlost^FS^XZ^XA^FDb^FS^XZ^XA^FO.,1^FD"}),
              Calls{Processing});
    EXPECT_EQ(Send({1, 1, "lost^FS^XZ^XA^FDc^FS^XZ~SD99999999999^XA^FDd^FS^XZ"}),
              (Calls{Processing, "enqueue a 4", Done}));
}

TEST_F(TQZPLProcessorInterfaceTest, AByteOrderMarkCountsForItsOwnStream) {
    Connect();
    EXPECT_EQ(Send({1, 1, "\xFF\xFE^XA^FDlost^FS^XZ"}), (Calls{Processing, Done}));
    EXPECT_EQ(Send({1, 1, "^XA^CI28^FDa^FS^XZ"}), (Calls{Processing, "enqueue a 1", Done}));
    EXPECT_EQ(Send({1, 1, "\xFE\xFF^XA^FDlost^FS^XZ"}), (Calls{Processing, Done}));
    EXPECT_EQ(Send({1, 1, "^XA^FD\xC3\xA9^FS^XZ"}), (Calls{Processing, "enqueue \xC3\xA9 1", Done}));
}

TEST_F(TQZPLProcessorInterfaceTest, TakesThePacketThatIsWaiting) {
    model_->GetCommandToProcessProperty()->Set(Packet{1, 1, "^XA^FDa^FS^XZ"}.Text());
    Connect();
    EXPECT_EQ(Take(), (Calls{Processing, "enqueue a 1", Done}));
}

TEST_F(TQZPLProcessorInterfaceTest, ReportsOfThePrinterReachTheQueue) {
    Connect();
    model_->GetPrintJobStatusProperty()->Set("Printing");
    model_->GetCurrentJobPathProperty()->Set("/j");
    model_->GetCurrentPrintingPageProperty()->Set(3);
    model_->GetPrintJobStatusProperty()->Set("Print Paused");
    model_->GetRfidReadCommandResponseProp()->Set("nonsense");
    model_->GetRfidReadCommandResponseProp()->Set("[]");
    EXPECT_EQ(Take(), (Calls{"handle /j 0 0", "handle /j 0 3", "handle /j 1 3", "reset", "handle /j 4 3"}));
    model_->GetCanSendCurrentJobToPrintResponse()->Set("true");
    model_->GetCanSendCurrentJobToPrintResponse()->Set("false");
    EXPECT_EQ(Take(), Calls{"cleanup"});
}

TEST_F(TQZPLProcessorInterfaceTest, CancelsAll) {
    model_->GetCancelAllZPLJobsProperty()->Set(true);
    Connect();
    EXPECT_EQ(Take(), Calls{"cancel zpl=false"}) << "nothing was there yet";
    model_->GetCancelAllZPLJobsProperty()->Set(false);
    model_->GetCancelAllZPLJobsProperty()->Set(true);
    EXPECT_EQ(Take(), (Calls{"cancel print=true", "cancel all", "cancel zpl=false"}));
    model_->GetPrintingStoppedProperty()->Set(true);
    EXPECT_EQ(Take(), Calls{"cancel all"});
    EXPECT_EQ(Send({1, 1, "^XA^FDa^FS^XZ"}), (Calls{Processing, Done})) << "while stopped nothing is recorded";
}

TEST_F(TQZPLProcessorInterfaceTest, SeesThatPrintingWasStoppedBefore) {
    model_->GetPrintingStoppedProperty()->Set(true);
    Connect();
    EXPECT_EQ(Send({1, 1, "^XA^FDa^FS^XZ"}), (Calls{Processing, Done}));
}

TEST_F(TQZPLProcessorInterfaceTest, EndsAPauseAndPutsTheMarkBack) {
    Connect();
    PrintEngine::Printing::JobMetaData{.jobName = "n", .totalPages = 9}.Write(folder_.Path());
    model_->GetCurrentJobPathProperty()->Set(folder_.Path().string());
    model_->GetZplUnPauseProperty()->Set(5);
    std::string const unpause = "unpause " + folder_.Path().string() + " 5";
    EXPECT_EQ(Take(), (Calls{unpause, "reset", "from=5", "resume=true", "unpause=4294967295"}));
    auto const metaData = PrintEngine::Printing::JobMetaData::Read(folder_.Path());
    EXPECT_EQ(metaData->firstPage, 5U);
    EXPECT_EQ(metaData->totalPages, 9U);
    model_->GetZplUnPauseProperty()->Set(ZPLProcessorInterface::NoUnPause);
    EXPECT_EQ(Take(), Calls{});
    std::dynamic_pointer_cast<BoolProperty>(manager_->Find(PropertyNames::PrintOnDemandToggle))->Set(true);
    model_->SignalPrinting(7);
    EXPECT_EQ(Take(), (Calls{"last=true", "unpaused=7"}));
}

}  // namespace
