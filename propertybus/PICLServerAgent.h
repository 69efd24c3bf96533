#pragma once

#include <chrono>
#include <string>

#include "propertybus/PiclMessage.h"

/// What the process asks of the property server. No call but WaitUntilAvailable waits. Any thread.
class PICLServerAgent {
public:
    virtual ~PICLServerAgent() = default;

    /// Writes a property, of whichever component. Without a link the write waits for the next one.
    virtual void SetProperty(std::string const& component, std::string const& group, std::string const& property,
                             std::string const& value) = 0;

    /// Waits until some component owns the property; false if that is not so in time or the process is to end.
    virtual bool WaitUntilAvailable(PropertyAddress const& address, std::chrono::milliseconds timeout) = 0;
    /// Ends all waiting, now and later.
    virtual void CancelWaiting() = 0;
};

/// Help for those that need a property before they can go on.
namespace PICLGetSetHelper {

/// However long it takes; false only if the process is to end.
bool WaitUntilPropertyAvailable(PICLServerAgent& agent, std::string const& component, std::string const& group,
                                std::string const& property);

}  // namespace PICLGetSetHelper
