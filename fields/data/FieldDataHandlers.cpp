#include "fields/data/FieldDataHandlers.h"

#include <utf8.h>

#include <algorithm>
#include <charconv>

#include "Scripting/PrinterContextInterface.h"
#include "fields/data/FieldDataHelper.h"
#include "fields/data/FieldElement.h"
#include "fields/data/SerialData.h"
#include "fields/map/FieldMap.h"
#include "foundation/Log.h"
#include "foundation/Quoted.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "frontend/stream/Ascii.h"
#include "frontend/stream/ZplParse.h"

namespace {

/// Mask and step of a serial field together, in bytes.
constexpr std::size_t LongestSerialMask = 3000;

/// The commonest fault of senders is UTF-8 under a character set of single bytes.
void ReportUtf8(std::string const& data, ContextProcessor const& processor) {
    bool const isAscii = IsAsciiText(data);
    if (isAscii || utf8::find_invalid(data) != std::string::npos) return;
    auto const& converter = processor.at(ZplContextKeys::CodePageConverter);
    if (!converter.ReadsSingleBytes()) return;
    Log::Report(LogTopic::Data, "the data " + Quoted(data) + " look like UTF-8, and are read as ^CI" +
                                    std::to_string(converter.CodePage()) + "; ^CI28 stands for UTF-8");
}

void StoreData(Context& current, std::string raw, ContextProcessor& processor) {
    std::string data = ZplCore::FieldDataHelper::ProcessHexAndClockData(std::move(raw), processor);
    ReportUtf8(data, processor);
    processor.set(current, ZplContextKeys::FieldData, std::move(data));
}

/// The leading digits as a number; no value without a digit in front, or past what a number can hold.
ZplParseResult<unsigned> ParseFieldNumber(std::string const& text) {
    unsigned number = 0;
    if (text.empty() || !IsAsciiDigit(text.front())) return {};
    auto const result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc()) return {};
    return number;
}

/// What stands between quotation marks behind a field number: who is asked for its data is asked so.
std::string Prompt(std::string const& text) {
    auto const begin = text.find('"');
    if (begin == text.npos) return {};
    return text.substr(begin + 1, text.find('"', begin + 1) - begin - 1);
}

/// Lets `count` (data of the field and serial index, to new data) change the data of the field when it ends.
template <typename Count>
void StoreSerializer(Context& current, ContextProcessor& processor, Count count) {
    processor.set(current, ZplContextKeys::SerializeFunction,
                  ZplContextKeys::SerializeFunctionType([count](ContextProcessor& field, unsigned index) {
                      // A template has nothing to count yet, and stays one.
                      Context const* element = field.GetContext(ContextProcessor::ElementContext);
                      if (element && element->HasValue(ZplContextKeys::FieldData))
                          field.set(ContextProcessor::ElementContext, ZplContextKeys::FieldData, count(field, index));
                  }));
}

/// `own` is what the field would draw under no number.
ZplContextKeys::RenderFunction FillFunction(unsigned number, ZplContextKeys::RenderFunction own) {
    return [number, own = std::move(own)](ContextProcessor& processor) {
        Context const* element = processor.GetContext(ContextProcessor::ElementContext);
        if (!element || !element->HasValue(ZplContextKeys::FieldData)) {
            ZplCore::SaveFurtherTemplate(processor, number, own);
            return;
        }
        std::string const data = processor.at(ZplContextKeys::FieldData);
        ZplCore::InvokeSavedFieldRenderFunction(processor, number, data);
    };
}

/// `^FC`: the characters that announce clock codes in the data of this field.
class FieldClockHandler : public HandlerFor<CommandId("FC")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        constexpr char DefaultIndicator = '%';
        processor.set(current, ZplContextKeys::ClockIndicator1, ZplParse<char>(command, 0).ValueOr(DefaultIndicator));
        if (auto const second = ZplParse<char>(command, 1))
            processor.set(current, ZplContextKeys::ClockIndicator2, *second);
        if (auto const third = ZplParse<char>(command, 2))
            processor.set(current, ZplContextKeys::ClockIndicator3, *third);
        return true;
    }
};

/// `^FD`: the data of the field.
class FieldDataHandler : public HandlerFor<CommandId("FD")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        StoreData(current, ZplCore::FieldDataHelper::ProcessDelimiterData(command), processor);
        return true;
    }
};

