#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <vector>

#include "Barcode/Encoder/Code128Encoder.h"
#include "Barcode/Encoder/DataMatrix200Encoder.h"
#include "Barcode/Encoder/MicroPDF417Encoder.h"
#include "Barcode/Encoder/PDF417Encoder.h"
#include "Barcode/Encoder/QREncoder.h"
#include "barcodes/frame/GraphicHelper.h"
#include "barcodes/frame/Memoizer.h"
#include "labels/Job.h"
#include "library/Desk.h"

namespace {

using namespace Barcode::Encoder;
using Scripting::Dpi;
using namespace Scripting::GraphicHelper;

/// Texts that differ from call to call, as the labels of a job do.
class Texts {
public:
    explicit Texts(std::size_t length) : length_(length) {}

    std::string const& Next() {
        text_.resize(length_);
        for (auto& c : text_) {
            state_ = state_ * 1664525 + 1013904223;
            c = static_cast<char>(state_ >> 30 == 0 ? '0' + (state_ >> 20) % 10 : ' ' + (state_ >> 20) % 94);
        }
        return text_;
    }

private:
    std::size_t length_;
    std::string text_;
    std::uint32_t state_ = 1;
};

void Code128Symbol(benchmark::State& state) {
    Texts texts(20);
    for (auto _ : state) {
        auto const model = Code128Encoder::Encode(texts.Next(), Code128EncodeMode::Automatic);
        benchmark::DoNotOptimize(SketchLinearBarcode(*model, 2, 4, 100, Dpi(203), 203));
    }
}
BENCHMARK(Code128Symbol)->Unit(benchmark::kMicrosecond);

void QrSymbol(benchmark::State& state) {
    Texts texts(100);
    for (auto _ : state)
        benchmark::DoNotOptimize(SketchMatrixBarcode(QREncoder::Encode(texts.Next(), {}), 3, Dpi(203), 203));
}
BENCHMARK(QrSymbol)->Unit(benchmark::kMicrosecond);

void MemoizedQrSymbol(benchmark::State& state) {
    ZplCore::Memoizer<10, decltype(&QREncoder::Encode), std::string, QROptions> encode(&QREncoder::Encode);
    std::string const text = Texts(100).Next();
    for (auto _ : state) benchmark::DoNotOptimize(SketchMatrixBarcode(encode(text, {}), 3, Dpi(203), 203));
}
BENCHMARK(MemoizedQrSymbol)->Unit(benchmark::kMicrosecond);

void MemoizedPdf417Symbol(benchmark::State& state) {
    ZplCore::Memoizer<10, decltype(&PDF417Encoder::Encode), std::string, unsigned, unsigned, unsigned, bool> encode(
        &PDF417Encoder::Encode);
    std::string const text = Texts(200).Next();
    for (auto _ : state)
        benchmark::DoNotOptimize(SketchStackedBarcode(encode(text, 2, 0, 0, false), 2, 6, Dpi(203), 203));
}
BENCHMARK(MemoizedPdf417Symbol)->Unit(benchmark::kMicrosecond);

void MemoizedDataMatrixSymbol(benchmark::State& state) {
    ZplCore::Memoizer<10, decltype(&DataMatrix200Encoder::Encode), std::string, DMSize, char, unsigned> encode(
        &DataMatrix200Encoder::Encode);
    std::string const text = Texts(50).Next();
    for (auto _ : state) benchmark::DoNotOptimize(SketchMatrixBarcode(encode(text, {}, '~', 1), 4, Dpi(203), 203));
}
BENCHMARK(MemoizedDataMatrixSymbol)->Unit(benchmark::kMicrosecond);

void MicroPdf417Symbol(benchmark::State& state) {
    Texts texts(50);
    for (auto _ : state)
        benchmark::DoNotOptimize(SketchStackedBarcode(
            MicroPDF417Encoder::Encode(texts.Next(), {4, 0}, MicroPDF417Linkage::None), 2, 6, Dpi(203), 203));
}
BENCHMARK(MicroPdf417Symbol)->Unit(benchmark::kMicrosecond);

/// A field of the language from its data to the dots on the page, with its line: all that is not reading the stream.
void Code128Field(benchmark::State& state) {
    Desk desk({});
    Texts texts(20);
    std::vector<Zpl::Label> labels;
    for (int i = 0; i < 64; ++i) {
        std::string data = texts.Next();
        std::replace_if(
            data.begin(), data.end(), [](char c) { return c == '^' || c == '~' || c == '>'; }, '-');
        auto result = desk.MakeSession()->Consume("^XA^BY2^FO20,20^BCN,100,N,N,N,A^FD" + data + "^FS^XZ", false, true);
        labels.push_back(std::get<1>(*result.label));
    }
    std::size_t next = 0;
    for (auto _ : state) benchmark::DoNotOptimize(labels[next++ % labels.size()].ProcessLabel(0, false));
}
BENCHMARK(Code128Field)->Unit(benchmark::kMicrosecond);

void Pdf417Symbol(benchmark::State& state) {
    Texts texts(200);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            SketchStackedBarcode(PDF417Encoder::Encode(texts.Next(), 2, 0, 0, false), 2, 6, Dpi(203), 203));
}
BENCHMARK(Pdf417Symbol)->Unit(benchmark::kMicrosecond);

void DataMatrixSymbol(benchmark::State& state) {
    Texts texts(50);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            SketchMatrixBarcode(DataMatrix200Encoder::Encode(texts.Next(), {}, '~', 1), 4, Dpi(203), 203));
}
BENCHMARK(DataMatrixSymbol)->Unit(benchmark::kMicrosecond);

void SketchLinear(benchmark::State& state) {
    auto const model = Code128Encoder::Encode("SKETCHING 0123456789", Code128EncodeMode::Automatic);
    std::size_t dots = 0;
    for (auto _ : state) {
        auto const symbol = SketchLinearBarcode(*model, 3, 6, 300, Dpi(300), 300);
        dots += symbol.bitmapWidth * symbol.bitmapHeight;
        benchmark::DoNotOptimize(symbol.rows->data());
    }
    state.counters["dots"] = benchmark::Counter(static_cast<double>(dots), benchmark::Counter::kIsRate);
}
BENCHMARK(SketchLinear)->Unit(benchmark::kMicrosecond);

}  // namespace
