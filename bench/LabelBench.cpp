#include <benchmark/benchmark.h>

#include <fstream>
#include <iterator>

#include "labels/Job.h"
#include "library/Desk.h"
#include "library/FieldsJson.h"

namespace {

std::string ShippingLabel() {
    std::ifstream file("examples/shipping-label.zpl", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

DeskSettings At300Dpi() {
    DeskSettings options;
    options.designDpi = options.printerDpi = 300;
    return options;
}

/// Copying the state of a finished format, as each label does: the clone that stays frozen, and the one that travels.
void FreezeLabel(benchmark::State& state) {
    Desk desk(At300Dpi());
    auto session = desk.MakeSession();
    std::string const stream = ShippingLabel();
    auto result = session->Consume(stream, false, true);
    Zpl::Label const& label = std::get<1>(*result.label);
    for (auto _ : state) benchmark::DoNotOptimize(label.DeepClone());
}
BENCHMARK(FreezeLabel);

/// Replaying and drawing one copy, glyphs cached, without the page file.
void ReplayLabel(benchmark::State& state) {
    Desk desk(At300Dpi());
    auto session = desk.MakeSession();
    std::string const stream = ShippingLabel();
    auto result = session->Consume(stream, false, true);
    Zpl::Label label = std::get<1>(*result.label);
    for (auto _ : state) benchmark::DoNotOptimize(label.ProcessLabel(0, false));
}
BENCHMARK(ReplayLabel);

/// The same with each field noted in a field map: where its ink lies, or everything.
void ReplayMappedLabel(benchmark::State& state, ZplCore::FieldMap::Detail detail) {
    Desk desk(At300Dpi());
    auto session = desk.MakeSession();
    session->MapFields(detail);
    std::string const stream = ShippingLabel();
    auto result = session->Consume(stream, false, true);
    Zpl::Label label = std::get<1>(*result.label);
    for (auto _ : state) benchmark::DoNotOptimize(label.ProcessLabel(0, false));
    state.counters["fields"] = static_cast<double>(label.Fields()->Fields().size());
}
BENCHMARK_CAPTURE(ReplayMappedLabel, Ink, ZplCore::FieldMap::Detail::Ink);
BENCHMARK_CAPTURE(ReplayMappedLabel, Everything, ZplCore::FieldMap::Detail::Everything);

/// Writing down for programs what was noted.
void WriteMappedLabel(benchmark::State& state) {
    Desk desk(At300Dpi());
    auto session = desk.MakeSession();
    session->MapFields(ZplCore::FieldMap::Detail::Everything);
    std::string const stream = ShippingLabel();
    auto result = session->Consume(stream, false, true);
    FieldsJson const json(stream);
    auto const& map = *std::get<1>(*result.label).Fields();
    for (auto _ : state) benchmark::DoNotOptimize(json.Of(map));
}
BENCHMARK(WriteMappedLabel);

/// A stream of n labels from bytes to frozen labels: the time of one must not grow with n.
void LabelsInOneStream(benchmark::State& state) {
    Desk desk(At300Dpi());
    std::string const one = "^XA^FO50,50^A0N,40,40^FDBolt M8^FS^FO50,100^BY2^BCN,80,N^FDBLT-M8^FS^XZ";
    std::string stream;
    for (std::int64_t i = 0; i < state.range(0); ++i) stream += one;
    for (auto _ : state) {
        desk.StartStream();
        auto session = desk.MakeSession();
        for (std::string_view rest = stream; !rest.empty();) rest = session->Consume(rest, false, true).remaining;
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(LabelsInOneStream)->Arg(10)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
