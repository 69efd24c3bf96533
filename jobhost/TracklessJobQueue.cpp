#include "jobhost/TracklessJobQueue.h"

#include <string>

namespace Zpl::Host {

void TracklessJobQueue::Enqueue(Job const& job, std::string_view jobName, bool) {
    Q_EMIT dispatcher_.Dispatch([held = Job(job), name = std::string(jobName)](std::vector<QueueJob>&) mutable {
        held.Start(name);
        for (unsigned page = 0; page < held.Quantity(); ++page) held.RenderLabel(page);
        held.End();
        held.CloseNetwork();
    });
}

}  // namespace Zpl::Host
