#include "plugin/Machine.h"

#include "foundation/AppSettings.h"

MachineSettings Machine() {
    auto const& settings = AppSettings::GetInstance();
    std::string const jobs = settings.Value("JobsFolder");
    return {.formatsFolder = settings.FormatsDir(),
            .jobsFolder = jobs.empty() ? settings.StorageDir() / "Jobs" : std::filesystem::path(jobs),
            .fontsFolder = settings.SystemFontsDir(),
            .fontFiles = settings.Value("FontFiles"),
            .features = Features::GetInstance(),
            .runningOnTarget = settings.RunningOnTarget()};
}
