#pragma once

#include <QtCore/QObject>
#include <functional>
#include <vector>

#include "jobhost/model/QueueJob.h"

namespace Zpl::Host {

/// The one work queue of the process. Whoever has work for the jobs emits Dispatch, on any thread; the work runs later
/// on the thread of this object, the main thread, in the order of the emissions. So the list needs no lock.
class JobQueueDispatcher : public QObject {
    Q_OBJECT

public:
    using Step = std::function<void(std::vector<Zpl::Host::QueueJob>&)>;

    JobQueueDispatcher();

Q_SIGNALS:
    void Dispatch(std::function<void(std::vector<Zpl::Host::QueueJob>&)> step);

public Q_SLOTS:
    /// Runs a step; an empty one is ignored. A step that fails is logged and done with.
    void OnDispatch(std::function<void(std::vector<Zpl::Host::QueueJob>&)> const& step);

private:
    std::vector<QueueJob> jobs_;  // in order of arrival
};

}  // namespace Zpl::Host
