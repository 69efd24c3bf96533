#include "propertybus/PublishingPropertyManager.h"

#include "foundation/AppSettings.h"
#include "foundation/DebugZones.h"
#include "foundation/Files.h"
#include "foundation/Json.h"

PublishingPropertyManager::PublishingPropertyManager(ThreadFactory& threads, unsigned archiveAttempts,
                                                     unsigned archivePause, std::string component,
                                                     std::filesystem::path archive)
    : DefaultPropertyManager(&threads),
      component_(std::move(component)),
      archivePath_(std::move(archive)),
      archiveAttempts_(archiveAttempts),
      archivePause_(archivePause) {
    ReadJsonSettings(ReadRegularFile(archivePath_), [this](std::string_view identifier, std::string_view value) {
        archive_[std::string(identifier)] = value;
    });
}

PublishingPropertyManager::~PublishingPropertyManager() {
    StopThread();
    // The properties may outlive the manager in other hands.
    for (auto const& [identifier, property] : properties_) property->ConnectWriter({});
}

std::shared_ptr<Property> PublishingPropertyManager::Find(std::string const& identifier) const {
    std::lock_guard const lock(mutex_);
    auto const found = properties_.find(identifier);
    return found == properties_.end() ? nullptr : found->second;
}

void PublishingPropertyManager::Publish(std::shared_ptr<Property> const& property, bool archived) {
    auto const& name = property->Name();
    if (archived && !archivePath_.empty()) {
        std::string stored;
        bool isStored = false;
        {
            std::lock_guard const lock(archiveMutex_);
            auto const found = archive_.find(name.identifier);
            isStored = found != archive_.end();
            if (isStored) stored = found->second;
        }
        if (isStored) property->SetValueText(stored);
        property->AddCallback([this](std::shared_ptr<Property> const& changed) { Archive(*changed); });
    }
    if (!component_.empty()) ConnectToBus({component_, name.group, name.identifier}, property, Role::Owner, archived);
}

void PublishingPropertyManager::AskFor(std::shared_ptr<Property> const& property, std::string const& component,
                                       ExternalAppRegistration registration) {
    if (registration == ExternalAppRegistration::EveryWrite) property->SetEveryWriteCounts(false);
    if (component_.empty()) return;
    auto const& name = property->Name();
    PropertyAddress const address{component, name.group, name.identifier};
    bool const asked = ConnectToBus(address, property, Role::Follower, false);
    std::chrono::milliseconds const timeout(AppSettings::GetInstance().ExternalPropertySubscriptionTimeoutMS());
    if (!asked || !WaitForAnswer(address, timeout)) DebugLog(PropertyWarning, name.label + " is not answered for yet");
}

void PublishingPropertyManager::Archive(Property const& property) {
    std::lock_guard const lock(archiveMutex_);
    archive_[property.Name().identifier] = property.ValueText();
    // What waits to be tried again takes this value along.
    if (!retryWaits_) WriteArchive(archiveAttempts_);
}

void PublishingPropertyManager::WriteArchive(unsigned attemptsLeft) {
    JsonWriter writer;
    writer.StartObject();
    for (auto const& [identifier, value] : archive_) writer.Key(identifier).String(value);
    writer.EndObject();
    std::error_code error;
    std::filesystem::create_directories(archivePath_.parent_path(), error);
    error = WriteFileAtomically(archivePath_, writer.Text());
    if (!error) return;
    DebugLog(Error, "archived properties cannot be written to " + archivePath_.string() + ": " + error.message());
    if (attemptsLeft == 0) return;
    retryWaits_ = true;
    RunLater(archivePause_, [this, attemptsLeft] {
        std::lock_guard const lock(archiveMutex_);
        retryWaits_ = false;
        WriteArchive(attemptsLeft - 1);
    });
}
