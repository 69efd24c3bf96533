#include "rfid/TagOperations.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "Scripting/PrinterContextInterface.h"
#include "foundation/Log.h"
#include "frontend/context/ZplContextKeys.h"

namespace TagOperations {

namespace {

constexpr std::size_t MostOperations = 1000;

RfidReadResponse const* FindResponse(ContextProcessor const& processor, std::string_view sequence) {
    auto const& responses = processor.at(ZplContextKeys::RfidReadResponses);
    auto const found = std::find_if(responses.begin(), responses.end(), [sequence](RfidReadResponse const& response) {
        return std::to_string(response.sequence) == sequence;
    });
    return found == responses.end() ? nullptr : &*found;
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

RfidOperation Make(ContextProcessor const& processor, unsigned type) {
    RfidOperation operation{type, {{"Sequence", std::to_string(processor.at(ZplContextKeys::HandlerSequenceNumber))}}};
    if (unsigned const password = processor.at(ZplContextKeys::RfidAccessPassword); password != 0)
        operation.arguments.emplace_back("Password", Password(password));
    return operation;
}

void Add(ContextProcessor& processor, RfidOperation operation) {
    Context* const label = processor.GetContext(ContextProcessor::LabelContext);
    if (!label) return;
    auto& operations = (*label)[ZplContextKeys::RfidOperations];
    if (operations.size() >= MostOperations) {
        Log::Report(LogTopic::Limit, "a label asks for more than " + std::to_string(MostOperations) +
                                         " tag operations; the rest is left out");
        return;
    }
    auto const& setUp = processor.at(ZplContextKeys::RfidSetUp);
    if (operations.empty() && !setUp.empty()) operations.push_back({RfidOperation::SetUp, setUp});
    operations.push_back(std::move(operation));
}

std::optional<std::string> ReadData(ContextProcessor const& processor) {
    auto const* response = FindResponse(processor, std::to_string(processor.at(ZplContextKeys::HandlerSequenceNumber)));
    if (!response) return std::nullopt;
    return response->data;
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

std::string Report(ContextProcessor const& label) {
    std::string lines;
    for (auto const& operation : label.at(ZplContextKeys::RfidOperations)) {
        if (operation.type == RfidOperation::SetUp) continue;
        auto const* response = FindResponse(label, operation.Argument("Sequence"));
        for (std::string_view const part :
             {NameOf(operation.type), operation.Argument("Bank"), operation.Argument("Start")}) {
            lines += part;
            lines += ',';
        }
        lines += response ? std::string_view(response->data) : operation.Argument("Data");
        lines += "\r\n";
    }
    return lines;
}

std::string Framed(std::string const& lines) { return "\x02" + lines + "\x03\r\n"; }

void ReportAtEndOfPage(ContextProcessor& processor) {
    ZplContextKeys::ResponseCallback const callback = [](ContextProcessor const& label) -> std::optional<std::string> {
        label.GetPrinterContext()->AddToTagLog(Report(label));
        auto const* reporting = label.GetSystemContext()->Find(ZplContextKeys::ReportRfidEncodingCallback);
        return reporting && *reporting ? (*reporting)(label) : std::nullopt;
    };
    processor.set(ContextProcessor::LabelContext, ZplContextKeys::ReportRfidEncodingCallback, callback);
}

}  // namespace TagOperations
