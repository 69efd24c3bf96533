#include "propertybus/PublishingPropertyManager.h"

#include "foundation/DebugZones.h"
#include "foundation/Files.h"
#include "foundation/Json.h"

PublishingPropertyManager::PublishingPropertyManager(ThreadFactory& threads, unsigned archiveAttempts,
                                                     unsigned archivePause, std::string component,
                                                     std::filesystem::path archive,
                                                     std::chrono::milliseconds followTimeout)
    : DefaultPropertyManager(&threads),
      component_(std::move(component)),
      archivePath_(std::move(archive)),
      archiveAttempts_(archiveAttempts),
      archivePause_(archivePause),
      followTimeout_(followTimeout) {
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
    if (!asked || !WaitForAnswer(address, followTimeout_))
        DebugLog(PropertyWarning, name.label + " is not answered for yet");
}

void PublishingPropertyManager::StopThread() {
    DefaultPropertyManager::StopThread();
    std::unique_lock lock(archiveMutex_);
    if (!archiveChanged_) return;
    lock.unlock();
    WriteArchive(0);
}

/// Some values change with every label, and a write waits for the disk: so many changes are written together, and on a
/// thread that nobody waits for.
void PublishingPropertyManager::Archive(Property const& property) {
    constexpr std::chrono::seconds Pause{1};
    std::lock_guard const lock(archiveMutex_);
    archive_[property.Name().identifier] = property.ValueText();
    archiveChanged_ = true;
    // What waits takes this value along.
    if (!writeWaits_) WriteArchiveLater(Pause, archiveAttempts_);
}

void PublishingPropertyManager::WriteArchiveLater(std::chrono::milliseconds pause, unsigned attemptsLeft) {
    writeWaits_ = true;
    RunLater(pause, [this, attemptsLeft] { WriteArchive(attemptsLeft); });
}

void PublishingPropertyManager::WriteArchive(unsigned attemptsLeft) {
    JsonWriter writer;
    {
        std::lock_guard const lock(archiveMutex_);
        writer.StartObject();
        for (auto const& [identifier, value] : archive_) writer.Key(identifier).String(value);
        writer.EndObject();
        archiveChanged_ = writeWaits_ = false;
    }
    std::error_code error;
    std::filesystem::create_directories(archivePath_.parent_path(), error);
    error = WriteFileAtomically(archivePath_, writer.Text(), WholeAfter::PowerLoss);
    if (!error) return;
    DebugLog(Error, "archived properties cannot be written to " + archivePath_.string() + ": " + error.message());
    std::lock_guard const lock(archiveMutex_);
    archiveChanged_ = true;
    if (attemptsLeft > 0 && !writeWaits_) WriteArchiveLater(archivePause_, attemptsLeft - 1);
}
