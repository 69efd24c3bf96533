#pragma once

#include <memory>
#include <set>
#include <string>

#include "desktop/serve/BusComponent.h"
#include "desktop/serve/PrinterEvent.h"

class QObject;

/// Tells what the host finds in print streams, in the words of `zpl check`.
class FindingsReceiver {
public:
    /// `tell` is called on the thread of `receiver`, which outlives the delivery of properties.
    FindingsReceiver(BusComponent& bus, QObject& receiver, TellEvent tell);

private:
    void Take(std::string const& text);

    TellEvent tell_;
    std::shared_ptr<StringProperty> property_;
    std::set<std::string> setup_;  // what people have been told of commands that only set up a printer
};
