#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "propertybus/PublishingPropertyManager.h"
#include "propertybus/ThreadFactory.h"

/// What every plugin process has: its settings, its worker threads and its properties.
class TQApp {
public:
    /// Names the component, and prepares Qt. Before the application object is made.
    static void InitializeQtSettings(std::string const& name, std::string const& componentId,
                                     std::string const& componentLabel);
    /// Reads the settings file, then the override, whose values win one by one; loads the fonts of the surfaces.
    TQApp(std::filesystem::path const& settings, std::filesystem::path const& settingsOverride);

    ThreadFactory& Threads() { return threads_; }
    std::shared_ptr<PublishingPropertyManager> const& Properties() const { return properties_; }

private:
    ThreadFactory threads_{5};
    std::shared_ptr<PublishingPropertyManager> properties_;
};
