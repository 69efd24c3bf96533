#include "fields/FieldDataHelper.h"

#include "Scripting/PrinterContextInterface.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore::FieldDataHelper {

namespace {

int HexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

}  // namespace

std::string ProcessDelimiterData(ZplCommand const& command, ContextProcessor const& processor, std::size_t first) {
    auto const& printer = processor.GetPrinterContext();
    return command.Joined(first, printer ? printer->Delimiter() : ',');
}

std::string ExpandHex(std::string data, char indicator) {
    if (indicator == 0 || data.find(indicator) == std::string::npos) return data;
    std::string bytes;
    bytes.reserve(data.size());
    for (std::size_t i = 0; i < data.size(); ++i) {
        int const high = data[i] == indicator && i + 2 < data.size() ? HexValue(data[i + 1]) : -1;
        int const low = high >= 0 ? HexValue(data[i + 2]) : -1;
        if (low < 0) {
            bytes += data[i];
            continue;
        }
        bytes += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return bytes;
}

std::string ProcessHexAndClockData(std::string data, ContextProcessor const& processor) {
    return ExpandHex(std::move(data), processor.at(ZplContextKeys::FieldHexIndicator));
}

}  // namespace ZplCore::FieldDataHelper
