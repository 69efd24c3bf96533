#include <gtest/gtest.h>

#include <barrier>
#include <thread>

#include "foundation/Files.h"
#include "foundation/Log.h"
#include "labels/Job.h"
#include "tests/support/StreamRun.h"
#include "tests/support/TemporaryDirectory.h"

namespace {

/// Everything that a desk makes of a stream.
struct Outcome {
    StreamRun run;
    std::vector<std::string> reports;
    std::string jobPage;  ///< the file of the last label's page in the folder of its job

    friend bool operator==(Outcome const&, Outcome const&) = default;
};

/// Stores a picture and a format, and recalls them on some labels with one symbol of each kind whose encoding is kept.
std::string Stream(std::string const& digits, std::string const& picture) {
    std::string stream = "~DGE:P,8,1," + picture + "^XA^DFE:T^FO9,9^A0N,40^FN1^FS^FO9,60^XGE:P,9,1^FS^XZ";
    for (char number = '0'; number < '6'; ++number) {
        std::string const data = digits + number;
        stream += "^XA^XFE:T^RS8^FN1^FD" + data + "^FS^FO9,90^BQN,2,3^FDQA," + data;
        for (auto const* field :
             {"^FO120,90^BXN,4,200", "^FO120,160^BXN,4,100", "^FO9,200^B7N,3,2", "^FO400,9^BON,3", "^FO300,90^BD4",
              "^FO9,320^BFN,20,3", "^FO9,380^BRN,1,3", "^FO9,450^BY1^BTN", "^FO200,5^AAN,18"})
            stream += std::string("^FS") + field + "^FD" + data;
        stream += "^FS^CI15^FO9,500^AEN^FD" + data + "\x83\x65^FS^CI27^XZ";
    }
    return stream;
}

Outcome Draw(DeskSettings const& options, std::string const& stream) {
    Outcome outcome;
    Log::ScopedSink const sink([&](LogTopic, std::string_view line) {
        auto const place = Log::Place();
        outcome.reports.push_back(std::to_string(place.value_or(0)) + ": " + std::string(line));
    });
    Desk desk(options);
    outcome.run = RunStream(desk, stream);
    auto const session = desk.MakeSession();
    auto result = session->Consume("^XA^XFE:T^FN1^FDjob^FS^XZ", false, true);
    Zpl::Job job({std::move(std::get<1>(result.label.value()))}, {}, false);
    job.Start("job");
    job.RenderLabel(0);
    job.End();
    EXPECT_EQ(job.JobPath().parent_path(), options.machine.jobsFolder);
    outcome.jobPage = ReadRegularFile(job.JobPath() / "0");
    return outcome;
}

TEST(TwoDesks, KeepStoresFontsFeaturesAndReportsApartInTwoThreads) {
    TemporaryDirectory const folder;
    DeskSettings options[2];
    for (int i = 0; i < 2; ++i) {
        options[i].widthInches = options[i].heightInches = 3;
        options[i].machine.formatsFolder = folder / ("store" + std::to_string(i));
        options[i].machine.jobsFolder = folder / ("jobs" + std::to_string(i));
    }
    options[0].machine.features.Add(std::string(FeatureNames::rfidEncoderSupport));
    options[1].machine.fontsFolder = "/usr/share/fonts/truetype/dejavu";
    options[1].machine.fontFiles = "E=/usr/share/fonts/truetype/dejavu/DejaVuSerif.ttf";
    std::string const streams[] = {Stream("11111", "FF00FF00FF00FF00"), Stream("22222", "0F0F0F0F0F0F0F0F") + "^XA"};

    Outcome const alone[] = {Draw(options[0], streams[0]), Draw(options[1], streams[1])};
    for (auto const& outcome : alone) {
        EXPECT_EQ(outcome.run.labels.size(), 6U);
        EXPECT_FALSE(outcome.jobPage.empty());
    }
    EXPECT_EQ(alone[0].run.missing, "");
    EXPECT_EQ(alone[1].run.missing, "^RS");
    EXPECT_NE(alone[0].jobPage, alone[1].jobPage);
    EXPECT_GT(alone[1].reports.size(), alone[0].reports.size()) << "fonts that are not in its folder";

    for (int round = 0; round < 3; ++round) {
        Outcome together[2];
        std::barrier start(2);
        auto const draw = [&](int i) {
            start.arrive_and_wait();
            together[i] = Draw(options[i], streams[i]);
        };
        std::thread other(draw, 1);
        draw(0);
        other.join();
        EXPECT_EQ(together[0], alone[0]);
        EXPECT_EQ(together[1], alone[1]);
    }
}

}  // namespace
