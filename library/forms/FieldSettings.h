#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "library/forms/StoredFormats.h"
#include "library/forms/Template.h"

/// What somebody has settled about the fields of stored formats: their order, names, first values and checks. Each
/// format has a file of it in a folder beside the store, where it is no object: it does not count there, and outlasts a
/// format that is stored anew.
class FieldSettings {
public:
    /// `formatsFolder`: of the store.
    explicit FieldSettings(std::filesystem::path const& formatsFolder);

    struct Settled {
        std::vector<TemplateField> fields;
        std::vector<std::string> remarks;  ///< a sentence each: what of the file could not be used
    };

    /// The fields of a format as they are settled; those about which nothing is come behind in their order. What was
    /// settled about a field with another prompt, or that is gone, is passed over with a remark, as is a broken file.
    Settled Of(StoredFormat const& format, std::vector<TemplateField> fields) const;
    /// Throws std::runtime_error with one sentence if it cannot be written; an earlier file stands then.
    void Save(StoredFormat const& format, std::vector<TemplateField> const& fields) const;

private:
    std::filesystem::path FileOf(StoredFormat const& format) const;

    std::filesystem::path folder_;
};
