#pragma once

#include <memory>

class PICLServerAgent;
class PublishingPropertyManager;
class ThreadFactory;

/// The model of the fonts: from its making on, the print engine draws with the font files that the settings name.
class FontsInterface {
public:
    static std::shared_ptr<FontsInterface> Create(std::shared_ptr<PublishingPropertyManager> properties,
                                                  ThreadFactory& threads, std::shared_ptr<PICLServerAgent> agent);

private:
    FontsInterface() = default;
};
