#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

namespace PrintEngine::Pages {

/// Makes the folder of a job below `jobsFolder`, which is made too if need be. The folder's name begins with what is
/// harmless of the job's name and is like no other. On an error the path is empty.
std::filesystem::path MakeJobFolder(std::filesystem::path const& jobsFolder, std::string_view jobName,
                                    std::error_code& error);

}  // namespace PrintEngine::Pages
