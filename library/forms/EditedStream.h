#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "frontend/context/ObjectName.h"
#include "library/forms/DrawnFormat.h"
#include "library/forms/FieldEdits.h"
#include "library/forms/FieldTraits.h"

/// A stored format, or a stream, that a person changes field by field. What nobody has changed stays byte for byte.
/// After each change the label is drawn anew. One thread at a time.
class EditedStream {
public:
    /// Never changes, so that other threads may look at it.
    using Page = std::shared_ptr<EditedPage const>;

    /// Of a stream the fields of its first label can be changed, also where it has stored the format of it itself. Of a
    /// stored format, `stored` is the name; numbers that wait for data are shown with a sample, which is never saved.
    /// Throws what drawing throws. The drawer outlives it.
    EditedStream(FormatDrawer& drawer, std::string bytes, std::optional<ObjectName> stored);

    Page const& Current() const { return page_; }
    std::string const& Bytes() const { return page_->bytes; }
    DrawnFormat const& Drawn() const { return page_->drawn; }
    FieldTraits TraitsOf(std::size_t field) const;

    /// Makes one step of changes, to be undone as one. One that follows under the same key, if that is not empty,
    /// takes the place of the one before, and starts from where that one did: so something is dragged. Throws
    /// EditRefusal, and what drawing throws; nothing has changed then. False if nothing changes.
    bool Edit(std::function<void(FieldEdits&)> const& change, std::string const& key = {});
    bool CanUndo() const { return !undo_.empty(); }
    bool CanRedo() const { return !redo_.empty(); }
    bool Undo();
    bool Redo();

    /// Whether the bytes differ from those that were opened or saved last.
    bool IsChanged() const { return page_->bytes != saved_; }
    /// They have been stored under that name.
    void SetSaved(std::optional<ObjectName> stored);

private:
    Page Draw(std::string bytes);
    bool AddSamples(DrawnFormat const& drawn);
    std::string Fills() const;
    void Remember(StreamEdit edit);
    bool Step(std::deque<StreamEdit>& from, std::deque<StreamEdit>& to);

    FormatDrawer& drawer_;
    std::optional<ObjectName> stored_;
    std::map<unsigned, std::string> samples_;  ///< by field number
    Page page_;
    std::string saved_;
    std::deque<StreamEdit> undo_;  ///< the last one behind
    std::deque<StreamEdit> redo_;
    Page before_;      ///< the last step; null once another may not take its place
    std::string key_;  ///< of that step
};
