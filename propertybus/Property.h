#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

/// A named value that components share. Name, group and component are GUID texts. Held by std::shared_ptr; any thread
/// may use it.
class Property : public std::enable_shared_from_this<Property> {
public:
    using Callback = std::function<void(std::shared_ptr<Property>)>;

    Property(std::string name, std::string groupId, std::string componentId);
    virtual ~Property() = default;
    Property(Property const&) = delete;
    Property& operator=(Property const&) = delete;

    std::string const& Name() const { return name_; }
    std::string const& GroupId() const { return groupId_; }
    std::string const& ComponentId() const { return componentId_; }

    /// Calls `callback` after each change of the value, on the thread that made it. No lock is held then, so a callback
    /// may read and set this property; what it reads may be newer than the change that it is called for.
    void AddCallback(Callback callback);

protected:
    void NotifyChanged();

    mutable std::mutex mutex_;  ///< guards the value and the callbacks

private:
    std::string const name_;
    std::string const groupId_;
    std::string const componentId_;
    std::vector<Callback> callbacks_;
};
