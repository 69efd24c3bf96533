#include <benchmark/benchmark.h>

#include "tests/support/StreamRun.h"

namespace {

/// 300 fields of ten sizes and two fonts, some of them turned, on a page of 4 x 6 inches at 300 dpi.
std::string TextPage() {
    std::string stream = "^XA^PW1200^LL1800^LH0,0";
    for (int i = 0; i < 300; ++i) {
        std::string const place = std::to_string(10 + i % 4 * 290) + "," + std::to_string(5 + i / 4 * 23);
        std::string const size = std::to_string(18 + i % 10);
        stream += "^FO" + place + (i % 5 == 0 ? "^ADN,18,10" : "^A0" + std::string(i % 7 == 0 ? "R," : "N,") + size);
        stream += "^FDField number " + std::to_string(i) + "^FS";
    }
    return stream + "^XZ";
}

/// 300 fields of Arabic, each of its own, in four sizes, some of them with numbers.
std::string ArabicPage() {
    std::string stream = "^XA^CI28^PW1200^LL1800^LH0,0";
    for (int i = 0; i < 300; ++i) {
        std::string const place = std::to_string(10 + i % 4 * 290) + "," + std::to_string(5 + i / 4 * 23);
        stream += "^FO" + place + "^A0N," + std::to_string(18 + i % 4) + "^FD\u0627\u0644\u0648\u0632\u0646 ";
        // The number in letters, so that no word comes again.
        for (int rest = i + 100; rest > 0; rest /= 10) stream += {'\xD8', static_cast<char>(0xA8 + rest % 10)};
        stream += " " + std::to_string(i) + "^FS";
    }
    return stream + "^XZ";
}

DeskSettings At300Dpi() {
    DeskSettings options;
    options.designDpi = options.printerDpi = 300;
    return options;
}

/// From the recorded label to the drawn page: commands, placement and dots; no file.
void DrawThreeHundredTexts(benchmark::State& state) {
    Desk desk(At300Dpi());
    auto const session = desk.MakeSession();
    std::string const stream = TextPage();
    auto result = session->Consume(stream, false, true);
    Zpl::Label label = std::get<1>(*result.label);
    for (auto _ : state) benchmark::DoNotOptimize(label.ProcessLabel(0, false));
}
BENCHMARK(DrawThreeHundredTexts)->Unit(benchmark::kMicrosecond);

/// From the bytes of the stream to the drawn page, with no font open and no glyph drawn.
void FirstThreeHundredTexts(benchmark::State& state) {
    std::string const stream = TextPage();
    for (auto _ : state) {
        Desk desk(At300Dpi());
        benchmark::DoNotOptimize(RunStream(desk, stream).labels.size());
    }
}
BENCHMARK(FirstThreeHundredTexts)->Unit(benchmark::kMicrosecond);

/// From the recorded label to the drawn page, as often as the texts come again.
void DrawThreeHundredArabicTexts(benchmark::State& state) {
    Desk desk(At300Dpi());
    auto const session = desk.MakeSession();
    std::string const stream = ArabicPage();
    auto result = session->Consume(stream, false, true);
    Zpl::Label label = std::get<1>(*result.label);
    for (auto _ : state) benchmark::DoNotOptimize(label.ProcessLabel(0, false));
}
BENCHMARK(DrawThreeHundredArabicTexts)->Unit(benchmark::kMicrosecond);

/// From the bytes of the stream to the drawn page, with no font open, nothing shaped and no glyph drawn.
void FirstThreeHundredArabicTexts(benchmark::State& state) {
    std::string const stream = ArabicPage();
    for (auto _ : state) {
        Desk desk(At300Dpi());
        benchmark::DoNotOptimize(RunStream(desk, stream).labels.size());
    }
}
BENCHMARK(FirstThreeHundredArabicTexts)->Unit(benchmark::kMicrosecond);

}  // namespace
