#pragma once

#include "barcodes/UndrawnBarcodeHandler.h"

class CommandHandlerPool;

// Symbologies of one row of bars.

/// `^B1`: Code 11.
class Code11BarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("B1"), 2> {
public:
    Code11BarcodeHandler() : UndrawnBarcodeHandler("Code 11") {}
};

/// `^B2`: Interleaved 2 of 5.
class Interleaved2of5BarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("B2"), 1> {
public:
    Interleaved2of5BarcodeHandler() : UndrawnBarcodeHandler("Interleaved 2 of 5") {}
};

/// `^B3`: Code 39.
class Code39BarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("B3"), 2> {
public:
    Code39BarcodeHandler() : UndrawnBarcodeHandler("Code 39") {}
};

/// `^BA`: Code 93.
class Code93BarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("BA"), 1> {
public:
    Code93BarcodeHandler() : UndrawnBarcodeHandler("Code 93") {}
};

/// `^BI`: Industrial 2 of 5.
class Industrial2of5BarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("BI"), 1> {
public:
    Industrial2of5BarcodeHandler() : UndrawnBarcodeHandler("Industrial 2 of 5") {}
};

/// `^BJ`: Standard 2 of 5.
class Standard2of5BarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("BJ"), 1> {
public:
    Standard2of5BarcodeHandler() : UndrawnBarcodeHandler("Standard 2 of 5") {}
};

/// `^BK`: Codabar.
class AnsiCodabarBarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("BK"), 2> {
public:
    AnsiCodabarBarcodeHandler() : UndrawnBarcodeHandler("Codabar") {}
};

/// `^BL`: LOGMARS.
class LogmarsBarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("BL"), 1> {
public:
    LogmarsBarcodeHandler() : UndrawnBarcodeHandler("LOGMARS") {}
};

/// `^BM`: MSI.
class MsiBarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("BM"), 2> {
public:
    MsiBarcodeHandler() : UndrawnBarcodeHandler("MSI") {}
};

/// `^BP`: Plessey.
class PlesseyBarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("BP"), 2> {
public:
    PlesseyBarcodeHandler() : UndrawnBarcodeHandler("Plessey") {}
};

void AddLinearBarcodeHandlers(CommandHandlerPool& pool);
