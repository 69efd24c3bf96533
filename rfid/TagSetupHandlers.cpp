#include <algorithm>
#include <charconv>
#include <numeric>

#include "Scripting/PrinterContextInterface.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "rfid/RfidHandlers.h"
#include "rfid/TagOperations.h"
#include "rfid/TagParameters.h"

namespace {

using enum SyntacticType;
using enum ProcessingType;
using namespace ZplContextKeys;
namespace Banks = TagOperations::Banks;

constexpr std::size_t LongestName = 8;  // of a place or an antenna

void AddLock(ContextProcessor& processor, std::string_view bank, char style) {
    auto operation = TagOperations::Make(processor, RfidOperation::Lock, bank);
    operation.arguments.emplace_back("Style", std::string(1, style));
    TagOperations::Add(processor, std::move(operation));
}

/// `^RL`: locks memory, by banks (M: kill password, access password, EPC, user; each U, L, O or P) or for good by
/// blocks of user memory (B: first block, blocks).
class LockUnlockRfidHandler : public HandlerFor<CommandId("RL")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        char const form = UpperLetter(command, 0, "MB", 0);
        if (form == 'M') {
            constexpr std::string_view Order[] = {Banks::KillPassword, Banks::AccessPassword, Banks::Epc, Banks::User};
            for (std::size_t i = 0; i < std::size(Order); ++i) {
                if (char const style = UpperLetter(command, i + 1, "ULOP", 0)) AddLock(processor, Order[i], style);
            }
        } else if (auto const first = ZplParse<unsigned>(command, 1); form == 'B' && first) {
            auto operation = TagOperations::Make(processor, RfidOperation::Lock, Banks::User, *first);
            operation.arguments.emplace_back("Blocks", std::to_string(ZplParse<unsigned>(command, 2).ValueOr(1)));
            operation.arguments.emplace_back("Style", "P");
            TagOperations::Add(processor, std::move(operation));
        }
        return true;
    }
};

/// `^RZ`: the password of the label's operations, and a lock by it: password, bank, lock style.
class SetRfidPasswordHandler : public HandlerFor<CommandId("RZ")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        constexpr int Hexadecimal = 16;
        constexpr std::size_t LongestPassword = 8;
        std::string const& text = command.Parameter(0);
        unsigned password = 0;
        auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), password, Hexadecimal);
        if (text.empty() || text.size() > LongestPassword || error != std::errc() || end != text.data() + text.size())
            return true;
        processor.set(ContextProcessor::LabelContext, RfidAccessPassword, password);
        constexpr std::string_view Letters = "KAETU";
        constexpr std::string_view Order[] = {Banks::KillPassword, Banks::AccessPassword, Banks::Epc, Banks::Tid,
                                              Banks::User};
        char const bank = UpperLetter(command, 1, Letters, 0);
        char const style = UpperLetter(command, 2, "ULOPW", 0);
        if (bank && style) AddLock(processor, Order[Letters.find(bank)], style);
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
        if (auto const& place = command.Parameter(1); !place.empty() && place.size() <= LongestName)
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
        constexpr char const* Names[] = {"ReadPower", "WritePower"};
        for (std::size_t i = 0; i < std::size(Names); ++i) {
            if (char const level = UpperLetter(command, i, "HML", 0)) {
                TagOperations::SetUp(processor, Names[i], std::string(1, level));
            } else if (auto const power = ZplParse<unsigned>(command, i)) {
                TagOperations::SetUp(processor, Names[i], std::to_string(std::min(*power, MostPower)));
            }
        }
        if (auto const& antenna = command.Parameter(2); !antenna.empty() && antenna.size() <= LongestName)
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
            auto const& operations = label.at(RfidOperations);
            if (operations.empty()) return std::nullopt;
            return TagOperations::Framed(TagOperations::Report(operations, label.at(RfidReadResponses)));
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

void AddTagSetupHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<LockUnlockRfidHandler>();
    pool.AddToCache<SetRfidPasswordHandler>();
    pool.AddToCache<ReturnRfidDataLogHandler>();
    pool.AddToCache<SetupRfidParametersHandler>();
    pool.AddToCache<ReportRfidEncodingHandler>();
    pool.AddToCache<DefineEpcHandler>();
    pool.AddToCache<SetRfPowerHandler>();
}
