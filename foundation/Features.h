#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <string_view>

/// The switches that this program tests.
namespace FeatureNames {
inline constexpr std::string_view tracklessZplJobQueue = "TracklessZplJobQueue";
inline constexpr std::string_view rfidEncoderSupport = "RfidEncoderSupport";
inline constexpr std::string_view disablePausing = "DisablePausing";
inline constexpr std::string_view spooledPrintManager = "SpooledPrintManager";
}  // namespace FeatureNames

/// Named feature switches of the machine: on if a feature file lists them. A feature file is JSON text with the member
/// "Features", an array of names.
class Features {
public:
    /// Reads the machine's feature file and folder when it is first called, which programs alone do.
    static Features& GetInstance();
    static bool Exists(std::string_view name) { return GetInstance().Has(name); }

    Features() = default;
    /// Reads the file, then every file of the folder. What cannot be read adds nothing.
    Features(std::filesystem::path const& file, std::filesystem::path const& folder);

    bool Has(std::string_view name) const { return names_.contains(name); }
    void Add(std::string name) { names_.insert(std::move(name)); }
    void AddFeaturesFromFile(std::filesystem::path const& file);

private:
    std::set<std::string, std::less<>> names_;
};
