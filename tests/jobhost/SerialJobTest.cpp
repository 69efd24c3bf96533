#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>

#include "foundation/Files.h"
#include "jobhost/JobQueue.h"
#include "labels/Job.h"
#include "tests/support/PagePictures.h"
#include "tests/support/TemporaryDirectory.h"

namespace {

using Zpl::Host::JobStatusChangedEvent;

/// A job of a thousand pages on its way through the queue, page by page as the print driver reports them.
class SerialJob : public testing::Test {
protected:
    SerialJob() { session_->Target().SetJobsFolder(jobs_.Path()); }

    Zpl::Label LabelOf(std::string const& fields) {
        auto result = session_->Consume("^XA^PW300^LL200" + fields + "^XZ", false, true);
        return std::get<1>(*result.label);
    }

    void Enqueue(std::string const& fields) {
        queue_.Enqueue(Zpl::Job({LabelOf("^PQ1000,0,1" + fields)}, {}, false), "serial", false);
        QCoreApplication::sendPostedEvents();
        for (auto const& entry : std::filesystem::directory_iterator(jobs_.Path())) job_ = entry.path();
    }
    void Report(int status, unsigned page) {
        queue_.Handle({job_, status, page, {}}, false, {});
        QCoreApplication::sendPostedEvents();
    }
    void PrintPages(unsigned first, unsigned last) {
        for (unsigned page = first; page <= last; ++page) Report(JobStatusChangedEvent::Streaming, page);
    }
    void PauseAndGoOn(unsigned page) {
        Report(JobStatusChangedEvent::Paused, page);
        queue_.HandleUnpauseRequested(job_, page, false, {}, {}, {});
        QCoreApplication::sendPostedEvents();
    }

    /// Compares a page of the job with one whose data are written out.
    void ExpectPage(unsigned page, std::string const& fields) {
        SCOPED_TRACE(page);
        auto label = LabelOf(fields);
        label.RenderLabel(jobs_.Path(), 0, 5000, false);
        auto const file = ReadRegularFile(job_ / std::to_string(page));
        EXPECT_FALSE(file.empty());
        EXPECT_EQ(file, ReadRegularFile(jobs_ / "5000"));
        std::filesystem::remove(jobs_ / "5000");
    }

    int argc_ = 0;
    QCoreApplication application_{argc_, nullptr};
    TemporaryDirectory jobs_;
    std::unique_ptr<Desk> desk_ = MakeStillDesk();
    std::unique_ptr<Zpl::Host::Session> session_ = desk_->MakeSession();
    Zpl::Host::JobQueue queue_;
    std::filesystem::path job_;
};

TEST_F(SerialJob, EveryPageShowsItsOwnNumberAlsoBehindAPause) {
    auto const written = [](std::string const& number, std::string const& box, std::string const& code) {
        return "^FO9,9^A0N,40^FD" + number + "^FS^FO9,60^A0N,40^FD" + box + "^FS^FO9,110^BY1^BCN,40,N^FD" + code +
               "^FS^FO150,9^A0N,30^FD03:04:05^FS";
    };
    Enqueue(
        "^FO9,9^A0N,40^SN0001,1,Y^FS^FO9,60^A0N,40^FDBOX-AA^SFAA^FS^FO9,110^BY1^BCN,40,N^FD9000^SFdddd,3^FS"
        "^FO150,9^A0N,30^FC%^FD%H:%M:%S^FS");
    ExpectPage(0, written("0001", "BOX-AA", "9000"));
    ExpectPage(1, written("0002", "BOX-AB", "9003"));
    PrintPages(1, 120);
    ExpectPage(120, written("0121", "BOX-EQ", "9360"));
    PauseAndGoOn(99);
    ExpectPage(99, written("0100", "BOX-DV", "9297"));
    PrintPages(100, 500);
    PauseAndGoOn(0);
    ExpectPage(0, written("0001", "BOX-AA", "9000"));
    ExpectPage(99, written("0100", "BOX-DV", "9297"));
    PauseAndGoOn(500);
    ExpectPage(500, written("0501", "BOX-TG", "0500"));
    PrintPages(501, 999);
    ExpectPage(999, written("1000", "BOX-ML", "1997"));
    EXPECT_TRUE(std::filesystem::exists(job_ / "TransferDone"));
}

}  // namespace
