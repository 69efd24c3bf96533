#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "propertybus/PICLIF.h"
#include "propertybus/PropertyIdentifiers.h"
#include "propertybus/PublishingPropertyManager.h"
#include "propertybus/ThreadFactory.h"

/// A component of the platform that lives in this process: its properties and its own link to the bus.
class BusComponent {
public:
    BusComponent(ThreadFactory& threads, char const* component, std::filesystem::path const& socket)
        : properties_(std::make_shared<PublishingPropertyManager>(threads, 0, 0, component, "")),
          link_(threads, properties_, "zpl serve") {
        properties_->StartThread();
        link_.Connect(socket);
    }
    ~BusComponent() {
        link_.Disconnect();
        properties_->StopThread();
    }
    BusComponent(BusComponent const&) = delete;
    BusComponent& operator=(BusComponent const&) = delete;

    template <typename T, typename V>
    std::shared_ptr<T> Own(char const* property, char const* group, V value) {
        return properties_->Create<T>(PropertyName{property, property, group}, value);
    }
    PublishingPropertyManager& Properties() { return *properties_; }
    /// Whether the host is on the bus, by a property that is its own. It is known only once it has been asked for.
    bool IsHostThere() {
        static PropertyAddress const ofHost{ComponentIdentifiers::ZplHost, PropertyGroups::PrintOperations,
                                            PropertyNames::ZplUnPause};
        return properties_->WaitUntilAvailable(ofHost, {});
    }
    void Write(char const* component, char const* property, std::string const& value) {
        link_.GetServerAgent()->SetProperty(component, PropertyGroups::PrintOperations, property, value);
    }

private:
    std::shared_ptr<PublishingPropertyManager> properties_;
    PICLIF link_;
};
