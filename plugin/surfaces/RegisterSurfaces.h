#pragma once

class QQmlEngine;
class TQTWSProcessorInterface;
class TQZPLProcessorInterface;

/// Makes the QML module `TCPrintEngine` known to an engine: the print engine's types, the surfaces of the resources,
/// and the two objects by which surfaces speak to the process. The first, which only the host has, may be null. The
/// objects outlive what the engine makes of the surfaces.
void RegisterSurfaces(QQmlEngine& engine, TQZPLProcessorInterface* zpl, TQTWSProcessorInterface* tws);
