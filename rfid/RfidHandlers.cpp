#include "rfid/RfidHandlers.h"

#include <algorithm>
#include <charconv>
#include <numeric>

#include "Scripting/PrinterContextInterface.h"
#include "fields/FieldElement.h"
#include "foundation/Log.h"
#include "frontend/context/Setting.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "frontend/stream/ZplParse.h"
#include "rfid/TagData.h"
#include "rfid/TagOperations.h"

namespace {

using enum SyntacticType;
using enum ProcessingType;
using namespace ZplContextKeys;

constexpr unsigned LastFieldNumber = 9999;
constexpr unsigned MostTagBytes = 4096;
constexpr std::string_view ApplicationFamily = "AFI";

char UpperLetter(ZplCommand const& command, std::size_t index, std::string_view allowed, char otherwise) {
    char letter = ZplParse<char>(command, index).ValueOr(otherwise);
    if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
    return allowed.find(letter) == allowed.npos ? otherwise : letter;
}

TagFormat FormatOf(char letter) {
    if (letter == 'A') return TagFormat::Ascii;
    return letter == 'E' ? TagFormat::Epc : TagFormat::Hex;
}

/// The format of the commands that count it: 0 ASCII, 1 hexadecimal.
TagFormat CountedFormat(ZplCommand const& command, std::size_t index) {
    return ZplParse<unsigned>(command, index).ValueOr(0) == 1 ? TagFormat::Hex : TagFormat::Ascii;
}

/// A field that is for the tag draws nothing; at its end `act` gets its data.
template <typename Act>
void AtEndOfField(Context& current, ContextProcessor& processor, Act act) {
    StoreSetting(current, processor, FieldRenderFunction,
                 RenderFunction([act](ContextProcessor& field) { act(field, field.at(FieldData)); }));
}

void AddWrite(ContextProcessor& processor, RfidOperation operation, TagFormat format, unsigned bytes,
              std::string const& data) {
    auto hex = ToTagHex(format, data, processor.at(EpcPartitionSizes));
    if (!hex || hex->empty() || hex->size() > 2 * MostTagBytes) {
        ::Log::Report(LogTopic::Data, "tag data are not what the command's format says; nothing is written");
        return;
    }
    operation.arguments.emplace_back("Data", FitTagHex(*std::move(hex), bytes));
    TagOperations::Add(processor, std::move(operation));
}

/// `^RF`: reads or writes a tag. What is read fills the field number that follows, at the end of the field.
class ReadWriteRFIDHandler : public HandlerFor<CommandId("RF")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        char const what = UpperLetter(command, 0, "WLRP", 'W');
        TagFormat const format = FormatOf(UpperLetter(command, 1, "AHE", 'H'));
        char const bank = UpperLetter(command, 4, "EA0123", 'E');
        unsigned const bytes = std::min(ZplParse<unsigned>(command, 3).ValueOr(0), MostTagBytes);
        auto operation = TagOperations::Make(
            processor,
            what == 'R' ? RfidOperation::Read : (what == 'P' ? RfidOperation::SetPassword : RfidOperation::Write));
        operation.arguments.insert(operation.arguments.end(),
                                   {{"Bank", std::string(1, bank)},
                                    {"Start", std::to_string(ZplParse<unsigned>(command, 2).ValueOr(0))},
                                    {"Bytes", std::to_string(bytes)}});
        if (what == 'L') operation.arguments.emplace_back("Lock", "true");
        TagOperations::ReportAtEndOfPage(processor);
        if (what == 'R') {
            TagOperations::Add(processor, std::move(operation));
            Read(current, processor, format);
        } else {
            AtEndOfField(current, processor, [=](ContextProcessor& field, std::string const& data) {
                AddWrite(field, operation, format, bytes, data);
            });
        }
        return true;
    }

private:
    static void Read(Context& current, ContextProcessor& processor, TagFormat format) {
        auto const hex = TagOperations::ReadData(processor);
        // Empty data say that the field is no template, also before the tag has been read.
        StoreSetting(current, processor, FieldData,
                     hex ? FromTagHex(format, *hex, processor.at(EpcPartitionSizes)) : std::string());
        bool const isRead = hex.has_value();
        AtEndOfField(current, processor, [isRead](ContextProcessor& field, std::string const& data) {
            Context const* element = field.GetContext(ContextProcessor::ElementContext);
            unsigned const* number = element ? element->Find(FieldNumberToSave) : nullptr;
            std::string const read = data;
            if (isRead && number) ZplCore::InvokeSavedFieldRenderFunction(field, *number, read);
        });
    }
};

