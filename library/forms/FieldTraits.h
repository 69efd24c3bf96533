#pragma once

#include <optional>
#include <string>
#include <string_view>

/// What a person can change of a field, as it is now. Sizes are dots of the stream.
struct FieldTraits {
    struct Font {
        std::string name;  ///< its letter, or the name of a font file
        unsigned height = 0;
        unsigned width = 0;
    };
    enum class TextLine { None, Below, Above };
    struct Barcode {
        std::optional<unsigned> height;  ///< of the bars or of a row; of a row 0 if the label says it
        bool countsModules = false;      ///< the height is one of modules
        std::optional<unsigned> module;  ///< width of a module, or the magnification
        std::optional<double> ratio;     ///< of wide elements to narrow ones
        std::optional<TextLine> line;
    };
    struct Shape {
        std::optional<unsigned> width;
        std::optional<unsigned> height;
        std::optional<unsigned> thickness;
    };

    bool canMove = false;
    std::optional<std::string> text;  ///< UTF-8; nothing if its data stand elsewhere, or it has none
    std::optional<Font> font;
    std::optional<Barcode> barcode;
    std::optional<Shape> shape;
};

/// What shall be other; nothing stays as it is.
struct FontChange {
    std::optional<char> letter = {};
    std::optional<unsigned> height = {};
    std::optional<unsigned> width = {};
};
struct BarcodeChange {
    std::optional<unsigned> height = {};
    std::optional<unsigned> module = {};
    std::optional<double> ratio = {};
    std::optional<FieldTraits::TextLine> line = {};
};
struct ShapeChange {
    std::optional<unsigned> width = {};
    std::optional<unsigned> height = {};
    std::optional<unsigned> thickness = {};
};
