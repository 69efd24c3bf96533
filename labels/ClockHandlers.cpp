#include <algorithm>
#include <array>
#include <string_view>

#include "Scripting/PrinterContextInterface.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "frontend/stream/Ascii.h"
#include "frontend/stream/ParameterRange.h"
#include "frontend/stream/ZplParse.h"
#include "labels/LabelHandlers.h"

namespace {

using namespace ZplContextKeys;
using namespace std::chrono;

/// The languages of `^KL` and `^SL`, by number from 1.
constexpr std::array<std::string_view, 18> Cultures = {
    "en-US", "es-ES", "fr-FR", "de-DE", "it-IT", "nb-NO", "pt-PT", "sv-SE", "da-DK",
    "es-ES", "nl-NL", "fi-FI", "ja-JP", "ko-KR", "zh-CN", "zh-TW", "ru-RU", "pl-PL",
};

void KeepLanguage(ContextProcessor& processor, ZplCommand const& command, std::size_t index) {
    auto const number = OnlyWithin(command, index, ZplParse<unsigned>(command, index), {1, Cultures.size()});
    if (number) processor.set(ContextProcessor::SystemContext, CultureId, std::string(Cultures[*number - 1]));
}

/// `^KD`: how the printer's own reports show date and time.
class SelectDateTimeFormatHandler : public HandlerFor<CommandId("KD")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        constexpr unsigned LastFormat = 4;
        if (auto const format = ZplParse<unsigned>(command, 0)) {
            auto mode = processor.at(TimeMode);
            mode.format = Bounded(command, 0, *format, {0, LastFormat});
            processor.set(ContextProcessor::SystemContext, TimeMode, mode);
        }
        return true;
    }
};

/// `^KL`: the language of the printer's texts.
class DefineLanguageHandler : public HandlerFor<CommandId("KL")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        KeepLanguage(processor, command, 0);
        return true;
    }
};

/// `^KN`: the printer's name, which the configuration label shows. The description behind it is shown nowhere.
class DefinePrinterNameHandler : public HandlerFor<CommandId("KN")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        constexpr std::size_t LongestName = 16;
        if (auto const& name = command.Parameter(0); !name.empty())
            processor.set(ContextProcessor::SystemContext, PrinterName, name.substr(0, LongestName));
        return true;
    }
};

/// `^SL`: when clock fields take their time (S as the format ends, T for every copy, 1 to 999 for every copy that is so
/// many seconds later), and the language of their names.
class SetModeAndLanguageHandler : public HandlerFor<CommandId("SL")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        auto mode = processor.at(TimeMode);
        char const letter = ToAsciiUpper(ZplParse<char>(command, 0).ValueOr(0));
        if (letter == 'S') mode.everyCopy = false;
        if (letter == 'T') {
            mode.everyCopy = true;
            mode.tolerance = 0;
        }
        constexpr unsigned LargestTolerance = 999;
        if (auto const seconds = ZplParse<unsigned>(command, 0)) {
            mode.everyCopy = *seconds != 0;
            mode.tolerance = Bounded(command, 0, *seconds, {0, LargestTolerance});
        }
        processor.set(ContextProcessor::SystemContext, TimeMode, mode);
        KeepLanguage(processor, command, 1);
        return true;
    }
};

/// `^SO`: what the second or third clock adds to the time: months, days, years, hours, minutes, seconds.
class SetOffsetHandler : public HandlerFor<CommandId("SO")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        auto const clock = ZplParse<unsigned>(command, 0);
        if (!clock || (*clock != 2 && *clock != 3)) return true;
        auto const offset = [&](std::size_t index) {
            constexpr int Largest = 32000;
            return Bounded(command, index, ZplParse<int>(command, index).ValueOr(0), {-Largest, Largest});
        };
        processor.set(ContextProcessor::SystemContext, *clock == 2 ? ClockOffset2 : ClockOffset3,
                      ClockOffset{offset(1), offset(2), offset(3), offset(4), offset(5), offset(6)});
        return true;
    }
};

/// `^ST`: sets the clock of the job, month, day, year, hour, minute, second, and A or P for 12 hours. An absent part
/// keeps its value.
class SetDateAndTimeHandler : public HandlerFor<CommandId("ST")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        // From the time of the label on, and not from the clock of the machine: drawing the label again gives the same.
        auto const now = processor.at(TimeAtRender);
        auto const today = floor<days>(now);
        year_month_day const date(today);
        hh_mm_ss const clock(floor<seconds>(now - today));

        auto const part = [&](std::size_t index, unsigned low, unsigned high, unsigned current) {
            return OnlyWithin(command, index, ZplParse<unsigned>(command, index), {low, high}).ValueOr(current);
        };
        unsigned const month = part(0, 1, 12, static_cast<unsigned>(date.month()));
        unsigned const day = part(1, 1, 31, static_cast<unsigned>(date.day()));
        unsigned const year = part(2, 1998, 2097, static_cast<unsigned>(static_cast<int>(date.year())));
        unsigned hour = part(3, 0, 23, static_cast<unsigned>(clock.hours().count()));
        unsigned const minute = part(4, 0, 59, static_cast<unsigned>(clock.minutes().count()));
        unsigned const second = part(5, 0, 59, static_cast<unsigned>(clock.seconds().count()));
        char const half = ToAsciiUpper(ZplParse<char>(command, 6).ValueOr('M'));
        if (half == 'A' && hour == 12) hour = 0;
        if (half == 'P' && hour < 12) hour += 12;

        year_month_day const wanted(std::chrono::year(static_cast<int>(year)), std::chrono::month(month),
                                    std::chrono::day(day));
        if (wanted.ok()) {
            system_clock::time_point const time = sys_days(wanted) + hours(hour) + minutes(minute) + seconds(second);
            processor.set(ContextProcessor::LabelContext, TimeAtRender, system_clock::time_point(time));
            processor.set(ContextProcessor::SystemContext, ClockAdjustment,
                          time - processor.GetPrinterContext()->Now());
        }
        return true;
    }
};

}  // namespace

void AddClockHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<SelectDateTimeFormatHandler>();
    pool.AddToCache<DefineLanguageHandler>();
    pool.AddToCache<DefinePrinterNameHandler>();
    pool.AddToCache<SetModeAndLanguageHandler>();
    pool.AddToCache<SetOffsetHandler>();
    pool.AddToCache<SetDateAndTimeHandler>();
}
