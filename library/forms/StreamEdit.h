#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "fields/map/FieldPlaces.h"

/// Runs of bytes of a text that give way to others. Offsets are those of the text before, and all runs change at once.
class StreamEdit {
public:
    /// A run that lies in one which is replaced already stays as it is.
    void Replace(ZplCore::ByteRange const& range, std::string text);
    /// Several texts put in at one place stand there in the order of the calls, before what is replaced there.
    void Insert(std::uint64_t offset, std::string text) { Replace({offset, 0}, std::move(text)); }
    void Remove(ZplCore::ByteRange const& range) { Replace(range, {}); }

    bool IsEmpty() const { return replacements_.empty(); }
    std::string ApplyTo(std::string_view text) const;
    /// What makes of the changed text the one before.
    StreamEdit InverseFor(std::string_view before) const;
    /// The parts of this edit within a run of the text, as an edit of that run alone.
    StreamEdit Within(ZplCore::ByteRange const& range) const;
    /// Memory that it takes, about.
    std::size_t Bytes() const;

private:
    struct Replacement {
        ZplCore::ByteRange range;
        std::string text;
    };

    std::vector<Replacement> replacements_;  ///< in order of their offsets
};
