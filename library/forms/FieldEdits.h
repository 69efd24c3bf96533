#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "library/forms/BarcodeCommands.h"
#include "library/forms/DrawnFormat.h"
#include "library/forms/FieldTraits.h"
#include "library/forms/StreamCommands.h"
#include "library/forms/StreamEdit.h"

/// A stream, or a stored format, with its commands and the page that it makes.
struct EditedPage {
    std::string bytes;
    StreamCommands commands;
    DrawnFormat drawn;
    unsigned designDpi = 203;
};

/// Writes changes of the fields of a page into an edit of its bytes. Of a field only what its commands say is changed;
/// what it takes from commands for several fields is put into a command of its own. Everything else stays byte for
/// byte. Fields are named by their indices in the drawn page. Calls throw EditRefusal where nothing can be done.
class FieldEdits {
public:
    FieldEdits(EditedPage const& page, StreamEdit& edit) : page_(page), edit_(edit) {}

    FieldTraits TraitsOf(std::size_t field) const;

    /// By dots of the stream. No origin becomes negative.
    void Move(std::size_t field, int right, int down);
    void SetText(std::size_t field, std::string_view text);
    void SetFont(std::size_t field, FontChange const& change);
    void SetBarcode(std::size_t field, BarcodeChange const& change);
    void SetShape(std::size_t field, ShapeChange const& change);
    /// Its commands go; what stands between them and holds for others too stays.
    void Remove(std::size_t field);
    /// Puts a copy right behind it, moved by some dots.
    void Duplicate(std::size_t field, int right, int down);

private:
    using Command = StreamCommand const*;
    struct ShapeCommand;

    DrawnField const& At(std::size_t field) const;
    template <typename Wanted>
    Command LastOf(std::optional<ZplCore::ByteRange> const& range, Wanted const& wanted) const;
    Command OriginOf(DrawnField const& field) const;
    Command DataOf(DrawnField const& field) const;
    std::pair<Command, BarcodeCommand const*> BarcodeOf(DrawnField const& field) const;
    std::pair<Command, ShapeCommand const*> ShapeOf(DrawnField const& field) const;
    Command First(DrawnField const& field) const;
    Command LookOf(DrawnField const& field) const;

    std::optional<std::string> TextOf(DrawnField const& field) const;
    FieldTraits::Barcode BarcodeTraits(DrawnField const& field, BarcodeCommand const& row) const;
    std::string Number(StreamCommand const& command, unsigned dots) const;
    char FontLetter(DrawnField const& field) const;
    void InsertOrigin(DrawnField const& field, int x, int y);
    void InsertFont(DrawnField const& field, FontChange const& change);
    void SetBarcodeDefault(DrawnField const& field, StreamCommand const& barcode, std::size_t index,
                           std::string const& value, std::string const& before);
    bool NeedsDefaultBehind(DrawnField const& field, std::size_t index, bool isOwn) const;
    void RemoveIn(std::optional<ZplCore::ByteRange> const& range);

    EditedPage const& page_;
    StreamEdit& edit_;
};
