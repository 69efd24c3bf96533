#include "plugin/FontsInterface.h"

// The settings name the files and the host hands them to its fonts, so the desk asks neither the bus nor a worker.
std::shared_ptr<FontsInterface> FontsInterface::Create(std::shared_ptr<PublishingPropertyManager>, ThreadFactory&,
                                                       std::shared_ptr<PICLServerAgent>) {
    return std::shared_ptr<FontsInterface>(new FontsInterface());
}
