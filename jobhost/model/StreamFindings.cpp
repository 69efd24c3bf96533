#include "jobhost/model/StreamFindings.h"

namespace Zpl::Host {

void StreamFindings::Append(unsigned session, std::string_view bytes) {
    session_ = session;
    lines_.Append(bytes);
}

void StreamFindings::EndLabel(std::string const& job, std::uint64_t format, std::uint64_t end) {
    findings_.NumberLabel(format, ++labels_);
    TellNew(job);
    lines_.Forget(end);
}

void StreamFindings::EndStream(std::string const& job) {
    TellNew(job);
    lines_ = LineIndex(MostLines);
    findings_ = Findings();
    labels_ = 0;
}

void StreamFindings::TellNew(std::string const& job) {
    for (auto& finding : findings_.Take(lines_)) tell_(FindingMessage{session_, job, std::move(finding)}.Text());
}

}  // namespace Zpl::Host
