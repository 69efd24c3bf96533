#pragma once

#include "barcodes/UndrawnBarcodeHandler.h"

class CommandHandlerPool;

// Symbologies of postal services.

/// `^B5`: PLANET.
class PlanetCodeBarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("B5"), 1> {
public:
    PlanetCodeBarcodeHandler() : UndrawnBarcodeHandler("PLANET") {}
};

/// `^BZ`: POSTNET and its kin.
class PostalBarcodeHandler : public ZplCore::UndrawnBarcodeHandler<CommandId("BZ"), 1> {
public:
    PostalBarcodeHandler() : UndrawnBarcodeHandler("POSTNET and its kin") {}
};

void AddPostalBarcodeHandlers(CommandHandlerPool& pool);
