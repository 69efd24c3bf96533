#include "barcodes/linear/LinearBarcodeHandlers.h"

#include "Barcode/Encoder/LinearEncoders.h"
#include "barcodes/frame/BarcodeArithmetic.h"
#include "barcodes/frame/BarcodeParameters.h"
#include "barcodes/frame/LinearFrame.h"
#include "barcodes/linear/Code39Text.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"

namespace {

using namespace Barcode::Encoder;
using namespace ZplCore;

constexpr std::string_view Digits = "0123456789";

/// Tells of what a symbology has beside bars and a line.
using DescribeMore = std::function<void(FieldNotes&)>;

/// What a symbology adds to the frame.
struct LinearSymbology {
    std::string_view name;
    BarcodeValidate validate;
    LinearEncode encode;
    InterpretationText line;
    BarcodeTransform inputTransform;    ///< of the data before they are checked; empty if they stay as sent
    BarcodeTransform invalidTransform;  ///< repairs what the check refuses
    bool isFixed = false;               ///< wide elements are two narrow ones, whatever the ratio
    DescribeMore describe = {};
};

/// The parameters from the height on: height, line, line above.
bool StoreLinear(Context& current, ZplCommand const& command, ContextProcessor& processor, std::size_t height,
                 LinearSymbology symbology) {
    StoreBarcodeOrientation(current, command, processor);
    StoreBarcodeHeight(current, command, height, processor);
    bool const printLine = ParseFlag(command, height + 1, true);
    bool const lineAbove = ParseFlag(command, height + 2, false);
    auto const& makeRender = symbology.isFixed ? FixedLinearBarcodeRenderFunction : LinearBarcodeRenderFunction;
    return StoreBarcodeRender(current, processor,
                              makeRender(printLine, lineAbove, std::move(symbology.validate),
                                         std::move(symbology.encode), std::move(symbology.line),
                                         std::move(symbology.inputTransform), std::move(symbology.invalidTransform)),
                              symbology.name,
                              [=, usesRatio = !symbology.isFixed, describe = std::move(symbology.describe)](
                                  ContextProcessor const& at, FieldNotes& notes) {
                                  DescribeBars(at, notes, printLine, lineAbove, usesRatio);
                                  if (describe) describe(notes);
                              });
}

/// The data, transformed, and the check digits behind them if wanted.
InterpretationText Line(bool withCheckDigits, BarcodeTransform transform) {
    return [=](std::string const& data, std::string const& check) {
        return transform(data) + (withCheckDigits ? check : "");
    };
}

LinearSymbology Code39Symbology(bool withCheckDigit) {
    return {"Code 39",
            Code39Encoder::Validate,
            [=](std::string const& text) { return Code39Encoder::Encode(text, withCheckDigit); },
            AddGuardsAndAppendCheckDigit(withCheckDigit, '*', '*', ZplCore::Code39::TransformInvalidInput),
            ConvertToUpper,
            ZplCore::Code39::TransformInvalidInput,
            false,
            [=](FieldNotes& notes) { notes.Add("check digit", withCheckDigit); }};
}

/// Codabar's guards are also known by other letters.
char CodabarGuard(ZplCommand const& command, std::size_t index) {
    switch (ParseLetter(command, index, 'A')) {
        case 'B':
        case 'N': return 'B';
        case 'C':
        case '*': return 'C';
        case 'D':
        case 'E': return 'D';
        default: return 'A';
    }
}

std::string_view NameOf(MSICheckDigit checkDigits) {
    switch (checkDigits) {
        case MSICheckDigit::None: return "none";
        case MSICheckDigit::TwoMod10: return "two modulo 10";
        case MSICheckDigit::Mod11Mod10: return "modulo 11 and modulo 10";
        default: return "modulo 10";
    }
}

// Symbologies of one row of bars. h is the height, f whether the interpretation line is printed, g whether it stands
// above the bars, e a check digit.

/// `^B1`: Code 11. Y for one check digit or N for two, h, f, g.
class Code11BarcodeHandler : public HandlerFor<CommandId("B1")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        unsigned const checkDigits = ParseFlag(command, 1, false) ? 1 : 2;
        auto const repair = KeepCharacters("0123456789-");
        return StoreLinear(current, command, processor, 2,
                           {"Code 11",
                            Code11Encoder::Validate,
                            [=](std::string const& text) { return Code11Encoder::Encode(text, checkDigits); },
                            Line(false, repair),
                            {},
                            repair,
                            false,
                            [=](FieldNotes& notes) { notes.Add("check digits", checkDigits); }});
    }
};

/// `^B2`: Interleaved 2 of 5. h, f, g, e.
class Interleaved2of5BarcodeHandler : public HandlerFor<CommandId("B2")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        bool const withCheckDigit = ParseFlag(command, 4, false);
        auto const repair = KeepCharacters(Digits);
        // People read the zero that makes the count even.
        auto const even = [=](std::string const& data) {
            std::string digits = repair(data);
            if ((digits.size() + (withCheckDigit ? 1 : 0)) % 2 != 0) digits.insert(digits.begin(), '0');
            return digits;
        };
        return StoreLinear(
            current, command, processor, 1,
            {"Interleaved 2 of 5",
             Interleaved2of5Encoder::Validate,
             [=](std::string const& text) { return Interleaved2of5Encoder::Encode(text, withCheckDigit); },
             Line(withCheckDigit, even),
             {},
             repair,
             false,
             [=](FieldNotes& notes) { notes.Add("check digit", withCheckDigit); }});
    }
};

