#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "jobhost/model/FindingMessage.h"

namespace Zpl::Host {

/// What is to be told about the print stream under way, each thing once, label by label: so a stream may go by without
/// being kept. Places are counted in bytes and lines from where it begins.
class StreamFindings {
public:
    using Tell = std::function<void(std::string const& message)>;

    explicit StreamFindings(Tell tell) : tell_(std::move(tell)) {}

    /// Bytes that are interpreted next, of the stream of this session.
    void Append(unsigned session, std::string_view bytes);
    Findings& Collected() { return findings_; }
    /// The format that begins at `format` and whose last command is at `end` has become a label of the job.
    void EndLabel(std::string const& job, std::uint64_t format, std::uint64_t end);
    /// The next bytes are those of another stream.
    void EndStream(std::string const& job);

private:
    void TellNew(std::string const& job);

    Tell tell_;
    unsigned session_ = 0;
    unsigned labels_ = 0;
    static constexpr std::size_t MostLines = 1'000'000;  // of a format
    LineIndex lines_{MostLines};
    Findings findings_;
};

}  // namespace Zpl::Host
