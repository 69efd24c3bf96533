#include "rfid/TagOperations.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "foundation/Log.h"
#include "frontend/context/ZplContextKeys.h"

namespace TagOperations {

namespace {

constexpr std::size_t MostOperations = 200;
constexpr std::size_t MostBytes = std::size_t{64} << 10;  // of all arguments

std::string const* FindData(std::vector<RfidReadResponse> const& responses, unsigned sequence) {
    auto const found = std::find_if(responses.begin(), responses.end(), [sequence](RfidReadResponse const& response) {
        return response.sequence == sequence;
    });
    return found == responses.end() ? nullptr : &found->data;
}

std::size_t BytesOf(RfidOperation const& operation) {
    std::size_t bytes = 0;
    for (auto const& [name, value] : operation.arguments) bytes += name.size() + value.size();
    return bytes;
}

std::string Password(unsigned password) {
    char digits[9];
    std::snprintf(digits, sizeof digits, "%08X", password);
    return digits;
}

}  // namespace

std::string_view NameOf(unsigned type) {
    struct Row {
        unsigned type;
        std::string_view name;
    };
    constexpr std::array Rows{Row{RfidOperation::Read, "read"}, Row{RfidOperation::Write, "write"},
                              Row{RfidOperation::Lock, "lock"}, Row{RfidOperation::SetPassword, "password"},
                              Row{RfidOperation::SetUp, "setup"}};
    auto const row = std::find_if(Rows.begin(), Rows.end(), [type](Row const& r) { return r.type == type; });
    return row == Rows.end() ? "" : row->name;
}

RfidOperation Make(ContextProcessor const& processor, unsigned type, std::string_view bank, unsigned firstWord) {
    RfidOperation operation{type, {{"Sequence", std::to_string(processor.at(ZplContextKeys::HandlerSequenceNumber))}}};
    if (unsigned const password = processor.at(ZplContextKeys::RfidAccessPassword); password != 0)
        operation.arguments.emplace_back("Password", Password(password));
    operation.arguments.emplace_back("Bank", bank);
    operation.arguments.emplace_back("Start", std::to_string(firstWord));
    return operation;
}

void Add(ContextProcessor& processor, RfidOperation operation) {
    Context* const label = processor.GetContext(ContextProcessor::LabelContext);
    if (!label) return;
    auto& operations = (*label)[ZplContextKeys::RfidOperations];
    std::size_t bytes = BytesOf(operation);
    for (auto const& recorded : operations) bytes += BytesOf(recorded);
    if (operations.size() >= MostOperations || bytes > MostBytes) {
        Log::Report(LogTopic::Limit, "a label asks for more tag operations than a tag can take; the rest is left out");
        return;
    }
    auto const& setUp = processor.at(ZplContextKeys::RfidSetUp);
    if (operations.empty() && !setUp.empty()) operations.push_back({RfidOperation::SetUp, setUp});
    operations.push_back(std::move(operation));
}

std::optional<std::string> ReadData(ContextProcessor const& processor) {
    auto const* data =
        FindData(processor.at(ZplContextKeys::RfidReadResponses), processor.at(ZplContextKeys::HandlerSequenceNumber));
    if (!data) return std::nullopt;
    return *data;
}

void SetUp(ContextProcessor& processor, std::string const& name, std::string const& value) {
    auto setUp = processor.at(ZplContextKeys::RfidSetUp);
    auto const known = std::find_if(setUp.begin(), setUp.end(), [&](auto const& entry) { return entry.first == name; });
    if (known != setUp.end()) {
        known->second = value;
    } else {
        setUp.emplace_back(name, value);
    }
    processor.set(ContextProcessor::SystemContext, ZplContextKeys::RfidSetUp, std::move(setUp));
}

std::string Report(std::vector<RfidOperation> const& operations, std::vector<RfidReadResponse> const& responses) {
    std::string lines;
    for (auto const& operation : operations) {
        if (operation.type == RfidOperation::SetUp) continue;
        for (std::string_view const part :
             {NameOf(operation.type), operation.Argument("Bank"), operation.Argument("Start")}) {
            lines += part;
            lines += ',';
        }
        bool const isSecret =
            operation.type == RfidOperation::SetPassword || operation.Argument("Bank") == Banks::Reserved;
        auto const* read = FindData(responses, operation.NumberOf("Sequence"));
        if (!isSecret) lines += read ? std::string_view(*read) : operation.Argument("Data");
        lines += "\r\n";
    }
    return lines;
}

std::string Framed(std::string const& lines) { return "\x02" + lines + "\x03\r\n"; }

}  // namespace TagOperations
