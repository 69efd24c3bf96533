#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

/// The names of the files that pages become: NAME-JOB-PAGE.png, where JOB counts the jobs of a name. It goes on from
/// the files that are there, so pages of an earlier run, or of another printer, are not overwritten.
class PageNames {
public:
    explicit PageNames(std::filesystem::path folder);

    /// The next job, of a name that may hold anything, from its page `first` on.
    void StartJob(std::string_view name, unsigned first);
    /// NAME-JOB.
    std::string const& Job() const { return job_; }
    /// `page` is counted from 0.
    std::filesystem::path Of(unsigned page) const;

private:
    std::filesystem::path folder_;
    std::map<std::string, unsigned, std::less<>> jobs_;  // the last number of each name
    std::string job_;
};
