#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "Scripting/Api.h"
#include "Scripting/RfidOperation.h"

namespace PrintEngine::Printing {

/// What the print driver has to know of a job beside its pages: the file `MetaData` of the job folder, one JSON object.
/// Pages are counted from 0.
struct PRINTENGINE_API JobMetaData {
    std::string jobName = {};
    unsigned totalPages = 0;
    std::vector<unsigned> pauseIndices = {};  ///< page counts after which printing pauses, ascending
    bool flag = false;                        ///< the job has tag operations
    std::optional<int> density = {};          ///< print density in place of the printer's setting
    bool pauseAfterJob = false;
    std::uint64_t serial = 0;  ///< grows from job to job, also over processes (nanoseconds of the wall clock)
    unsigned firstPage = 0;    ///< the page to go on from
    std::vector<PageRangeRfidOperations> tagOperations = {};

    std::string Text() const;
    /// Nothing if the text is no such object. Members that are missing keep their defaults.
    static std::optional<JobMetaData> Parse(std::string_view text);

    static std::optional<JobMetaData> Read(std::filesystem::path const& jobPath);
    std::error_code Write(std::filesystem::path const& jobPath) const;

    friend bool operator==(JobMetaData const&, JobMetaData const&) = default;
};

}  // namespace PrintEngine::Printing
