#include <gtest/gtest.h>

#include <QtCore/QJsonObject>
#include <QtCore/QPluginLoader>

#include "foundation/AppSettings.h"
#include "foundation/DebugZones.h"
#include "foundation/Files.h"
#include "plugin/DebugZoneSetupHelper.h"
#include "plugin/LabelRenderPlugin.h"
#include "propertybus/PublishingPropertyManager.h"

namespace {

TEST(Plugin, CarriesItsIdentityInItsElfNote) {
    std::string const program = ReadRegularFile(ZPLHOST_PROGRAM);
    // Text of a CBOR map, as the loader reads it.
    EXPECT_NE(program.find("Tarvo.VexaPlugins.ZPLProcessor"), std::string::npos);
    EXPECT_NE(program.find(".note.qt.metadata"), std::string::npos);
    auto const metaData = QPluginLoader(QStringLiteral(ZPLHOST_PROGRAM)).metaData();
    EXPECT_EQ(metaData.value(QStringLiteral("IID")).toString(), QStringLiteral("Tarvo.VexaPlugins.ZPLProcessor"));
    EXPECT_EQ(metaData.value(QStringLiteral("className")).toString(), QStringLiteral("LabelRenderPlugin"));
}

TEST(Plugin, SwitchesAllDebugZones) {
    auto const properties = std::make_shared<PublishingPropertyManager>();
    DebugZoneSetupHelper::ConnectDebugZones(properties);
    auto const& zones = DebugZones();
    for (std::size_t i = 0; i < zones.size(); ++i) {
        char identifier[40];
        std::snprintf(identifier, sizeof identifier, "5D3C0E0A-6C1F-4B58-9E0B-0C6A4D0F%04zX", i + 1);
        auto const property = std::dynamic_pointer_cast<BoolProperty>(properties->Find(identifier));
        ASSERT_TRUE(property) << i;
        EXPECT_EQ(property->Name().label, zones[i].name);
        bool const before = *zones[i].flag;
        EXPECT_EQ(property->Get(), before);
        property->Set(!before);
        EXPECT_EQ(*zones[i].flag, !before);
        property->Set(before);
    }
}

}  // namespace
