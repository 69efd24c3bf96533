#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "Scripting/RfidOperation.h"
#include "Scripting/ScriptTextJustification.h"
#include "frontend/context/ContextKey.h"
#include "frontend/context/ContextProcessor.h"
#include "frontend/context/ZplCodePageConverter.h"
#include "frontend/context/ZplValueTypes.h"
#include "frontend/stream/ZplTypes.h"

/// The plain constants from which the defaults of keys and of handler parameters are taken.
namespace ZplContextDefaults {
inline constexpr unsigned BarcodeHeight = 10;      // dots
inline constexpr unsigned BarcodeModuleWidth = 2;  // dots
inline constexpr float BarcodeRatio = 3.0F;        // wide to narrow
inline constexpr unsigned FieldOriginX = 0;        // dots
inline constexpr unsigned FieldOriginY = 0;        // dots
inline constexpr unsigned PrintQuantity = 1;       // labels
inline constexpr std::string_view FontName = "A";
inline constexpr std::string_view CultureId = "en-US";
inline constexpr unsigned FontScaleX = 1;
inline constexpr unsigned FontScaleY = 1;
inline constexpr unsigned TextBlockLines = 1;
inline constexpr unsigned TextBlockWidth = 0;  // dots
inline constexpr int LineSpace = 0;            // dots
inline constexpr auto BlockJustification = Scripting::ScriptTextJustification::Left;
inline constexpr unsigned HangingIndent = 0;  // dots
inline constexpr bool AddLeadingZeros = false;
}  // namespace ZplContextDefaults

