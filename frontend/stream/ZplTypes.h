#pragma once

/// Clockwise turn of a field; the value is the angle in degrees.
enum class ZplOrientation { Normal = 0, Rotated = 90, Inverted = 180, BottomUp = 270 };

/// Which way a text runs.
enum class Direction { Horizontal = 0, Vertical = 1, Reverse = 2 };

/// On which side of its origin a field stands.
enum class Justification { Left = 0, Right = 1, Auto = 2 };

/// What the origin of a field means: its top corner, or a point on its base.
enum class Baseline { Top = 0, Bottom = 1 };

/// Whether a page comes out as designed or turned by 180 degrees.
enum class ZplPrintOrientation { Normal = 0, Inverted = 1 };

enum class ZplUnitOfMeasure { Dots = 0, Inches = 1, Millimeters = 2 };

/// What the printer does with a finished label.
enum class ZplPrintMode { TearOff = 0, Cutter = 1, PeelOff = 2, Applicator = 3 };

/// The forms of graphic data: text (hex or base64), raw bytes, packed.
enum class CompressionType { Ascii = 0, Binary = 1, Compressed = 2 };