/// `^B3`: Code 39. e, h, f, g.
class Code39BarcodeHandler : public HandlerFor<CommandId("B3")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        return StoreLinear(current, command, processor, 2, Code39Symbology(ParseFlag(command, 1, false)));
    }
};

/// `^BA`: Code 93. h, f, g, whether the check digits are printed.
class Code93BarcodeHandler : public HandlerFor<CommandId("BA")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        auto const repair = KeepCharacters("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%&'()");
        auto const line = [=](std::string const& data) { return repair(ConvertToUpper(data)); };
        return StoreLinear(current, command, processor, 1,
                           {"Code 93", Code93Encoder::Validate, Code93Encoder::Encode,
                            Line(ParseFlag(command, 4, false), line), ConvertToUpper, repair, true});
    }
};

/// `^BI`: Industrial 2 of 5. h, f, g.
class Industrial2of5BarcodeHandler : public HandlerFor<CommandId("BI")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        auto const repair = KeepCharacters(Digits);
        return StoreLinear(current, command, processor, 1,
                           {"Industrial 2 of 5",
                            Industrial2of5Encoder::Validate,
                            Industrial2of5Encoder::Encode,
                            Line(false, repair),
                            {},
                            repair});
    }
};

/// `^BJ`: Standard 2 of 5. h, f, g.
class Standard2of5BarcodeHandler : public HandlerFor<CommandId("BJ")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        auto const repair = KeepCharacters(Digits);
        return StoreLinear(current, command, processor, 1,
                           {"Standard 2 of 5",
                            Standard2of5Encoder::Validate,
                            Standard2of5Encoder::Encode,
                            Line(false, repair),
                            {},
                            repair});
    }
};

/// `^BK`: Codabar. A check digit that is never made, h, f, g, start letter, stop letter.
class AnsiCodabarBarcodeHandler : public HandlerFor<CommandId("BK")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        char const start = CodabarGuard(command, 5);
        char const stop = CodabarGuard(command, 6);
        auto const repair = KeepCharacters("0123456789-$:/.+");
        return StoreLinear(current, command, processor, 2,
                           {"Codabar",
                            CodabarEncoder::Validate,
                            [=](std::string const& text) { return CodabarEncoder::Encode(text, start, stop); },
                            AddGuardsAndAppendCheckDigit(false, start, stop, repair),
                            {},
                            repair,
                            false,
                            [=](FieldNotes& notes) { notes.Add("start", start).Add("stop", stop); }});
    }
};

/// `^BL`: LOGMARS, a Code 39 that always has its check digit. h, g.
class LogmarsBarcodeHandler : public HandlerFor<CommandId("BL")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        StoreBarcodeOrientation(current, command, processor);
        StoreBarcodeHeight(current, command, 1, processor);
        bool const lineAbove = ParseFlag(command, 2, false);
        auto symbology = Code39Symbology(true);
        return StoreBarcodeRender(
            current, processor,
            LinearBarcodeRenderFunction(true, lineAbove, symbology.validate, symbology.encode, symbology.line,
                                        symbology.inputTransform, symbology.invalidTransform),
            "LOGMARS", [lineAbove](ContextProcessor const& at, FieldNotes& notes) {
                DescribeBars(at, notes, true, lineAbove, true);
            });
    }
};

/// `^BM`: MSI. Check digits A to D, h, f, g, whether the check digits are printed.
class MsiBarcodeHandler : public HandlerFor<CommandId("BM")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        auto checkDigits = MSICheckDigit::Mod10;
        switch (ParseLetter(command, 1, 'B')) {
            case 'A': checkDigits = MSICheckDigit::None; break;
            case 'C': checkDigits = MSICheckDigit::TwoMod10; break;
            case 'D': checkDigits = MSICheckDigit::Mod11Mod10; break;
            default: break;
        }
        // The repair keeps as many digits as the symbol holds.
        auto const repair = [=](std::string const& data) {
            return KeepCharacters(Digits)(data).substr(0, checkDigits == MSICheckDigit::None ? 14 : 13);
        };
        return StoreLinear(current, command, processor, 2,
                           {"MSI",
                            [=](std::string const& text) { return MSIEncoder::Validate(text, checkDigits); },
                            [=](std::string const& text) { return MSIEncoder::Encode(text, checkDigits); },
                            Line(ParseFlag(command, 5, false), repair),
                            {},
                            repair,
                            false,
                            [=](FieldNotes& notes) { notes.Add("check digits", NameOf(checkDigits)); }});
    }
};

/// `^BP`: Plessey. Whether the check digits are printed, h, f, g.
class PlesseyBarcodeHandler : public HandlerFor<CommandId("BP")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        auto const repair = KeepCharacters("0123456789ABCDEF");
        auto const line = [=](std::string const& data) { return repair(ConvertToUpper(data)); };
        return StoreLinear(current, command, processor, 2,
                           {"Plessey", PlesseyEncoder::Validate, PlesseyEncoder::Encode,
                            Line(ParseFlag(command, 1, false), line), ConvertToUpper, repair});
    }
};

}  // namespace

void AddLinearBarcodeHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<Code11BarcodeHandler>();
    pool.AddToCache<Interleaved2of5BarcodeHandler>();
    pool.AddToCache<Code39BarcodeHandler>();
    pool.AddToCache<Code93BarcodeHandler>();
    pool.AddToCache<Industrial2of5BarcodeHandler>();
    pool.AddToCache<Standard2of5BarcodeHandler>();
    pool.AddToCache<AnsiCodabarBarcodeHandler>();
    pool.AddToCache<LogmarsBarcodeHandler>();
    pool.AddToCache<MsiBarcodeHandler>();
    pool.AddToCache<PlesseyBarcodeHandler>();
}