/// Everything that a stream can set, one key a value, in order of definition. Sizes and positions are dots of the
/// design resolution.
namespace ZplContextKeys {
extern ContextKey<ClockOffset> const ClockOffset2;
extern ContextKey<ClockOffset> const ClockOffset3;
extern ContextKey<Direction> const TextDirection;
extern ContextKey<Justification> const FieldJustification;
extern ContextKey<ZplOrientation> const FieldOrientation;
extern ContextKey<int> const TextSpacing;
extern ContextKey<char> const FieldHexIndicator;  // 0: none
extern ContextKey<bool> const BarcodeCheckDigit;
extern ContextKey<unsigned> const BarcodeHeight;
extern ContextKey<unsigned> const BarcodeModuleWidth;
extern ContextKey<float> const BarcodeRatio;
extern ContextKey<char> const ClockIndicator1;  // 0: none
extern ContextKey<char> const ClockIndicator2;
extern ContextKey<char> const ClockIndicator3;
extern ContextKey<std::chrono::system_clock::time_point> const TimeAtRender;
extern ContextKey<std::string> const CultureId;
extern ContextKey<struct TimeMode> const TimeMode;
extern ContextKey<unsigned> const PrintQuantity;
extern ContextKey<unsigned> const SerialNumberReplications;
extern ContextKey<unsigned> const GroupCount;
extern ContextKey<bool> const PauseOnCut;
extern ContextKey<bool> const SuppressBackfeed;
extern ContextKey<ZplPrintMode> const PrintMode;
extern ContextKey<bool> const DoNotUseStoredImage;
extern ContextKey<Baseline> const FieldBaseline;
extern ContextKey<unsigned> const NextFieldOriginX;  // may hold a wrapped negative: cast back to int where used
extern ContextKey<unsigned> const NextFieldOriginY;
extern ContextKey<unsigned> const LabelOriginX;
extern ContextKey<unsigned> const LabelOriginY;
extern ContextKey<int> const LabelAdjustY;
extern ContextKey<unsigned> const LabelLength;
extern ContextKey<unsigned> const LabelWidth;
extern ContextKey<bool> const LabelReversePrint;
extern ContextKey<ZplPrintOrientation> const PrintOrientation;
extern ContextKey<bool> const MirrorLabel;
extern ContextKey<unsigned> const FieldOriginX;
extern ContextKey<unsigned> const FieldOriginY;
extern ContextKey<std::string> const FieldData;
extern ContextKey<bool> const FieldVariable;
extern ContextKey<std::variant<ZplCore::BuiltInFont, ZplCore::UserFont>> const FontIdentifier;
extern ContextKey<char> const DefaultFont;
extern ContextKey<unsigned> const FontWidth;
extern ContextKey<unsigned> const FontHeight;
extern ContextKey<double> const FontPointSize;
extern ContextKey<double> const FontCompressionValue;
extern ContextKey<int> const TrueTypeYPosAdjust;
extern ContextKey<ZplCore::UserFont> const UserFont;
// A field that no command gave another function is text, so this key is defined where text is drawn: by `fields/text`.
extern ContextKey<RenderFunction> const FieldRenderFunction;
extern ContextKey<SerializeFunctionType> const SerializeFunction;
extern ContextKey<std::vector<std::shared_ptr<ZplCore::SerializationFieldStringData>>> const
    serializationFieldStringData;
extern ContextKey<std::uint64_t> const SerializeFunctionIndex;
extern ContextKey<unsigned> const TextBlockWidth;
extern ContextKey<unsigned> const TextBlockLineCount;
extern ContextKey<unsigned> const TextBlockIndent;
extern ContextKey<int> const TextBlockLineSpacing;
extern ContextKey<Scripting::ScriptTextJustification> const TextBlockJustification;
extern ContextKey<ZplCodePageConverter> const CodePageConverter;
extern ContextKey<unsigned> const DpiScaleFactor;
extern ContextKey<ZplUnitOfMeasure> const UnitOfMeasure;
extern ContextKey<std::string> const SavedFormatPath;
extern ContextKey<std::string> const RecallFormatPath;
extern ContextKey<std::map<unsigned, ContextProcessor>> const SavedContexts;
extern ContextKey<unsigned> const FieldNumberToSave;
extern ContextKey<bool> const CancelCurrentFormat;
extern ContextKey<unsigned> const FormatScale;
extern ContextKey<bool> const EnableBarcodeValidation;
extern ContextKey<int> const MediaDarknessOffset;
extern ContextKey<std::map<char, std::string>> const FontSubstitute;
extern ContextKey<std::vector<std::string>> const TrueTypeFonts;
extern ContextKey<ISMetaData> const ImageSave;
extern ContextKey<bool> const PauseAfterJob;
extern ContextKey<std::vector<RfidOperation>> const RfidOperations;
extern ContextKey<unsigned> const RfidAccessPassword;
extern ContextKey<std::vector<RfidReadResponse>> const RfidReadResponses;
extern ContextKey<std::vector<std::uint8_t>> const EpcPartitionSizes;
extern ContextKey<ResponseCallback> const ReturnRfidLogCallback;
extern ContextKey<ResponseCallback> const ReportRfidEncodingCallback;
extern ContextKey<std::vector<ResponseCallback>> const HostVerificationFormatCallbacks;
extern ContextKey<std::vector<ResponseCallback>> const HostVerificationLabelCallbacks;
extern ContextKey<std::map<unsigned, std::string>> const FieldNumberValues;
extern ContextKey<unsigned> const HandlerSequenceNumber;
// The keys from here on are this program's own, beyond those of the language's state.
extern ContextKey<std::chrono::system_clock::duration> const ClockAdjustment;  // what a stream has moved its clock by
// Shared by all copies of the state of a format; null while the format is still being received.
extern ContextKey<std::shared_ptr<struct FormatMemory>> const FormatMemory;
// Darkness from 0 to 30 that a stream has set in place of the printer's own.
extern ContextKey<std::optional<int>> const MediaDarkness;
extern ContextKey<std::string> const PrinterName;
// Whether the field is whole without its end: the next field's origin ends it.
extern ContextKey<bool> const EndsAtNextOrigin;
// How the tag encoder is to work, by the names of its arguments.
extern ContextKey<std::vector<std::pair<std::string, std::string>>> const RfidSetUp;
// Templates of a number that has one already, by number and by the place of their command in the label; and that place
// in each template.
extern ContextKey<std::map<std::pair<unsigned, unsigned>, ContextProcessor>> const FurtherTemplates;
extern ContextKey<unsigned> const TemplateSequence;
// How often the stream has brought the printer back to its state after power-on.
extern ContextKey<unsigned> const PowerOnCount;
// Whether the data of the field fill the templates of its number.
extern ContextKey<bool> const FillsTemplates;
// Whether the field's function draws a barcode.
extern ContextKey<bool> const IsBarcode;
}  // namespace ZplContextKeys
