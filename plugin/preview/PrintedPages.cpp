#include "plugin/preview/PrintedPages.h"

#include "foundation/Json.h"
#include "propertybus/PropertyIdentifiers.h"
#include "propertybus/PublishingPropertyManager.h"

PrintedPages::PrintedPages(PublishingPropertyManager& properties) {
    property_ = properties.Follow<StringProperty>(
        ComponentIdentifiers::FirmwareDriver, ExternalAppRegistration::Plain,
        {PropertyNames::PrintedPages, PropertyNameStrings::PrintedPages, PropertyGroups::PrintOperations}, "");
    property_->AddCallback([this](std::shared_ptr<Property> const&) {
        QMetaObject::invokeMethod(this, &PrintedPages::Read, Qt::QueuedConnection);
    });
    Read();
}

void PrintedPages::Read() {
    ReadJsonSettings(property_->Get(), [this](std::string_view name, std::string_view value) {
        if (name == "job") job_ = QString::fromUtf8(value.data(), static_cast<qsizetype>(value.size()));
        if (name == "pages") stem_ = QString::fromUtf8(value.data(), static_cast<qsizetype>(value.size()));
    });
    Q_EMIT changed();
}
