#include "plugin/FontsInterface.h"

#include "fields/text/Fonts.h"

// The settings name the files, so the desk asks neither the bus nor a worker for them.
std::shared_ptr<FontsInterface> FontsInterface::Create(std::shared_ptr<PublishingPropertyManager>, ThreadFactory&,
                                                       std::shared_ptr<PICLServerAgent>) {
    ZplCore::UseFontFilesOfSettings();
    return std::shared_ptr<FontsInterface>(new FontsInterface());
}
