#include <cxxabi.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include "foundation/Files.h"
#include "frontend/processor/CreateHandlers.h"

namespace {

using enum SyntacticType;
using enum ProcessingType;

struct Row {
    std::string_view letters;
    std::string_view handler;
    SyntacticType prefix;
    ProcessingType timing;
    bool alsoRecorded;
    bool tagFeature;
};

// Every command with a class of its own. The fonts and the second spelling of BO follow by rule.
// clang-format off
constexpr auto CommandTable = std::to_array<Row>({
    {"B1", "Code11BarcodeHandler", Format, Deferred, false, false},
    {"B2", "Interleaved2of5BarcodeHandler", Format, Deferred, false, false},
    {"B3", "Code39BarcodeHandler", Format, Deferred, false, false},
    {"B4", "Code49BarcodeHandler", Format, Deferred, false, false},
    {"B5", "PlanetCodeBarcodeHandler", Format, Deferred, false, false},
    {"B7", "Pdf417BarcodeHandler", Format, Deferred, false, false},
    {"B8", "Ean8BarcodeHandler", Format, Deferred, false, false},
    {"B9", "UpcEBarcodeHandler", Format, Deferred, false, false},
    {"BA", "Code93BarcodeHandler", Format, Deferred, false, false},
    {"BB", "CodaBlockBarcodeHandler", Format, Deferred, false, false},
    {"BC", "Code128BarcodeHandler", Format, Deferred, false, false},
    {"BD", "MaxicodeBarcodeHandler", Format, Deferred, false, false},
    {"BE", "Ean13BarcodeHandler", Format, Deferred, false, false},
    {"BF", "MicroPdfBarcodeHandler", Format, Deferred, false, false},
    {"BI", "Industrial2of5BarcodeHandler", Format, Deferred, false, false},
    {"BJ", "Standard2of5BarcodeHandler", Format, Deferred, false, false},
    {"BK", "AnsiCodabarBarcodeHandler", Format, Deferred, false, false},
    {"BL", "LogmarsBarcodeHandler", Format, Deferred, false, false},
    {"BM", "MsiBarcodeHandler", Format, Deferred, false, false},
    {"BO", "AztecBarcodeHandler", Format, Deferred, false, false},
    {"BP", "PlesseyBarcodeHandler", Format, Deferred, false, false},
    {"BQ", "QrCodeBarcodeHandler", Format, Deferred, false, false},
    {"BR", "Gs1DatabarBarcodeHandler", Format, Deferred, false, false},
    {"BS", "UpcEanExtensionsBarcodeHandler", Format, Deferred, false, false},
    {"BT", "Tlc39BarcodeHandler", Format, Deferred, false, false},
    {"BU", "UpcABarcodeHandler", Format, Deferred, false, false},
    {"BX", "DataMatrixBarcodeHandler", Format, Deferred, false, false},
    {"BY", "BarcodeFieldDefaultHandler", Format, Deferred, false, false},
    {"BZ", "PostalBarcodeHandler", Format, Deferred, false, false},
    {"CC", "ChangeCaretHandler", Either, Immediate, false, false},
    {"CD", "ChangeDelimiterHandler", Either, Immediate, false, false},
    {"CF", "ChangeDefaultFontHandler", Format, Deferred, false, false},
    {"CI", "ChangeInternationalFontHandler", Format, Deferred, false, false},
    {"CT", "ChangeTildeHandler", Either, Immediate, false, false},
    {"CV", "BarcodeValidationHandler", Format, Deferred, false, false},
    {"CW", "FontIdentifierHandler", Format, Deferred, false, false},
    {"DF", "SaveFormatHandler", Format, Immediate, false, false},
    {"DG", "DownloadGraphicsHandler", Control, Immediate, false, false},
    {"FB", "FieldBlockHandler", Format, Deferred, false, false},
    {"FC", "FieldClockHandler", Format, Deferred, false, false},
    {"FD", "FieldDataHandler", Format, Deferred, false, false},
    {"FH", "FieldHexadecimalIndicatorHandler", Format, Deferred, false, false},
    {"FN", "FieldNumberHandler", Format, Deferred, false, false},
    {"FO", "FieldOriginHandler", Format, Deferred, false, false},
    {"FP", "FieldParameterHandler", Format, Deferred, false, false},
    {"FR", "FieldReversePrintHandler", Format, Deferred, false, false},
    {"FS", "FieldSeparatorHandler", Format, Deferred, false, false},
    {"FT", "FieldTypesetHandler", Format, Deferred, false, false},
    {"FV", "FieldVariableHandler", Format, Deferred, false, false},
    {"FW", "FieldOrientationHandler", Format, Deferred, false, false},
    {"FX", "FieldCommentHandler", Format, Deferred, false, false},
    {"GB", "GraphicBoxHandler", Format, Deferred, false, false},
    {"GC", "GraphicCircleHandler", Format, Deferred, false, false},
    {"GD", "GraphicDiagonalLineHandler", Format, Deferred, false, false},
    {"GE", "GraphicEllipseHandler", Format, Deferred, false, false},
    {"GF", "GraphicFieldHandler", Format, Deferred, false, false},
    {"GS", "GraphicSymbolHandler", Format, Deferred, false, false},
    {"HL", "ReturnRfidDataLogHandler", Either, Immediate, false, true},
    {"HS", "HostStatusHandler", Control, Immediate, false, false},
    {"HV", "HostVerificationHandler", Format, Deferred, false, false},
    {"HY", "UploadGraphicsHandler", Format, Deferred, false, false},
    {"IS", "ImageSaveHandler", Format, Deferred, false, false},
    {"JA", "CancelAllHandler", Control, Immediate, false, false},
    {"JM", "SetDotsPerMillimeterHandler", Format, Deferred, false, false},
    {"JR", "PowerOnResetHandler", Control, Immediate, false, false},
    {"JX", "CancelPartialFormatHandler", Control, Immediate, false, false},
    {"JZ", "ReprintAfterErrorHandler", Format, Deferred, false, false},
    {"KD", "SelectDateTimeFormatHandler", Format, Deferred, false, false},
    {"KL", "DefineLanguageHandler", Format, Deferred, false, false},
    {"KN", "DefinePrinterNameHandler", Format, Deferred, false, false},
    {"LH", "LabelHomeHandler", Format, Deferred, false, false},
    {"LL", "LabelLengthHandler", Format, Deferred, false, false},
    {"LR", "LabelReversePrintHandler", Format, Deferred, false, false},
    {"LT", "LabelTopHandler", Format, Deferred, false, false},
    {"MC", "MapClearHandler", Format, Deferred, false, false},
    {"MD", "MediaDarknessHandler", Format, Deferred, false, false},
    {"MM", "PrintModeHandler", Format, Deferred, false, false},
    {"MT", "MediaTypeHandler", Format, Deferred, false, false},
    {"MU", "SetUnitsOfMeasurementHandler", Format, Deferred, false, false},
    {"PM", "PrintMirrorImageLabelHandler", Format, Deferred, false, false},
    {"PO", "PrintOrientationHandler", Format, Deferred, false, false},
    {"PP", "ProgrammablePauseHandler", Either, Immediate, false, false},
    {"PQ", "PrintQuantityHandler", Format, Immediate, true, false},
    {"PR", "PrintRateApplicatorReprintHandler", Either, ImmediateIfControl, false, false},
    {"PS", "PrintStartHandler", Control, Immediate, false, false},
    {"PW", "PrintWidthHandler", Format, Deferred, false, false},
    {"RA", "ReadAfiHandler", Format, Deferred, false, true},
    {"RB", "DefineEpcHandler", Format, Deferred, false, true},
    {"RF", "ReadWriteRFIDHandler", Format, Deferred, false, true},
    {"RI", "GetRfidTidHandler", Format, Deferred, false, true},
    {"RL", "LockUnlockRfidHandler", Format, Deferred, false, true},
    {"RS", "SetupRfidParametersHandler", Format, Deferred, false, true},
    {"RV", "ReportRfidEncodingHandler", Control, Immediate, false, true},
    {"RW", "SetRfPowerHandler", Format, Deferred, false, true},
    {"RZ", "SetRfidPasswordHandler", Format, Deferred, false, true},
    {"SD", "SetDarknessHandler", Control, Immediate, false, false},
    {"SF", "SerializationFieldHandler", Format, Deferred, false, false},
    {"SL", "SetModeAndLanguageHandler", Format, Deferred, false, false},
    {"SN", "SerializationDataHandler", Format, Deferred, false, false},
    {"SO", "SetOffsetHandler", Format, Deferred, false, false},
    {"SP", "StartPrintHandler", Format, Deferred, false, false},
    {"ST", "SetDateAndTimeHandler", Format, Deferred, false, false},
    {"TA", "TearOffAdjustPositionHandler", Control, Deferred, false, false},
    {"TB", "TextBlocksHandler", Format, Deferred, false, false},
    {"WC", "PrintConfigurationLabelHandler", Control, Immediate, false, false},
    {"WF", "EncodeAfiByteHandler", Format, Deferred, false, true},
    {"WL", "PrintNetworkConfigurationHandler", Control, Immediate, false, false},
    {"XA", "StartFormatHandler", Format, Immediate, false, false},
    {"XB", "SuppressBackfeedHandler", Format, Deferred, false, false},
    {"XF", "RecallFormatHandler", Format, Immediate, false, false},
    {"XZ", "EndFormatHandler", Format, Immediate, false, false},
    {"XG", "RecallGraphicHandler", Format, Deferred, false, false},
    {"IM", "RecallGraphicHandler", Format, Deferred, false, false},
    {"A@", "UserFontHandler", Format, Deferred, false, false},
});
// clang-format on

std::string ClassName(CommandHandler const& handler) {
    int status = 0;
    std::unique_ptr<char, void (*)(void*)> const name(
        abi::__cxa_demangle(typeid(handler).name(), nullptr, nullptr, &status), std::free);
    std::string const full = name.get();
    auto const scope = full.rfind("::");
    return scope == std::string::npos ? full : full.substr(scope + 2);
}

TEST(CommandTable, HoldsEveryRowWithItsClassPrefixAndTiming) {
    CommandHandlerPool const pool = CreateHandlers(true, false);
    for (auto const& row : CommandTable) {
        SCOPED_TRACE(row.letters);
        CommandHandler const* const handler = pool.GetCommandHandler(row.letters);
        ASSERT_NE(handler, nullptr);
        EXPECT_EQ(handler->GetCommandId(), CommandId(row.letters));
        EXPECT_EQ(ClassName(*handler), row.handler);
        EXPECT_EQ(handler->GetSyntacticType(), row.prefix);
        EXPECT_EQ(handler->GetProcessingType(), row.timing);
        EXPECT_EQ(handler->IsAdditonalSaveType(), row.alsoRecorded);
    }
}

TEST(CommandTable, HoldsNothingElse) {
    std::set<std::uint64_t> expected;
    for (auto const& row : CommandTable) expected.insert(CommandId(row.letters));
    for (char const font : std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789@"))
        expected.insert(0x4100U + static_cast<unsigned char>(font));
    expected.insert(CommandId("B0"));
    std::set<std::uint64_t> found;
    for (auto const& [id, handler] : CreateHandlers(true, false)) found.insert(id);
    EXPECT_EQ(found, expected);
}

TEST(CommandTable, KnowsTagCommandsOnlyWithTheirFeature) {
    CommandHandlerPool const pool = CreateHandlers(false, false);
    for (auto const& row : CommandTable) {
        EXPECT_EQ(pool.GetCommandHandler(row.letters) == nullptr, row.tagFeature) << row.letters;
    }
}

TEST(CommandTable, SelectsThePrintQuantityThatNeverPauses) {
    EXPECT_EQ(ClassName(*CreateHandlers(false, true).GetCommandHandler("PQ")), "PrintQuantityNoPausingHandler");
}

TEST(CommandTable, GivesFontsTimesAndSpellingsByRule) {
    CommandHandlerPool const pool = CreateHandlers(false, false);
    EXPECT_EQ(ClassName(*pool.GetCommandHandler("A0")), "FontHandler");
    EXPECT_EQ(ClassName(*pool.GetCommandHandler("AZ")), "FontHandler");
    EXPECT_EQ(ClassName(*pool.GetCommandHandler("A@")), "UserFontHandler");
    EXPECT_EQ(pool.GetCommandHandler("B0")->GetCommandId(), 16944U);
    EXPECT_EQ(pool.GetCommandHandler(22593), pool.GetCommandHandler("XA"));
    for (std::string_view const letters : {"", "X", "XAB", "A!", "ZZ"})
        EXPECT_EQ(pool.GetCommandHandler(letters), nullptr) << letters;
}

/// The commands named by the first cell of a row of the page, with their prefixes; a dash between two stands for all
/// from the one to the other.
std::vector<std::string> CommandsOf(std::string const& row) {
    std::string const cell = row.substr(0, row.find('|', 1));
    std::vector<std::string> commands;
    for (auto at = cell.find('`'); at != cell.npos; at = cell.find('`', at + 5)) {
        std::string name = cell.substr(at + 1, 3);
        if (at > 0 && cell[at - 1] == '-') {
            std::string next = commands.back();
            while (next < name) commands.push_back((++next.back(), next));
        } else {
            commands.push_back(name);
        }
    }
    return commands;
}

TEST(CommandTable, IsDocumentedInOneRowForEachCommandAndNoOther) {
    CommandHandlerPool const pool = CreateHandlers(true, false);
    CommandHandlerPool const withoutTags = CreateHandlers(false, false);
    std::map<std::string, int> rows;
    std::istringstream page(ReadRegularFile("docs/commands.md"));
    for (std::string line; std::getline(page, line);) {
        if (!line.starts_with("| `")) continue;
        bool const isNow = line.substr(0, line.find('|', 1)).find("*now*") != line.npos;
        std::string const state = line.substr(line.rfind('|', line.size() - 2) + 2);
        EXPECT_TRUE(state.starts_with("done") || state.starts_with("first: ") || state.starts_with("kept: ") ||
                    state.starts_with("none: "))
            << line;
        for (auto const& name : CommandsOf(line)) {
            ++rows[name];
            auto const* handler = pool.GetCommandHandler(name.substr(1));
            ASSERT_TRUE(handler) << line;
            bool const isTag = !withoutTags.GetCommandHandler(name.substr(1));
            EXPECT_TRUE(isTag || isNow == (handler->GetProcessingType() == Immediate)) << line;
        }
    }
    std::map<std::string, int> expected;
    for (auto const& [id, handler] : pool) {
        std::string const letters{static_cast<char>(id >> 8), static_cast<char>(id & 0xFF)};
        if (handler->GetSyntacticType() != Control) ++expected['^' + letters];
        if (handler->GetSyntacticType() != Format) ++expected['~' + letters];
    }
    EXPECT_EQ(rows, expected);
}

}  // namespace
