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

// Type, name and default, if it is another than that of the type. ZplContextKeys.cpp makes definitions of the list;
// everywhere else it declares the keys, so that no other file makes their values.
#ifndef ZPL_KEY
#define ZPL_KEY(Type, Name, ...) extern ContextKey<Type> const Name
#endif

/// Everything that a stream can set, one key a value, in order of definition. Sizes and positions are dots of the
/// design resolution.
namespace ZplContextKeys {

using FontChoice = std::variant<ZplCore::BuiltInFont, ZplCore::UserFont>;
using FontsByLetter = std::map<char, std::string>;
using DataByNumber = std::map<unsigned, std::string>;
using Templates = std::map<unsigned, ContextProcessor>;
using TemplatesByPlace = std::map<std::pair<unsigned, unsigned>, ContextProcessor>;
using NamedArguments = std::vector<std::pair<std::string, std::string>>;

ZPL_KEY(ClockOffset, ClockOffset2);
ZPL_KEY(ClockOffset, ClockOffset3);
ZPL_KEY(Direction, TextDirection);
ZPL_KEY(Justification, FieldJustification);
ZPL_KEY(ZplOrientation, FieldOrientation);
ZPL_KEY(int, TextSpacing);
ZPL_KEY(char, FieldHexIndicator);  // 0: none
ZPL_KEY(bool, BarcodeCheckDigit);
ZPL_KEY(unsigned, BarcodeHeight, ZplContextDefaults::BarcodeHeight);
ZPL_KEY(unsigned, BarcodeModuleWidth, ZplContextDefaults::BarcodeModuleWidth);
ZPL_KEY(float, BarcodeRatio, ZplContextDefaults::BarcodeRatio);
ZPL_KEY(char, ClockIndicator1);  // 0: none
ZPL_KEY(char, ClockIndicator2);
ZPL_KEY(char, ClockIndicator3);
ZPL_KEY(std::chrono::system_clock::time_point, TimeAtRender);
ZPL_KEY(std::string, CultureId, std::string{ZplContextDefaults::CultureId});
ZPL_KEY(ClockMode, TimeMode);
ZPL_KEY(unsigned, PrintQuantity, ZplContextDefaults::PrintQuantity);
ZPL_KEY(unsigned, SerialNumberReplications);
ZPL_KEY(unsigned, GroupCount);
ZPL_KEY(bool, PauseOnCut, true);
ZPL_KEY(bool, SuppressBackfeed);
ZPL_KEY(ZplPrintMode, PrintMode, ZplPrintMode::Cutter);
ZPL_KEY(bool, DoNotUseStoredImage, true);
ZPL_KEY(Baseline, FieldBaseline);
ZPL_KEY(unsigned, NextFieldOriginX);  // may hold a wrapped negative: cast back to int where used
ZPL_KEY(unsigned, NextFieldOriginY);
ZPL_KEY(unsigned, LabelOriginX);
ZPL_KEY(unsigned, LabelOriginY);
ZPL_KEY(int, LabelAdjustY);
ZPL_KEY(unsigned, LabelLength);
ZPL_KEY(unsigned, LabelWidth);
ZPL_KEY(bool, LabelReversePrint);
ZPL_KEY(ZplPrintOrientation, PrintOrientation);
ZPL_KEY(bool, MirrorLabel);
ZPL_KEY(unsigned, FieldOriginX);
ZPL_KEY(unsigned, FieldOriginY);
ZPL_KEY(std::string, FieldData);
ZPL_KEY(bool, FieldVariable);
ZPL_KEY(FontChoice, FontIdentifier);
ZPL_KEY(char, DefaultFont, 'A');
ZPL_KEY(unsigned, FontWidth);
ZPL_KEY(unsigned, FontHeight);
ZPL_KEY(double, FontPointSize);
ZPL_KEY(double, FontCompressionValue);
ZPL_KEY(int, TrueTypeYPosAdjust);
ZPL_KEY(ZplCore::UserFont, UserFont);
// A field that no command gave another function is text, so this key is defined where text is drawn: by `fields/text`.
extern ContextKey<RenderFunction> const FieldRenderFunction;
ZPL_KEY(SerializeFunctionType, SerializeFunction);
ZPL_KEY(std::vector<std::shared_ptr<ZplCore::SerializationFieldStringData>>, serializationFieldStringData);
ZPL_KEY(std::uint64_t, SerializeFunctionIndex);
ZPL_KEY(unsigned, TextBlockWidth);
ZPL_KEY(unsigned, TextBlockLineCount);
ZPL_KEY(unsigned, TextBlockIndent);
ZPL_KEY(int, TextBlockLineSpacing);
ZPL_KEY(Scripting::ScriptTextJustification, TextBlockJustification);
ZPL_KEY(ZplCodePageConverter, CodePageConverter);
ZPL_KEY(unsigned, DpiScaleFactor, 1U);
ZPL_KEY(ZplUnitOfMeasure, UnitOfMeasure);
ZPL_KEY(std::string, SavedFormatPath);
ZPL_KEY(std::string, RecallFormatPath);
ZPL_KEY(Templates, SavedContexts);
ZPL_KEY(unsigned, FieldNumberToSave);
ZPL_KEY(bool, CancelCurrentFormat);
ZPL_KEY(unsigned, FormatScale, 1U);
ZPL_KEY(bool, EnableBarcodeValidation);
ZPL_KEY(int, MediaDarknessOffset);
ZPL_KEY(FontsByLetter, FontSubstitute, FontsByLetter{{'C', "D"}});
ZPL_KEY(std::vector<std::string>, TrueTypeFonts);
ZPL_KEY(ISMetaData, ImageSave);
ZPL_KEY(bool, PauseAfterJob);
ZPL_KEY(std::vector<RfidOperation>, RfidOperations);
ZPL_KEY(unsigned, RfidAccessPassword);
ZPL_KEY(std::vector<RfidReadResponse>, RfidReadResponses);
ZPL_KEY(std::vector<std::uint8_t>, EpcPartitionSizes, std::vector<std::uint8_t>{64, 32});
ZPL_KEY(ResponseCallback, ReturnRfidLogCallback);
ZPL_KEY(ResponseCallback, ReportRfidEncodingCallback);
ZPL_KEY(std::vector<ResponseCallback>, HostVerificationFormatCallbacks);
ZPL_KEY(std::vector<ResponseCallback>, HostVerificationLabelCallbacks);
ZPL_KEY(DataByNumber, FieldNumberValues);
ZPL_KEY(unsigned, HandlerSequenceNumber);
// The keys from here on are this program's own, beyond those of the language's state.
// What a stream has moved its clock by.
ZPL_KEY(std::chrono::system_clock::duration, ClockAdjustment, std::chrono::system_clock::duration::zero());
// Shared by all copies of the state of a format; null while the format is still being received.
ZPL_KEY(std::shared_ptr<FormatMemory>, SharedFormatMemory);
// Darkness from 0 to 30 that a stream has set in place of the printer's own.
ZPL_KEY(std::optional<int>, MediaDarkness);
ZPL_KEY(std::string, PrinterName);
// Whether the field is whole without its end: the next field's origin ends it.
ZPL_KEY(bool, EndsAtNextOrigin);
// How the tag encoder is to work, by the names of its arguments.
ZPL_KEY(NamedArguments, RfidSetUp);
// Templates of a number that has one already, by number and by the place of their command in the label; and that place
// in each template.
ZPL_KEY(TemplatesByPlace, FurtherTemplates);
ZPL_KEY(unsigned, TemplateSequence);
// How often the stream has brought the printer back to its state after power-on.
ZPL_KEY(unsigned, PowerOnCount);
// Whether the data of the field fill the templates of its number.
ZPL_KEY(bool, FillsTemplates);
// Whether the field's function draws a barcode.
ZPL_KEY(bool, IsBarcode);
// Tells what the field's function draws, where somebody maps fields.
ZPL_KEY(DescribeFunction, FieldDescription);

}  // namespace ZplContextKeys

#undef ZPL_KEY
