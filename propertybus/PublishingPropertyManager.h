#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>

#include "propertybus/DefaultPropertyManager.h"
#include "propertybus/ExternalAppProperty.h"
#include "propertybus/Property.h"

/// Makes the properties of this process. Embedded, as by default, they belong to this process alone; with threads and a
/// component they are published to the property server, and other components' are followed.
class PublishingPropertyManager : public DefaultPropertyManager {
public:
    PublishingPropertyManager() : DefaultPropertyManager(nullptr) {}
    /// `archive`: the file in which archived values are kept. It is written within a second of a change, and by
    /// StopThread and the destructor. A write that fails is tried again, so many times, with so many seconds between.
    /// `followTimeout`: how long Follow waits.
    PublishingPropertyManager(ThreadFactory& threads, unsigned archiveAttempts, unsigned archivePause,
                              std::string component, std::filesystem::path archive,
                              std::chrono::milliseconds followTimeout = std::chrono::seconds(5));
    ~PublishingPropertyManager() override;

    void StopThread() override;

    /// Makes the property and publishes it, or gives the one that has this identifier already. T is a property class;
    /// std::logic_error if the existing one is of another.
    template <typename T, typename... Args>
    std::shared_ptr<T> Create(PropertyName name, Args&&... args) {
        auto const [property, isNew] = Make<T, T>(std::move(name), std::forward<Args>(args)...);
        if (isNew) Publish(property, false);
        return property;
    }

    /// As Create, with a value that survives restarts: what is in the archive replaces the given one.
    template <typename T, typename... Args>
    std::shared_ptr<T> CreateArchived(PropertyName name, Args&&... args) {
        auto const [property, isNew] = Make<T, T>(std::move(name), std::forward<Args>(args)...);
        if (isNew) Publish(property, true);
        return property;
    }

    /// Follows a property of another component; waits some time for its value, if there is a server at all.
    template <typename T, typename... Args>
    std::shared_ptr<T> Follow(std::string const& component, ExternalAppRegistration registration, PropertyName name,
                              Args&&... args) {
        auto const [property, isNew] =
            Make<T, ExternalAppProperty<T>>(std::move(name), component, std::forward<Args>(args)...);
        if (isNew) AskFor(property, component, registration);
        return property;
    }

    /// As Follow, for a property whose deliveries are events, each one, whether or not the value differs.
    template <typename T, typename... Args>
    std::shared_ptr<T> Subscribe(std::string const& component, PropertyName name, Args&&... args) {
        auto property =
            Follow<T>(component, ExternalAppRegistration::Plain, std::move(name), std::forward<Args>(args)...);
        property->SetEveryDeliveryCounts();
        return property;
    }

    /// Null if there is no property of that identifier.
    std::shared_ptr<Property> Find(std::string const& identifier) const;

    std::string const& Component() const { return component_; }

private:
    template <typename T, typename Made, typename... Args>
    std::pair<std::shared_ptr<T>, bool> Make(PropertyName name, Args&&... args) {
        std::lock_guard const lock(mutex_);
        auto& entry = properties_[name.identifier];
        if (entry) {
            auto existing = std::dynamic_pointer_cast<T>(entry);
            if (!existing) throw std::logic_error("property " + name.identifier + " exists with another type");
            return {existing, false};
        }
        auto made = std::make_shared<Made>(std::move(name), std::forward<Args>(args)...);
        entry = made;
        return {made, true};
    }

    void Publish(std::shared_ptr<Property> const& property, bool archived);
    void AskFor(std::shared_ptr<Property> const& property, std::string const& component,
                ExternalAppRegistration registration);
    void Archive(Property const& property);
    void WriteArchiveLater(std::chrono::milliseconds pause, unsigned attemptsLeft);
    void WriteArchive(unsigned attemptsLeft);

    mutable std::mutex mutex_;
    std::map<std::string, std::shared_ptr<Property>> properties_;
    std::string const component_;
    std::filesystem::path const archivePath_;
    unsigned const archiveAttempts_ = 0;
    std::chrono::seconds const archivePause_{};
    std::chrono::milliseconds const followTimeout_{};
    std::mutex archiveMutex_;
    std::map<std::string, std::string> archive_;  // value texts by identifier
    bool archiveChanged_ = false;                 // since it was written
    bool writeWaits_ = false;
};
