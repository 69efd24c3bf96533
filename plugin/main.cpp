#include "plugin/LabelRenderPlugin.h"
#include "plugin/RunPlugin.h"
#include "propertybus/PropertyIdentifiers.h"

int main(int argc, char** argv) {
    std::string const name(AppSettings::GetComponentNameZplHost());
    RunPlugin<LabelRenderPlugin>(argc, argv, name, ComponentIdentifiers::ZplHost, ComponentIdentifierStrings::ZplHost);
    return 0;
}
