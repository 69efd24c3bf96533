#include <benchmark/benchmark.h>

#include <fstream>
#include <iterator>
#include <string>

#include "library/forms/EditedStream.h"

namespace {

DeskSettings At300Dpi() {
    DeskSettings options;
    options.designDpi = options.printerDpi = 300;
    return options;
}

std::string ParcelFormat() {
    std::ifstream file("examples/shipping-label.zpl", std::ios::binary);
    std::string const stream{std::istreambuf_iterator<char>(file), {}};
    auto const start = stream.find("^XA") + 3;
    return stream.substr(start, stream.rfind("^XZ") - start);
}

std::string ManyFields() {
    std::string format;
    for (int i = 0; i < 200; ++i)
        format += "^FO" + std::to_string(i % 10 * 110) + "," + std::to_string(i / 10 * 80) + "^A0N,30^FDField " +
                  std::to_string(i) + "^FS";
    return format;
}

/// A step of a drag: the bytes of the format change, and its page is drawn anew with its field map.
void DragField(benchmark::State& state, std::string const& format) {
    FormatDrawer drawer(At300Dpi());
    EditedStream stream(drawer, format, ObjectName::Parse("E:X.ZPL", 'E', "", "ZPL"));
    int way = 0;
    for (auto _ : state) {
        way = way % 50 + 1;
        stream.Edit([way](FieldEdits& edits) { edits.Move(1, way, way); }, "drag");
    }
    state.counters["fields"] = static_cast<double>(stream.Drawn().fields.size());
}
BENCHMARK_CAPTURE(DragField, Parcel, ParcelFormat())->UseRealTime();
BENCHMARK_CAPTURE(DragField, TwoHundredFields, ManyFields())->UseRealTime();

}  // namespace
