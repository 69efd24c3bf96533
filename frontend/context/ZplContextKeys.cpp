#include "frontend/context/ZplContextKeys.h"

// Draws what the element context holds as a text field. Declared here and defined by the fields, so that the keys need
// not know what draws.
namespace ZplCore::Sketching {
void RenderTextElement(ContextProcessor& processor);
}

namespace ZplContextKeys {
ContextKey<ClockOffset> const ClockOffset2;
ContextKey<ClockOffset> const ClockOffset3;
ContextKey<Direction> const TextDirection;
ContextKey<Justification> const FieldJustification;
ContextKey<ZplOrientation> const FieldOrientation;
ContextKey<int> const TextSpacing;
ContextKey<char> const FieldHexIndicator;
ContextKey<bool> const BarcodeCheckDigit;
ContextKey<unsigned> const BarcodeHeight(ZplContextDefaults::BarcodeHeight);
ContextKey<unsigned> const BarcodeModuleWidth(ZplContextDefaults::BarcodeModuleWidth);
ContextKey<float> const BarcodeRatio(ZplContextDefaults::BarcodeRatio);
ContextKey<char> const ClockIndicator1;
ContextKey<char> const ClockIndicator2;
ContextKey<char> const ClockIndicator3;
ContextKey<std::chrono::system_clock::time_point> const TimeAtRender;
ContextKey<std::string> const CultureId(std::string{ZplContextDefaults::CultureId});
ContextKey<struct TimeMode> const TimeMode;
ContextKey<unsigned> const PrintQuantity(ZplContextDefaults::PrintQuantity);
ContextKey<unsigned> const SerialNumberReplications;
ContextKey<unsigned> const GroupCount;
ContextKey<bool> const PauseOnCut(true);
ContextKey<bool> const SuppressBackfeed;
ContextKey<ZplPrintMode> const PrintMode(ZplPrintMode::Cutter);
ContextKey<bool> const DoNotUseStoredImage(true);
ContextKey<Baseline> const FieldBaseline;
ContextKey<unsigned> const NextFieldOriginX;
ContextKey<unsigned> const NextFieldOriginY;
ContextKey<unsigned> const LabelOriginX;
ContextKey<unsigned> const LabelOriginY;
ContextKey<int> const LabelAdjustY;
ContextKey<unsigned> const LabelLength;
ContextKey<unsigned> const LabelWidth;
ContextKey<bool> const LabelReversePrint;
ContextKey<ZplPrintOrientation> const PrintOrientation;
ContextKey<bool> const MirrorLabel;
ContextKey<unsigned> const FieldOriginX;
ContextKey<unsigned> const FieldOriginY;
ContextKey<std::string> const FieldData;
ContextKey<bool> const FieldVariable;
ContextKey<std::variant<ZplCore::BuiltInFont, ZplCore::UserFont>> const FontIdentifier;
ContextKey<char> const DefaultFont('A');
ContextKey<unsigned> const FontWidth;
ContextKey<unsigned> const FontHeight;
ContextKey<double> const FontPointSize;
ContextKey<double> const FontCompressionValue;
ContextKey<int> const TrueTypeYPosAdjust;
ContextKey<ZplCore::UserFont> const UserFont;
ContextKey<RenderFunction> const FieldRenderFunction(ZplCore::Sketching::RenderTextElement);
ContextKey<SerializeFunctionType> const SerializeFunction;
ContextKey<std::vector<std::shared_ptr<ZplCore::SerializationFieldStringData>>> const serializationFieldStringData;
ContextKey<std::uint64_t> const SerializeFunctionIndex;
ContextKey<unsigned> const TextBlockWidth;
ContextKey<unsigned> const TextBlockLineCount;
ContextKey<unsigned> const TextBlockIndent;
ContextKey<int> const TextBlockLineSpacing;
ContextKey<Scripting::ScriptTextJustification> const TextBlockJustification;
ContextKey<ZplCodePageConverter> const CodePageConverter;
ContextKey<unsigned> const DpiScaleFactor(1U);
ContextKey<ZplUnitOfMeasure> const UnitOfMeasure;
ContextKey<std::string> const SavedFormatPath;
ContextKey<std::string> const RecallFormatPath;
ContextKey<std::map<unsigned, ContextProcessor>> const SavedContexts;
ContextKey<unsigned> const FieldNumberToSave;
ContextKey<bool> const CancelCurrentFormat;
ContextKey<unsigned> const FormatScale(1U);
ContextKey<bool> const EnableBarcodeValidation;
ContextKey<int> const MediaDarknessOffset;
ContextKey<std::map<char, std::string>> const FontSubstitute(std::map<char, std::string>{{'C', "D"}});
ContextKey<std::vector<std::string>> const TrueTypeFonts;
ContextKey<ISMetaData> const ImageSave;
ContextKey<bool> const PauseAfterJob;
ContextKey<std::vector<RfidOperation>> const RfidOperations;
ContextKey<unsigned> const RfidAccessPassword;
ContextKey<std::vector<RfidReadResponse>> const RfidReadResponses;
ContextKey<std::vector<std::uint8_t>> const EpcPartitionSizes(std::vector<std::uint8_t>{64, 32});
ContextKey<ResponseCallback> const ReturnRfidLogCallback;
ContextKey<ResponseCallback> const ReportRfidEncodingCallback;
ContextKey<std::vector<ResponseCallback>> const HostVerificationFormatCallbacks;
ContextKey<std::vector<ResponseCallback>> const HostVerificationLabelCallbacks;
ContextKey<std::map<unsigned, std::string>> const FieldNumberValues;
ContextKey<unsigned> const HandlerSequenceNumber;
ContextKey<std::chrono::system_clock::duration> const ClockAdjustment(std::chrono::system_clock::duration::zero());
ContextKey<std::shared_ptr<struct FormatMemory>> const FormatMemory;
ContextKey<std::optional<int>> const MediaDarkness;
ContextKey<std::string> const PrinterName;
ContextKey<bool> const EndsAtNextOrigin;
ContextKey<std::vector<std::pair<std::string, std::string>>> const RfidSetUp;
ContextKey<std::map<std::pair<unsigned, unsigned>, ContextProcessor>> const FurtherTemplates;
ContextKey<unsigned> const TemplateSequence;
}  // namespace ZplContextKeys
