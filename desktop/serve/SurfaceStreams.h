#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "desktop/serve/BusComponent.h"
#include "desktop/serve/PrinterEvent.h"

class QObject;

/// The streams that surfaces of this printer print: each comes whole, as an event on the bus, and its writer is told
/// what became of it, again whenever it asks. One that comes again after the property server was lost is the same one.
class SurfaceStreams {
public:
    /// What has become of it: why not all of it prints, or nothing.
    using WhenOver = std::function<void(std::string const& failure)>;
    using Take = std::function<void(std::string stream, WhenOver whenOver)>;

    /// `take` and `tell` are called on the thread of `receiver`, which outlives the delivery of properties; `take`
    /// gives the stream its turn.
    SurfaceStreams(BusComponent& bus, QObject& receiver, Take take, TellEvent tell);

private:
    /// A writer's last stream.
    struct Last {
        std::uint32_t number = 0;
        bool isOver = true;
        std::string failure;
    };

    void Receive(std::string const& text);
    void Answer(std::string const& writer, std::uint32_t number) const;
    void MakeRoom();

    Take take_;
    TellEvent tell_;
    std::shared_ptr<StringProperty> stream_;
    std::shared_ptr<StringProperty> taken_;
    std::map<std::string, Last> last_;  ///< by writer
};