/// A command that reads one thing of a tag into a field number: number, format.
template <std::uint64_t Id>
class ReadIntoFieldHandler : public HandlerFor<Id> {
public:
    explicit ReadIntoFieldHandler(std::string_view bank) : bank_(bank) {}

    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        auto operation = TagOperations::Make(processor, RfidOperation::Read);
        operation.arguments.insert(operation.arguments.end(),
                                   {{"Bank", std::string(bank_)}, {"Start", "0"}, {"Bytes", "0"}});
        TagOperations::ReportAtEndOfPage(processor);
        TagOperations::Add(processor, std::move(operation));
        if (auto const hex = TagOperations::ReadData(processor)) {
            unsigned const number = std::min(ZplParse<unsigned>(command, 0).ValueOr(0), LastFieldNumber);
            ZplCore::InvokeSavedFieldRenderFunction(
                processor, number, FromTagHex(CountedFormat(command, 1), *hex, processor.at(EpcPartitionSizes)));
        }
        return true;
    }

private:
    std::string_view bank_;
};

/// `^RI`: the number that the maker of the tag gave it.
class GetRfidTidHandler : public ReadIntoFieldHandler<CommandId("RI")> {
public:
    GetRfidTidHandler() : ReadIntoFieldHandler("2") {}
};

/// `^RA`: the byte of the application family.
class ReadAfiHandler : public ReadIntoFieldHandler<CommandId("RA")> {
public:
    ReadAfiHandler() : ReadIntoFieldHandler(ApplicationFamily) {}
};

/// `^WF`: writes the byte of the application family, which is the data of its field.
class EncodeAfiByteHandler : public HandlerFor<CommandId("WF")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        auto operation = TagOperations::Make(processor, RfidOperation::Write);
        operation.arguments.insert(operation.arguments.end(),
                                   {{"Bank", std::string(ApplicationFamily)}, {"Start", "0"}, {"Bytes", "1"}});
        TagOperations::ReportAtEndOfPage(processor);
        AtEndOfField(current, processor,
                     [operation, format = CountedFormat(command, 2)](ContextProcessor& field, std::string const& data) {
                         AddWrite(field, operation, format, 1, data);
                     });
        return true;
    }
};

/// `^RL`: locks memory, by banks (M: kill password, access password, EPC, user; each U, L, O or P) or for good by
/// blocks (B: first block, blocks).
class LockUnlockRfidHandler : public HandlerFor<CommandId("RL")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        auto operation = TagOperations::Make(processor, RfidOperation::Lock);
        char const form = UpperLetter(command, 0, "MB", 0);
        if (form == 'M') {
            constexpr std::string_view Banks[] = {"Kill", "Access", "E", "3"};
            for (std::size_t i = 0; i < std::size(Banks); ++i) {
                if (char const style = UpperLetter(command, i + 1, "ULOP", 0))
                    operation.arguments.emplace_back(Banks[i], std::string(1, style));
            }
            if (operation.arguments.back().first == "Sequence") return true;
        } else if (form == 'B') {
            auto const first = ZplParse<unsigned>(command, 1);
            if (!first) return true;
            operation.arguments.insert(operation.arguments.end(),
                                       {{"Bank", "3"},
                                        {"Start", std::to_string(*first)},
                                        {"Blocks", std::to_string(ZplParse<unsigned>(command, 2).ValueOr(1))},
                                        {"3", "P"}});
        } else {
            return true;
        }
        TagOperations::ReportAtEndOfPage(processor);
        TagOperations::Add(processor, std::move(operation));
        return true;
    }
};

/// `^RZ`: the password of the label's operations, and a lock by it: password, bank, lock style.
class SetRfidPasswordHandler : public HandlerFor<CommandId("RZ")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        constexpr int Hexadecimal = 16;
        constexpr std::size_t LongestPassword = 8;
        std::string const text = command.Parameter(0);
        unsigned password = 0;
        auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), password, Hexadecimal);
        if (text.empty() || text.size() > LongestPassword || error != std::errc() || end != text.data() + text.size())
            return true;
        processor.set(ContextProcessor::LabelContext, RfidAccessPassword, password);
        char const bank = UpperLetter(command, 1, "KAETU", 0);
        if (char const style = UpperLetter(command, 2, "ULOPW", 0); bank && style) {
            auto operation = TagOperations::Make(processor, RfidOperation::Lock);
            operation.arguments.insert(operation.arguments.end(),
                                       {{"Bank", std::string(1, bank)}, {"Style", std::string(1, style)}});
            TagOperations::ReportAtEndOfPage(processor);
            TagOperations::Add(processor, std::move(operation));
        }
        return true;
    }
};

