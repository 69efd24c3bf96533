#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>

#include "desktop/serve/BusComponent.h"
#include "desktop/serve/PrinterEvent.h"

class QObject;

/// Tells what the host finds in print streams, in the words of `zpl check`.
class FindingsReceiver {
public:
    /// `tell` is called on the thread of `receiver`, which outlives the delivery of properties. `packet` says which one
    /// the host reads; 0 for none.
    FindingsReceiver(BusComponent& bus, QObject& receiver, std::function<std::uint32_t()> packet, TellEvent tell);

private:
    void Take(std::string const& text);

    std::function<std::uint32_t()> packet_;
    TellEvent tell_;
    std::shared_ptr<StringProperty> property_;
    std::set<std::string> setup_;  // what people have been told of commands that only set up a printer
};
