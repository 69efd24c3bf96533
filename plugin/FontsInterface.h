#pragma once

#include <memory>

class PICLServerAgent;
class PublishingPropertyManager;
class ThreadFactory;

/// The model of the fonts that the platform manages; on the desk there are none but those of the settings.
class FontsInterface {
public:
    static std::shared_ptr<FontsInterface> Create(std::shared_ptr<PublishingPropertyManager> properties,
                                                  ThreadFactory& threads, std::shared_ptr<PICLServerAgent> agent);

private:
    FontsInterface() = default;
};
