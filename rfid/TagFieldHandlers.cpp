#include <algorithm>

#include "fields/data/FieldElement.h"
#include "fields/map/FieldFunction.h"
#include "foundation/Log.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "rfid/RfidHandlers.h"
#include "rfid/TagData.h"
#include "rfid/TagOperations.h"
#include "rfid/TagParameters.h"

namespace {

using namespace ZplContextKeys;
namespace Banks = TagOperations::Banks;

constexpr unsigned LastFieldNumber = 9999;
constexpr unsigned MostTagBytes = 4096;

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
    ZplCore::StoreFieldFunction(
        current, processor, [act](ContextProcessor& field) { act(field, field.at(FieldData)); },
        [](ContextProcessor const&, ZplCore::FieldNotes& notes) { notes.kind = ZplCore::FieldKind::Tag; });
}

void AddWrite(ContextProcessor& processor, RfidOperation operation, TagFormat format, unsigned bytes,
              std::string const& data) {
    if (data.empty()) return;
    auto hex = ToTagHex(format, data, processor.at(EpcPartitionSizes));
    if (!hex) {
        Log::Report(LogTopic::Data, "tag data are not what the command's format says; nothing is written");
    } else if (hex->size() > 2 * MostTagBytes) {
        Log::Report(LogTopic::Limit,
                    "tag data are longer than " + std::to_string(MostTagBytes) + " bytes; nothing is written");
    } else {
        operation.arguments.emplace_back("Data", FitTagHex(*std::move(hex), bytes));
        TagOperations::Add(processor, std::move(operation));
    }
}

/// `^RF`: reads or writes a tag. What is read fills the field number of its field, at the end of the field.
class ReadWriteRFIDHandler : public HandlerFor<CommandId("RF")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        char const what = UpperLetter(command, 0, "WLRP", 'W');
        TagFormat const format = FormatOf(UpperLetter(command, 1, "AHE", 'H'));
        char const bank = UpperLetter(command, 4, "EA0123", 'E');
        unsigned const bytes = std::min(ZplParse<unsigned>(command, 3).ValueOr(0), MostTagBytes);
        auto operation =
            TagOperations::Make(processor, TypeOf(what), {&bank, 1}, ZplParse<unsigned>(command, 2).ValueOr(0));
        operation.arguments.emplace_back("Bytes", std::to_string(bytes));
        if (what == 'L') operation.arguments.emplace_back("Lock", "true");
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
    static unsigned TypeOf(char what) {
        if (what == 'R') return RfidOperation::Read;
        return what == 'P' ? RfidOperation::SetPassword : RfidOperation::Write;
    }

    static void Read(Context& current, ContextProcessor& processor, TagFormat format) {
        auto const hex = TagOperations::ReadData(processor);
        // Empty data say that the field is no template, also before the tag has been read.
        processor.set(current, FieldData,
                      hex ? FromTagHex(format, *hex, processor.at(EpcPartitionSizes)) : std::string());
        bool const isRead = hex.has_value();
        // A number in front of the read has installed what fills its templates.
        auto const* fills = current.Find(FillsTemplates);
        RenderFunction const fill = fills && *fills ? processor.at(FieldRenderFunction) : RenderFunction();
        AtEndOfField(current, processor, [isRead, fill](ContextProcessor& field, std::string const& data) {
            if (isRead && fill) return fill(field);
            Context const* element = field.GetContext(ContextProcessor::ElementContext);
            unsigned const* number = element ? element->Find(FieldNumberToSave) : nullptr;
            // A copy: what fills the template sets the data that are referred to.
            std::string const read = data;  // NOLINT(performance-unnecessary-copy-initialization)
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
        TagOperations::Add(processor, TagOperations::Make(processor, RfidOperation::Read, bank_));
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
    GetRfidTidHandler() : ReadIntoFieldHandler(Banks::Tid) {}
};

/// `^RA`: the byte of the application family.
class ReadAfiHandler : public ReadIntoFieldHandler<CommandId("RA")> {
public:
    ReadAfiHandler() : ReadIntoFieldHandler(Banks::ApplicationFamily) {}
};

/// `^WF`: writes the byte of the application family, which is the data of its field.
class EncodeAfiByteHandler : public HandlerFor<CommandId("WF")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        auto const operation = TagOperations::Make(processor, RfidOperation::Write, Banks::ApplicationFamily);
        AtEndOfField(current, processor,
                     [operation, format = CountedFormat(command, 2)](ContextProcessor& field, std::string const& data) {
                         AddWrite(field, operation, format, 1, data);
                     });
        return true;
    }
};

}  // namespace

void AddTagFieldHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<ReadWriteRFIDHandler>();
    pool.AddToCache<EncodeAfiByteHandler>();
    pool.AddToCache<GetRfidTidHandler>();
    pool.AddToCache<ReadAfiHandler>();
}
