#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "Scripting/ScriptGraphicContext.h"
#include "tests/printengine/Picture.h"
#include "tests/support/FakePrinterContext.h"
#include "tests/support/TemporaryDirectory.h"

/// A drawing target with a small label, a folder for its jobs and the warnings that it gave.
class DeskFixture : public ::testing::Test {
protected:
    DeskFixture() {
        fonts.SetWarningReceiver([this](std::string_view line, std::string_view) { warnings.emplace_back(line); });
        Scripting::ScriptGraphicContext::InitializeFontManager(fonts, "/usr/share/fonts");
    }

    std::unique_ptr<Scripting::ScriptGraphicContext> Target(double widthInches, double heightInches,
                                                            unsigned printerDpi = 203, unsigned designDpi = 0) {
        auto target = std::make_unique<Scripting::ScriptGraphicContext>(
            fonts, std::make_shared<FakePrinterContext>(printerDpi, designDpi));
        target->SetJobsFolder(folder / "jobs");
        target->LoadPart({widthInches, heightInches});
        target->SetupForPrintJob();
        return target;
    }

    /// The page as drawn.
    static Picture Drawn(Scripting::ScriptGraphicContext const& target) {
        unsigned width = 0, height = 0;
        auto const rows = target.GetPageBitmap(width, height);
        return Picture::FromPacked(rows, static_cast<int>(width), static_cast<int>(height));
    }

    /// Prepares the scalable font as the command A0 with this height and width does at 203 and 300 dpi.
    static std::string Font0(Scripting::ScriptGraphicContext& target, unsigned height, unsigned width) {
        Scripting::ScaledFontMetrics metrics;
        metrics.pointSize = (0.2192 * height + 0.0955) * 1.5;
        metrics.widthPercent = 100.0 * width / height;
        metrics.cellHeight = static_cast<std::uint16_t>(height);
        metrics.descent = static_cast<std::uint16_t>(static_cast<int>(static_cast<float>(height) * 0.33333334f) - 1);
        metrics.cellWidth = static_cast<std::uint16_t>(width);
        return target.PrepareScaledFont("0", metrics, {}, {});
    }

    static constexpr auto Left = Scripting::ScriptTextJustification::Left;

    TemporaryDirectory temporary;
    std::filesystem::path folder = temporary / "desk";
    std::vector<std::string> warnings;
    PrintEngine::Printing::TrueTypeCacheCreator fonts;
};
