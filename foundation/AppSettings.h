#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

/// What this process is, and where its files are. Set up once at start and read by the programs alone, which hand down
/// what is needed below them.
class AppSettings {
public:
    static AppSettings& GetInstance();

    void SetComponentName(std::string name) { componentName_ = std::move(name); }
    std::string const& ComponentName() const { return componentName_; }
    void SetComponentIdentifier(std::string guid) { componentIdentifier_ = std::move(guid); }
    std::string const& GetComponentIdentifier() const { return componentIdentifier_; }
    void SetComponentIdentifierString(std::string label) { componentIdentifierString_ = std::move(label); }
    std::string const& GetComponentIdentifierString() const { return componentIdentifierString_; }
    /// The name under which this program runs.
    static std::string_view GetComponentNameZplHost() { return "ZplHost"; }

    /// True on the printer, false on a desk.
    bool RunningOnTarget() const { return runningOnTarget_; }
    void SetRunningOnTarget(bool onTarget) { runningOnTarget_ = onTarget; }

    /// The writable store, where stored formats and archived values live.
    std::filesystem::path const& StorageDir() const { return storageDir_; }
    void SetStorageDir(std::filesystem::path folder) { storageDir_ = std::move(folder); }
    /// Where formats and graphics that streams store are kept.
    std::filesystem::path FormatsDir() const { return storageDir_ / "SavedZPLFormats"; }
    /// The folder of the program.
    std::filesystem::path AppBin() const;
    /// The tree that a desk build was made from.
    std::filesystem::path const& DevDir() const { return devDir_; }
    void SetDevDir(std::filesystem::path folder) { devDir_ = std::move(folder); }
    std::filesystem::path SystemFontsDir() const;
    std::filesystem::path SystemFeaturesFilePath() const { return storageDir_ / "Features.json"; }
    std::filesystem::path SystemFeaturesFolder() const { return storageDir_ / "Features"; }

    /// How long an external property may take to be subscribed to, in milliseconds.
    unsigned ExternalPropertySubscriptionTimeoutMS() const;

    /// Takes the members of a settings file (one flat JSON object), over what was there before. A file that is missing
    /// or is no JSON object changes nothing and gives false.
    bool LoadFile(std::filesystem::path const& file);
    /// A value of the settings files; empty if none names it.
    std::string Value(std::string const& name) const;

private:
    AppSettings();

    std::string componentName_;
    std::string componentIdentifier_;
    std::string componentIdentifierString_;
    bool runningOnTarget_ = false;
    std::filesystem::path storageDir_;
    std::filesystem::path devDir_;
    std::map<std::string, std::string, std::less<>> values_;
};