/// `^FH`: the character that announces two hexadecimal digits in the data of this field.
class FieldHexadecimalIndicatorHandler : public HandlerFor<CommandId("FH")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        constexpr char DefaultIndicator = '_';
        auto const& printer = processor.GetPrinterContext();
        auto const usable = [&printer](char c) {
            bool const isGraph = c > ' ' && c < 0x7F;
            return isGraph && !(printer && (c == printer->FormatPrefix() || c == printer->ControlPrefix()));
        };
        processor.set(current, ZplContextKeys::FieldHexIndicator,
                      ZplParse<char>(command, 0).Where(usable).ValueOr(DefaultIndicator));
        return true;
    }
};

/// `^FN`: a field that is kept as a template under a number, or filled with data if there is a template of that number.
class FieldNumberHandler : public HandlerFor<CommandId("FN")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        auto const number = ParseFieldNumber(command.Parameter(0));
        if (!number) return true;
        if (auto const& map = processor.GetFieldMap(); map && map->WantsDetails())
            map->NoteNumber(*number, Prompt(command.Joined(0)));
        if (ZplCore::HasSavedField(processor, *number)) {
            auto const* own = current.Find(ZplContextKeys::FieldRenderFunction);
            processor.set(current, ZplContextKeys::FieldRenderFunction,
                          FillFunction(*number, own ? *own : ZplContextKeys::RenderFunction()));
            processor.set(current, ZplContextKeys::FillsTemplates, true);
        } else {
            processor.set(current, ZplContextKeys::FieldNumberToSave, *number);
        }
        return true;
    }
};

/// `^FS`: the end of a field.
class FieldSeparatorHandler : public HandlerFor<CommandId("FS")> {
public:
    bool HandleCommand(Context& current, ZplCommand const&, ContextProcessor& processor) override {
        ZplCore::ProcessElementCommands(current, processor);
        return true;
    }
};

/// `^FV`: the data of a field in the variable part of the label.
class FieldVariableHandler : public HandlerFor<CommandId("FV")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        StoreData(current, ZplCore::FieldDataHelper::ProcessDelimiterData(command), processor);
        processor.set(current, ZplContextKeys::FieldVariable, true);
        return true;
    }
};

/// `^FX`: a comment.
class FieldCommentHandler : public HandlerFor<CommandId("FX")> {
public:
    bool HandleCommand(Context&, ZplCommand const&, ContextProcessor&) override { return true; }
};

/// `^SF`: the mask and the step by which the data of the field counts.
class SerializationFieldHandler : public HandlerFor<CommandId("SF")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        auto const serial =
            std::make_shared<ZplCore::SerializationFieldStringData>(ZplCore::SerializationFieldStringData{
                processor.at(ZplContextKeys::FieldData), command.Parameter(0), command.Parameter(1)});
        if (serial->mask.size() + serial->step.size() > LongestSerialMask) return true;
        // In place: a field may hold any number of these, and copying them for each would take ever longer.
        if (!current.HasValue(ZplContextKeys::serializationFieldStringData)) {
            processor.set(current, ZplContextKeys::serializationFieldStringData,
                          processor.at(ZplContextKeys::serializationFieldStringData));
        }
        current[ZplContextKeys::serializationFieldStringData].push_back(serial);
        // The data is read when the field ends: it may stand behind the mask.
        StoreSerializer(current, processor, [serial](ContextProcessor& field, unsigned index) {
            return ZplCore::SerialData::CountByMask(field.at(ZplContextKeys::FieldData), serial->mask, serial->step,
                                                    index);
        });
        return true;
    }
};

/// `^SN`: data that counts, from a start value.
class SerializationDataHandler : public HandlerFor<CommandId("SN")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        constexpr std::string_view DefaultStart = "1";
        std::string const& start = command.Parameter(0);
        StoreData(current, start.empty() ? std::string(DefaultStart) : start, processor);
        int const step = ZplParse<int>(command, 1).ValueOr(1);
        bool const leadingZeros = ZplParse<bool>(command, 2).ValueOr(false);
        StoreSerializer(current, processor, [step, leadingZeros](ContextProcessor& field, unsigned index) {
            return ZplCore::SerialData::CountNumber(field.at(ZplContextKeys::FieldData), step, leadingZeros, index);
        });
        return true;
    }
};

}  // namespace

void AddFieldDataHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<FieldClockHandler>();
    pool.AddToCache<FieldDataHandler>();
    pool.AddToCache<FieldHexadecimalIndicatorHandler>();
    pool.AddToCache<FieldNumberHandler>();
    pool.AddToCache<FieldSeparatorHandler>();
    pool.AddToCache<FieldVariableHandler>();
    pool.AddToCache<FieldCommentHandler>();
    pool.AddToCache<SerializationFieldHandler>();
    pool.AddToCache<SerializationDataHandler>();
}
