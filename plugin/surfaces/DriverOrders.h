#pragma once

#include <memory>
#include <string>

class PICLServerAgent;
class PublishingPropertyManager;

/// What a person at the screen has the print driver do, by its properties. What becomes of it is seen in what the
/// driver reports. Lives on the main thread.
class DriverOrders {
public:
    /// Without an agent whoever shares the properties takes the orders.
    DriverOrders(std::shared_ptr<PublishingPropertyManager> properties, std::shared_ptr<PICLServerAgent> agent)
        : properties_(std::move(properties)), agent_(std::move(agent)) {}

    /// These are false if there is no driver that takes such an order.
    bool Pause() { return Write(true); }
    /// Behind a pause, whoever asked for it, or an error.
    bool Resume() { return Write(false); }
    /// Gives up the job in that folder if it is still the one that prints; no other.
    bool Cancel(std::string const& jobFolder);

private:
    bool Write(bool isPause);
    bool IsThere(char const* property);

    std::shared_ptr<PublishingPropertyManager> properties_;
    std::shared_ptr<PICLServerAgent> agent_;
};
