#include <string>

#include "PrintEngine/Printing/JobMetaData.h"
#include "desktop/bus/PropertyStore.h"
#include "fields/graphics/StoredGraphics.h"
#include "foundation/Files.h"
#include "fuzz/Fuzz.h"
#include "fuzz/FuzzDesk.h"
#include "jobhost/model/PrintStream.h"

// Files as they may lie on a disk, damaged or written by somebody else: a stored format, a stored graphic, the metadata
// of a job, the archive of the bus. The first byte says which.

namespace {

void WriteObject(Desk const& desk, char const* name, std::string_view bytes) {
    auto const file = desk.FormatsFolder() / name;
    std::filesystem::create_directories(file.parent_path());
    Require(!WriteFileAtomically(file, bytes));
}

void Print(Desk& desk, std::string_view stream) {
    Zpl::Host::PrintStream host([&] { return desk.MakeSession(); });
    while (!stream.empty()) {
        auto result = host.Consume(stream, false, true);
        stream = result.remaining;
        if (!result.label) continue;
        try {
            std::get<1>(*result.label).RenderLabel(PageFolder(), 0, 0, true);
        } catch (std::exception const&) {
            // The page is given up, as in the program.
        }
    }
}

void RecallFormat(std::string_view bytes) {
    Desk& desk = EmptyDesk();
    WriteObject(desk, "R/F.ZPL", bytes);
    Print(desk, "^XA^XFR:F.ZPL^FN1^FDone^FS^FN2^FDtwo^FS^XZ^XA^FDnext^FS^XZ");
}

void RecallGraphic(std::string_view bytes) {
    Desk& desk = EmptyDesk();
    WriteObject(desk, "R/G.GRF", bytes);
    Print(desk, "^XA^FO9,9^XGR:G.GRF,2,1^FS^FO9,9^IMR:G.GRF^FS^ILR:G.GRF^FS^HYR:G.GRF^XZ");
    auto const& folder = desk.FormatsFolder();
    ObjectName const name{'R', "G", "GRF"};
    auto const picture = ZplCore::LoadGraphic(folder, name);
    if (!picture) return;
    Require(ZplCore::StoreGraphic(folder, name, *picture));
    Require(ZplCore::LoadGraphic(folder, name) == picture);
}

void ReadMetaData(std::string_view bytes) {
    using PrintEngine::Printing::JobMetaData;
    if (auto const read = JobMetaData::Parse(bytes)) Require(JobMetaData::Parse(read->Text()) == read);
}

void ReadArchive(std::string_view bytes) {
    auto const file = PageFolder() / "archive";
    Require(!WriteFileAtomically(file, bytes));
    PropertyStore(file, [](int, PiclMessage const&) {}).WriteChanges();
    std::string const once = ReadRegularFile(file);
    PropertyStore(file, [](int, PiclMessage const&) {}).WriteChanges();
    Require(ReadRegularFile(file) == once);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    constexpr void (*Kinds[])(std::string_view) = {RecallFormat, RecallGraphic, ReadMetaData, ReadArchive};
    FuzzInput input(data, size);
    unsigned const kind = input.Byte() % std::size(Kinds);
    Kinds[kind](input.Rest());
    return 0;
}