/// `^RB`: the sizes in bits of the parts of an EPC, which add up to its own.
class DefineEpcHandler : public HandlerFor<CommandId("RB")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        constexpr unsigned UsualSize = 96;
        constexpr unsigned LargestPart = 64;
        constexpr std::size_t MostParts = 15;
        std::vector<std::uint8_t> sizes;
        for (std::size_t i = 1; i < command.parameters.size() && i <= MostParts; ++i) {
            auto const bits = ZplParse<unsigned>(command, i);
            if (!bits || *bits < 1 || *bits > LargestPart) return true;
            sizes.push_back(static_cast<std::uint8_t>(*bits));
        }
        unsigned const total = std::accumulate(sizes.begin(), sizes.end(), 0U);
        if (sizes.empty() || total != ZplParse<unsigned>(command, 0).ValueOr(UsualSize)) return true;
        processor.set(ContextProcessor::SystemContext, EpcPartitionSizes, sizes);
        return true;
    }
};

/// `^RS`: how the encoder works: tag type, place of the tag, length of the void print, labels to try, what happens
/// after the last of them.
class SetupRfidParametersHandler : public HandlerFor<CommandId("RS")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        constexpr unsigned MostLabelsToTry = 10;
        if (auto const type = ZplParse<unsigned>(command, 0))
            TagOperations::SetUp(processor, "TagType", std::to_string(*type));
        if (auto const& place = command.Parameter(1); !place.empty() && place.size() <= 8)
            TagOperations::SetUp(processor, "Position", place);
        if (auto const length = ZplParse<unsigned>(command, 2))
            TagOperations::SetUp(processor, "VoidLength", std::to_string(*length));
        if (auto const labels = ZplParse<unsigned>(command, 3))
            TagOperations::SetUp(processor, "LabelsToTry", std::to_string(std::clamp(*labels, 1U, MostLabelsToTry)));
        if (char const handling = UpperLetter(command, 4, "NPE", 0))
            TagOperations::SetUp(processor, "ErrorHandling", std::string(1, handling));
        return true;
    }
};

/// `^RW`: power to read and to write with, 0 to 30 or H, M, L; antenna.
class SetRfPowerHandler : public HandlerFor<CommandId("RW")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        constexpr unsigned MostPower = 30;
        constexpr std::string_view Names[] = {"ReadPower", "WritePower"};
        for (std::size_t i = 0; i < std::size(Names); ++i) {
            if (char const level = UpperLetter(command, i, "HML", 0)) {
                TagOperations::SetUp(processor, std::string(Names[i]), std::string(1, level));
            } else if (auto const power = ZplParse<unsigned>(command, i)) {
                TagOperations::SetUp(processor, std::string(Names[i]), std::to_string(std::min(*power, MostPower)));
            }
        }
        if (auto const& antenna = command.Parameter(2); !antenna.empty() && antenna.size() <= 8)
            TagOperations::SetUp(processor, "Antenna", antenna);
        return true;
    }
};

/// `~RV`: tells the host what was done with the tag of each label, from the next format on.
class ReportRfidEncodingHandler : public HandlerFor<CommandId("RV"), Control, Immediate> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        char const state = UpperLetter(command, 0, "ED", 0);
        if (!state) return true;
        ResponseCallback const report = [](ContextProcessor const& label) -> std::optional<std::string> {
            if (label.at(RfidOperations).empty()) return std::nullopt;
            return TagOperations::Framed(TagOperations::Report(label));
        };
        processor.set(ContextProcessor::SystemContext, ReportRfidEncodingCallback,
                      state == 'E' ? report : ResponseCallback());
        return true;
    }
};

/// `^HL`, `~HL`: sends the tag log, which is empty afterwards: `^HL` when its format has been printed, `~HL` at once.
class ReturnRfidDataLogHandler : public HandlerFor<CommandId("HL"), Either, Immediate> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        ResponseCallback const log = [](ContextProcessor const& label) -> std::optional<std::string> {
            return TagOperations::Framed(label.GetPrinterContext()->TakeTagLog());
        };
        if (!command.isControl && processor.GetContext(ContextProcessor::FormatContext)) {
            processor.set(ContextProcessor::FormatContext, ReturnRfidLogCallback, log);
        } else {
            processor.GetPrinterContext()->SendToHost(*log(processor));
        }
        return true;
    }
};

}  // namespace

void AddRfidHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<ReadWriteRFIDHandler>();
    pool.AddToCache<LockUnlockRfidHandler>();
    pool.AddToCache<SetRfidPasswordHandler>();
    pool.AddToCache<ReturnRfidDataLogHandler>();
    pool.AddToCache<SetupRfidParametersHandler>();
    pool.AddToCache<EncodeAfiByteHandler>();
    pool.AddToCache<ReportRfidEncodingHandler>();
    pool.AddToCache<DefineEpcHandler>();
    pool.AddToCache<GetRfidTidHandler>();
    pool.AddToCache<ReadAfiHandler>();
    pool.AddToCache<SetRfPowerHandler>();
}
