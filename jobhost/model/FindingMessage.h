#pragma once

#include <optional>
#include <string>

#include "jobhost/model/Findings.h"

namespace Zpl::Host {

/// A finding on its way to who takes print streams: one flat JSON object of at most some 2 KiB.
struct FindingMessage {
    unsigned session = 0;  ///< of the packets that brought the stream
    std::string job;       ///< the name of its job; empty if there is none yet
    Finding finding;       ///< places are counted from where the job begins

    std::string Text() const;
    /// Nothing if the text is no such message.
    static std::optional<FindingMessage> Parse(std::string const& text);
};

}  // namespace Zpl::Host
