#include <iterator>
#include <memory>

#include "Barcode/Algorithm/MODX.h"
#include "barcodes/linear/Code128Text.h"
#include "frontend/stream/Ascii.h"

namespace ZplCore::Code128::ModeD {

namespace {

using Barcode::Encoder::Code128EncodeMode;
using Barcode::Encoder::Code128Encoder;

/// FNC1 as the encoder takes it; it leads every symbol.
constexpr std::string_view LeadingFnc1 = "\xE6";

/// What people put around identifiers and between groups.
bool IsDecoration(char c) { return c == '(' || c == ')' || c == ' '; }

/// Identifiers of a fixed length whose last digit is a check digit.
struct ApplicationIdentifier {
    std::string_view digits;
    std::size_t length;  ///< of the data behind it, with the check digit
};
constexpr ApplicationIdentifier Identifiers[] = {{"00", 18}, {"01", 14}, {"02", 14}};

/// The same data as a symbol and as a line.
struct Gs1Text {
    std::string symbol;
    std::string line;
};

/// Reads the data of a field from left to right.
class Scanner {
public:
    explicit Scanner(std::string_view data) : data_(data.substr(0, data.find('\0'))) {}

    Gs1Text Run() {
        // An identifier can stand at the start, after FNC1 and after a field of fixed length.
        bool expectsIdentifier = true;
        while (position_ < data_.size()) {
            char const c = data_[position_];
            if (c == '>') {
                if (!ReadEscape()) break;
                expectsIdentifier = true;
            } else if (auto const* identifier = expectsIdentifier ? ReadIdentifier() : nullptr) {
                CopyFixedField(*identifier);
            } else {
                ++position_;
                text_.line += c;
                if (IsDecoration(c)) continue;
                text_.symbol += c;
                expectsIdentifier = false;
            }
        }
        return std::move(text_);
    }

private:
    /// FNC1 is the only escape; at any other the data end. In front it is the one that leads the symbol, and stands
    /// there once.
    bool ReadEscape() {
        if (position_ + 1 >= data_.size() || data_[position_ + 1] != '8') return false;
        position_ += 2;
        if (text_.symbol != LeadingFnc1) text_.symbol += static_cast<char>(Fnc1);
        return true;
    }

    /// Moves past an identifier, with what people put around it, if one is next.
    ApplicationIdentifier const* ReadIdentifier() {
        std::size_t end = position_;
        std::string const digits = PeekDigits(2, end);
        for (auto const& identifier : Identifiers) {
            if (digits != identifier.digits) continue;
            position_ = end;
            return &identifier;
        }
        return nullptr;
    }

    /// Up to `count` digits from here on, past decorations; `end` is set behind the last one. A bracket that opens
    /// behind a digit belongs to the next identifier.
    std::string PeekDigits(std::size_t count, std::size_t& end) const {
        std::string digits;
        for (std::size_t i = position_; i < data_.size() && digits.size() < count; ++i) {
            if (data_[i] == '(' && !digits.empty()) break;
            if (IsDecoration(data_[i])) continue;
            if (!IsAsciiDigit(data_[i])) break;
            digits += data_[i];
            end = i + 1;
        }
        return digits;
    }

    void CopyFixedField(ApplicationIdentifier const& identifier) {
        std::string digits = PeekDigits(identifier.length, position_);
        if (digits.size() + 1 >= identifier.length) {
            digits.resize(identifier.length - 1);
            digits += Barcode::Algorithm::MODX::GenerateUPCCheckDigit(digits);
        }
        text_.symbol.append(identifier.digits).append(digits);
        while (position_ < data_.size() && data_[position_] == ')') ++position_;
        text_.line.append("(").append(identifier.digits).append(")").append(digits);
    }

    std::string_view data_;
    std::size_t position_ = 0;
    Gs1Text text_;
};

}  // namespace

std::string TransformInput(std::string const& data) { return Scanner(data).Run().symbol; }

std::string TransformInterpretationLine(std::string const& data) { return Scanner(data).Run().line; }

Barcode::Encoder::ValidationStatus Validate(std::string const& input) {
    // What leads a symbol is no data of it.
    return Code128Encoder::Validate(input == LeadingFnc1 ? std::string_view() : input, Code128EncodeMode::Gs1);
}

std::unique_ptr<Barcode::Model::LinearBarcodeModel> Encode(std::string const& input) {
    return Code128Encoder::Encode(input, Code128EncodeMode::Gs1);
}

}  // namespace ZplCore::Code128::ModeD
