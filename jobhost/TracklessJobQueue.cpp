#include "jobhost/TracklessJobQueue.h"

#include <memory>
#include <string>

#include "foundation/DebugZones.h"

namespace Zpl::Host {

void TracklessJobQueue::Enqueue(Job const& job, std::string_view jobName, bool) {
    // One copy, however often the function is copied on its way.
    Q_EMIT dispatcher_.Dispatch(
        [held = std::make_shared<QueueJob>(job), name = std::string(jobName)](std::vector<QueueJob>&) {
            try {
                held->Start(name);
                held->RenderAll();
            } catch (std::exception const& error) {
                DebugLog(Error, "job \"" + name + "\" is given up: " + error.what());
            }
            held->CloseNetwork();
        });
}

}  // namespace Zpl::Host
