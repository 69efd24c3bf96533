#pragma once

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "library/forms/DrawnFormat.h"
#include "library/forms/EditedStream.h"
#include "library/forms/LabelDots.h"
#include "library/forms/StoredFormats.h"

/// Something that a person has to say yes to; the text asks in a sentence or two.
class EditorQuestion : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The stored format that a person works on, from the printer's store and back. One thread at a time.
class EditorDesk {
public:
    /// Over the one that is open, which goes without being saved. Throws std::runtime_error with one sentence if it
    /// cannot be read or drawn; the one before stays open then.
    void Open(DeskSettings const& settings, StoredFormat const& format);
    void Close();

    /// Null if nothing is open.
    EditedStream* Stream() { return stream_.get(); }
    StoredFormat const& Format() const { return format_; }

    /// Stores it under that name, which is its own from then on. Unless `isSure`, throws EditorQuestion if that puts
    /// aside what others have stored, or brings back what they have removed. Throws what StoredFormats::Save throws;
    /// nothing is lost then.
    void Save(StoredFormat const& format, bool isSure);

    /// One label of it as it is now, as a stream: recalled if it is stored so. Throws std::runtime_error with one
    /// sentence if it has to be saved for that.
    std::string PrintStream() const;

private:
    void AskAbout(StoredFormat const& format) const;

    std::optional<StoredFormats> formats_;
    std::unique_ptr<FormatDrawer> drawer_;
    std::unique_ptr<EditedStream> stream_;
    StoredFormat format_;
    LabelDots label_;     ///< in the printer
    std::string stored_;  ///< what its object held when it was opened or saved
};
