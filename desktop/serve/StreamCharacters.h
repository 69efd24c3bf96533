#pragma once

#include <QtCore/QObject>
#include <functional>
#include <memory>
#include <string>

#include "desktop/serve/PrinterEvent.h"
#include "desktop/serve/StreamWatch.h"
#include "propertybus/PublishingPropertyManager.h"

/// The prefixes and the delimiter of the host, as they are at present. They outlast streams and runs, and labels
/// written for the usual ones do not print: so others are told.
class StreamCharacters {
public:
    using Say = TellEvent;

    /// `say` is called on the thread of `receiver`, which outlives the delivery of properties.
    StreamCharacters(PublishingPropertyManager& properties, QObject& receiver, Say const& say);

    /// With which the host reads a stream that begins in `encoding`.
    StreamState State(Encoding encoding) const;
    /// For people.
    std::string Prefixes() const;

private:
    std::shared_ptr<StringProperty> formatPrefix_;
    std::shared_ptr<StringProperty> controlPrefix_;
    std::shared_ptr<StringProperty> delimiter_;
};
