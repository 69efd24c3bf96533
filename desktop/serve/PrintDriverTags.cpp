// How the print driver plays the tags of labels.

#include <sstream>

#include "PrintEngine/Printing/JobFileSystemStrings.h"
#include "desktop/serve/PrintDriver.h"
#include "jobhost/model/RfidReadResponses.h"
#include "rfid/TagOperations.h"

std::vector<RfidOperation> PrintDriver::TagOperationsOfPage() const {
    for (auto const& range : metaData_.tagOperations) {
        if (range.firstPage <= next_ && next_ <= range.lastPage) return range.operations;
    }
    return {};
}

/// Answers for the tag of the page to come, if its label reads one: the page is drawn when that is known.
void PrintDriver::ReadTag() {
    if (!options_.tag || tagIsRead_) return;
    auto const responses = VirtualTag(*options_.tag).Perform(TagOperationsOfPage());
    if (responses.empty()) return;
    tagIsRead_ = true;
    page_->Set(next_);
    // A response counts for the page that stood when a path was reported last.
    path_->Set(JobFileSystemStrings::NoPage);
    path_->Set(job_.string());
    tagResponse_->Set(RfidReadResponsesText(responses));
}

void PrintDriver::TellTag() {
    auto const operations = TagOperationsOfPage();
    if (!options_.tag || operations.empty()) return;
    std::istringstream lines(TagOperations::Report(operations, VirtualTag(*options_.tag).Perform(operations)));
    for (std::string line; std::getline(lines, line);) say_("  tag " + line.substr(0, line.find('\r')));
}
