#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>

#include "Scripting/ScriptGraphicContext.h"
#include "tests/support/FakePrinterContext.h"

namespace {

using Scripting::ScriptGraphicContext;
constexpr auto Left = Scripting::ScriptTextJustification::Left;

/// A shipping label of 4 x 6 inches as carriers print it: frames, addresses, small print, a tall barcode, a reversed
/// banner, a two-dimensional symbol and a logo.
class ShippingLabel {
public:
    explicit ShippingLabel(unsigned dpi)
        : scale_(dpi / 203.0), target_(fonts_, std::make_shared<FakePrinterContext>(dpi)) {
        ScriptGraphicContext::InitializeFontManager(fonts_, "/usr/share/fonts");
        target_.LoadPart({4, 6});
        target_.SetupForPrintJob();
    }

    void Draw() {
        target_.StartLabel();
        target_.DrawBox(Dots(20), Dots(20), Size(770), Size(1170), Size(3), 0);
        for (int const y : {220, 420, 700, 950}) target_.DrawBox(Dots(20), Dots(y), Size(770), Size(3), Size(3), 0);
        // No line is like another, as on a label that carries something.
        for (int line = 0; line < 4; ++line)
            Text(40, 40 + line * 40, 30, Turned("Parcel Works Ltd, 17 Harbour Road, 24103 Kiel", line * 11));
        for (int line = 0; line < 4; ++line)
            Text(40, 240 + line * 44, 40, Turned("Miriam Example, 1200 West Elm Street", line * 7));
        for (int line = 0; line < 10; ++line)
            Text(40, 960 + line * 22, 18,
                 Turned("Contents 0123456789: spare parts, weight 2.35 kg, class B", line * 5));
        Bars(60, 730, 180);
        target_.DrawBox(Dots(40), Dots(440), Size(350), Size(100), Size(100), 0);
        target_.SetReverse(true);
        Text(60, 455, 70, "EXPRESS");
        target_.SetReverse(false);
        Cells(560, 450, 200);
        target_.SetRotation(90);
        Text(720, 60, 25, "Turned note");
        target_.SetRotation(0);
        target_.EndLabel({});
    }

    Scripting::PageKeeper& Page() { return target_; }

    void Write(std::filesystem::path const& folder) { target_.RenderPage(folder, 0, true); }

private:
    /// The same characters from another one on.
    static std::string Turned(std::string_view text, int by) {
        auto const at = static_cast<std::size_t>(by) % text.size();
        return std::string(text.substr(at)) + std::string(text.substr(0, at));
    }
    int Dots(int at203) const { return static_cast<int>(at203 * scale_); }
    unsigned Size(int at203) const { return static_cast<unsigned>(Dots(at203)); }

    void Text(int x, int y, int height, std::string_view text) {
        Scripting::ScaledFontMetrics metrics;
        metrics.cellHeight = static_cast<std::uint16_t>(Dots(height));
        metrics.cellWidth = metrics.cellHeight;
        metrics.descent = static_cast<std::uint16_t>(metrics.cellHeight / 3 - 1);
        metrics.pointSize = (0.2192 * metrics.cellHeight + 0.0955) * 1.5;
        target_.SelectFont(target_.PrepareScaledFont("0", metrics, {}, {}), 1, 1);
        target_.DrawText(Dots(x), Dots(y), text, Left, 0, true, false);
    }

    /// Bars as wide and as irregular as those of a long linear symbol.
    void Bars(int x, int y, int height) {
        unsigned const width = Size(660);
        std::vector<std::uint8_t> row((width + 7) / 8);
        for (std::size_t i = 0; i < row.size(); ++i) row[i] = static_cast<std::uint8_t>(0xC3 ^ (i * 37 & 0x3C));
        std::vector<std::uint8_t> rows;
        for (int i = 0; i < Dots(height); ++i) rows.insert(rows.end(), row.begin(), row.end());
        target_.DrawImage({rows, width, Size(height)}, Dots(x), Dots(y), width, Size(height), false);
    }

    void Cells(int x, int y, int side) {
        unsigned const width = Size(side);
        unsigned const stride = (width + 7) / 8;
        std::vector<std::uint8_t> rows(std::size_t{stride} * width);
        for (std::size_t i = 0; i < rows.size(); ++i)
            rows[i] = (i / stride / 8 * 7919 + i % stride * 104729) & 16 ? 0xFF : 0;
        target_.DrawImage({rows, width, width}, Dots(x), Dots(y), width, width, false);
    }

    double scale_;
    PrintEngine::Printing::TrueTypeCacheCreator fonts_;
    ScriptGraphicContext target_;
};

void DrawPage(benchmark::State& state) {
    ShippingLabel label(static_cast<unsigned>(state.range(0)));
    for (auto _ : state) label.Draw();
}
BENCHMARK(DrawPage)->ArgName("dpi")->Arg(203)->Arg(300)->Arg(600)->Unit(benchmark::kMicrosecond);

void DrawAndWritePage(benchmark::State& state) {
    ShippingLabel label(static_cast<unsigned>(state.range(0)));
    auto const folder = std::filesystem::temp_directory_path() / ("zpl-bench-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder);
    for (auto _ : state) {
        label.Draw();
        label.Write(folder);
    }
    state.counters["fileBytes"] = static_cast<double>(std::filesystem::file_size(folder / "0"));
    std::filesystem::remove_all(folder);
}
BENCHMARK(DrawAndWritePage)->ArgName("dpi")->Arg(203)->Arg(300)->Arg(600)->Unit(benchmark::kMicrosecond);

/// Makes a form of a drawn page, without a file.
template <std::string_view (Scripting::FinishedPage::*Form)()>
void EncodePage(benchmark::State& state) {
    ShippingLabel label(static_cast<unsigned>(state.range(0)));
    label.Page().KeepPages();
    label.Draw();
    label.Write({});
    std::size_t size = 0;
    for (auto _ : state) size = (label.Page().*Form)().size();
    state.counters["bytes"] = static_cast<double>(size);
}
BENCHMARK(EncodePage<&Scripting::FinishedPage::PngFile>)
    ->Name("EncodePage/png")
    ->ArgName("dpi")
    ->Arg(203)
    ->Arg(300)
    ->Arg(600)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(EncodePage<&Scripting::FinishedPage::PackedRows>)
    ->Name("EncodePage/pbm")
    ->ArgName("dpi")
    ->Arg(203)
    ->Arg(300)
    ->Arg(600)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(EncodePage<&Scripting::FinishedPage::DeflatedRows>)
    ->Name("EncodePage/pdf")
    ->ArgName("dpi")
    ->Arg(203)
    ->Arg(300)
    ->Arg(600)
    ->Unit(benchmark::kMicrosecond);

void FirstPageOfAProcess(benchmark::State& state) {
    for (auto _ : state) {
        ShippingLabel label(300);
        label.Draw();
    }
}
BENCHMARK(FirstPageOfAProcess)->Unit(benchmark::kMicrosecond);

}  // namespace
