#include "jobhost/JobQueueDispatcher.h"

#include <QtCore/QMetaType>

#include "foundation/DebugZones.h"
#include "foundation/Ending.h"

namespace Zpl::Host {

JobQueueDispatcher::JobQueueDispatcher() {
    qRegisterMetaType<Step>("std::function<void(std::vector<Zpl::Host::QueueJob>&)>");
    connect(this, &JobQueueDispatcher::Dispatch, this, &JobQueueDispatcher::OnDispatch, Qt::QueuedConnection);
}

void JobQueueDispatcher::OnDispatch(Step const& step) {
    if (!step || processIsEnding) return;
    try {
        step(jobs_);
    } catch (std::exception const& error) {
        DebugLog(Error, std::string("a step of the job queue failed: ") + error.what());
    }
}

}  // namespace Zpl::Host
