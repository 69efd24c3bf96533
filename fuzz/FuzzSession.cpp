#include <algorithm>
#include <string>
#include <vector>

#include "fuzz/Fuzz.h"
#include "fuzz/FuzzDesk.h"
#include "jobhost/model/PrintStream.h"
#include "labels/Job.h"
#include "library/FieldsJson.h"

// A stream as the host takes it: cut anywhere it gives the same labels as in one piece, and whatever they hold, their
// job is begun, the first pages are drawn and written, their fields are told with places that the stream has, and it is
// ended.

namespace {

void TellFields(ZplCore::FieldMap const& map, std::string_view stream) {
    for (auto const& field : map.Fields()) {
        for (auto const* place : {&field.details->place, &field.details->definition})
            Require(!place->inStream || place->inStream->End() <= stream.size());
    }
    static_cast<void>(FieldsJson(stream).Of(map));
}

void Print(Zpl::Label label, std::string_view stream) {
    constexpr unsigned MostPages = 2;
    std::filesystem::path folder;
    try {
        VirtualTag tag = VirtualTag::Parse("blank");
        auto const operations = label.GetRfidOperations();
        auto const fields = label.Fields();
        std::vector<Zpl::Label> labels;
        labels.push_back(std::move(label));
        Zpl::Job job(std::move(labels), {}, false);
        job.Start("fuzz");
        folder = job.JobPath();
        for (unsigned page = 0; page < std::min(job.Quantity(), MostPages); ++page) {
            if (job.IsWaitingOnRfidReadResponse(page)) job.SetRfidReadResponse(page, tag.Perform(operations));
            job.RenderLabel(page);
            TellFields(*fields, stream);
            job.LogTagOperations(page);
            job.SendEndOfPageNetworkResponses(page);
            if (job.IsLastPageOfJob(page)) job.SendEndOfFormatNetworkResponses(page);
        }
        job.End();
    } catch (std::exception const&) {
        // A number that only the drawing finds to be out of range: the page is given up, as in the program.
    }
    std::error_code ignored;
    if (!folder.empty()) std::filesystem::remove_all(folder, ignored);
}

/// The texts of the labels, in their order.
std::vector<std::string> Run(std::string_view stream, bool inPieces, bool prints) {
    Desk& desk = EmptyDesk();
    desk.SetHostReceiver([](std::string_view) {});
    Zpl::Host::PrintStream host([&] {
        auto session = desk.MakeSession();
        if (prints) session->MapFields(ZplCore::FieldMap::Detail::Everything);
        return session;
    });
    std::vector<std::string> labels;
    auto const take = [&](std::string_view piece, bool isLast) {
        while (!piece.empty()) {
            auto result = host.Consume(piece, false, isLast);
            piece = result.remaining;
            if (!result.label) continue;
            auto& [text, label] = *result.label;
            labels.push_back(text);
            if (prints) Print(std::move(label), stream);
        }
    };
    if (inPieces) {
        CutAnywhere(stream, take);
    } else {
        take(stream, true);
    }
    return labels;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string_view const stream(reinterpret_cast<char const*>(data), size);
    Require(Run(stream, true, true) == Run(stream, false, false));
    return 0;
}
