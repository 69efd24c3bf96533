#include <algorithm>
#include <array>

#include "fields/placement/UnitConversion.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "frontend/stream/Ascii.h"
#include "frontend/stream/ParameterRange.h"
#include "frontend/stream/ZplParse.h"
#include "labels/LabelHandlers.h"

namespace {

using namespace ZplContextKeys;

constexpr unsigned LongestSide = 32000;  // dots
constexpr int LargestTopShift = 120;     // dots
constexpr unsigned MostRemaps = 256;
constexpr unsigned LastCharacterSet = 36;

/// A set-up value holds until it is changed: it goes to the system context.
template <typename T>
void Keep(ContextProcessor& processor, ContextKey<T> const& key, T value) {
    processor.set(ContextProcessor::SystemContext, key, std::move(value));
}

bool IsGiven(unsigned dots) { return dots != 0; }

void KeepYesNo(ContextProcessor& processor, ContextKey<bool> const& key, ZplCommand const& command) {
    if (auto const value = ZplParse<bool>(command, 0)) Keep(processor, key, *value);
}

/// `^CI`: the character set, and which characters are shown in place of others. Pairs count in every set of single
/// bytes: hosts also send them with sets of other code pages, as 31, and mean them.
class ChangeInternationalFontHandler : public HandlerFor<CommandId("CI")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        ZplCodePageConverter converter = processor.at(CodePageConverter);
        if (auto const set = OnlyWithin(command, 0, ZplParse<unsigned>(command, 0), {0, LastCharacterSet});
            set && converter.SelectCodePage(*set))
            converter.ClearRemaps();
        // The set counts also where a number behind it cannot be used.
        Keep(processor, CodePageConverter, converter);
        for (std::size_t i = 1; i + 1 < command.parameters.size() && i < 2 * MostRemaps; i += 2) {
            auto const source = ZplParse<unsigned>(command, i);
            auto const target = ZplParse<unsigned>(command, i + 1);
            if (source && target && *source < 256 && *target < 256) {
                converter.Remap(static_cast<std::uint8_t>(*source), static_cast<std::uint8_t>(*target));
            }
        }
        Keep(processor, CodePageConverter, converter);
        return true;
    }
};

/// `^JM`: B halves the density, so that the format comes out twice as large.
class SetDotsPerMillimeterHandler : public HandlerFor<CommandId("JM")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        char const letter = ToAsciiUpper(ZplParse<char>(command, 0).ValueOr(0));
        if (letter == 'A') Keep(processor, FormatScale, 1U);
        if (letter == 'B') Keep(processor, FormatScale, 2U);
        return true;
    }
};

/// `^LH`: the label home, added to the position of every field that follows.
class LabelHomeHandler : public HandlerFor<CommandId("LH")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        if (auto const x = ZplCore::ParseLength(command, 0, processor))
            Keep(processor, LabelOriginX, Bounded(command, 0, *x, {0, LongestSide, ZplCore::DotsAsUnit(processor)}));
        if (auto const y = ZplCore::ParseLength(command, 1, processor))
            Keep(processor, LabelOriginY, Bounded(command, 1, *y, {0, LongestSide, ZplCore::DotsAsUnit(processor)}));
        return true;
    }
};

/// `^LL`: the length of the page.
class LabelLengthHandler : public HandlerFor<CommandId("LL")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        if (auto const length = ZplCore::ParseLength(command, 0, processor).Where(IsGiven))
            Keep(processor, LabelLength,
                 Bounded(command, 0, *length, {1, LongestSide, ZplCore::DotsAsUnit(processor)}));
        return true;
    }
};

/// `^LR`: all following fields are drawn reversed.
class LabelReversePrintHandler : public HandlerFor<CommandId("LR")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        KeepYesNo(processor, LabelReversePrint, command);
        return true;
    }
};

/// `^LT`: moves the finished page down, or up if negative.
class LabelTopHandler : public HandlerFor<CommandId("LT")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        if (auto const top = ZplParse<int>(command, 0)) {
            Keep(processor, LabelAdjustY, Bounded(command, 0, *top, {-LargestTopShift, LargestTopShift}));
        }
        return true;
    }
};

/// `^MC`: N keeps the picture of the label, but for its variable fields, for the next one to be drawn on.
class MapClearHandler : public HandlerFor<CommandId("MC")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        KeepYesNo(processor, DoNotUseStoredImage, command);
        return true;
    }
};

/// `^MU`: the unit of what follows, and the enlargement from one print density to another.
class SetUnitsOfMeasurementHandler : public HandlerFor<CommandId("MU")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        if (auto const unit = ZplParse<ZplUnitOfMeasure>(command, 0)) Keep(processor, UnitOfMeasure, *unit);
        auto const base = ZplParse<unsigned>(command, 1);
        auto const wanted = ZplParse<unsigned>(command, 2);
        if (!base || !wanted || *base == 0) return true;
        if (*base == *wanted) Keep(processor, DpiScaleFactor, 1U);
        constexpr std::array<unsigned, 3> Bases = {150, 200, 300};
        bool const isDensity = *wanted == 300 || *wanted == 600;
        // Only whole enlargements are made.
        if (isDensity && *wanted % *base == 0 && std::find(Bases.begin(), Bases.end(), *base) != Bases.end())
            Keep(processor, DpiScaleFactor, *wanted / *base);
        return true;
    }
};

/// `^PM`: mirrors the page left to right.
class PrintMirrorImageLabelHandler : public HandlerFor<CommandId("PM")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        KeepYesNo(processor, MirrorLabel, command);
        return true;
    }
};

/// `^PO`: I turns the page by 180 degrees.
class PrintOrientationHandler : public HandlerFor<CommandId("PO")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        if (auto const orientation = ZplParse<ZplPrintOrientation>(command, 0))
            Keep(processor, PrintOrientation, *orientation);
        return true;
    }
};

/// `^PW`: the width of the page.
class PrintWidthHandler : public HandlerFor<CommandId("PW")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        constexpr unsigned Narrowest = 2;  // dots
        if (auto const width = ZplCore::ParseLength(command, 0, processor).Where(IsGiven)) {
            Keep(processor, LabelWidth,
                 Bounded(command, 0, *width, {Narrowest, LongestSide, ZplCore::DotsAsUnit(processor)}));
        }
        return true;
    }
};

}  // namespace

void AddLabelSetupHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<ChangeInternationalFontHandler>();
    pool.AddToCache<SetDotsPerMillimeterHandler>();
    pool.AddToCache<LabelHomeHandler>();
    pool.AddToCache<LabelLengthHandler>();
    pool.AddToCache<LabelReversePrintHandler>();
    pool.AddToCache<LabelTopHandler>();
    pool.AddToCache<MapClearHandler>();
    pool.AddToCache<SetUnitsOfMeasurementHandler>();
    pool.AddToCache<PrintMirrorImageLabelHandler>();
    pool.AddToCache<PrintOrientationHandler>();
    pool.AddToCache<PrintWidthHandler>();
}
