#include "plugin/LabelRenderPlugin.h"

#include <QtQml/QQmlApplicationEngine>
#include <cstdlib>

#include "PrintEngine/Printing/PrintProcessHandler.h"
#include "foundation/AppSettings.h"
#include "foundation/Base64.h"
#include "foundation/DebugZones.h"
#include "foundation/Features.h"
#include "frontend/context/ObjectStore.h"
#include "jobhost/JobQueue.h"
#include "jobhost/TQZPLProcessorInterface.h"
#include "jobhost/TracklessJobQueue.h"
#include "jobhost/model/PrinterContext.h"
#include "plugin/DebugZoneSetupHelper.h"
#include "propertybus/PICLServerAgent.h"
#include "propertybus/PropertyIdentifiers.h"
#include "propertybus/PublishingPropertyManager.h"

namespace {

/// The media of the desk's printer, in inches, from the settings.
PrintEngine::PartManagement::LabelPart InstalledPart() {
    auto const inches = [](char const* name, double fallback) {
        double const value = std::strtod(AppSettings::GetInstance().Value(name).c_str(), nullptr);
        return value > 0 ? value : fallback;
    };
    return {inches("LabelWidth", 4), inches("LabelHeight", 6)};
}

/// What a stream asks of the machine goes to the components whose business it is.
PrinterContext::Requests RequestsTo(std::shared_ptr<ZPLProcessorInterface> const& model,
                                    std::shared_ptr<PICLServerAgent> const& agent) {
    auto const pausePrinting = [agent](char const* value) {
        agent->SetProperty(ComponentIdentifiers::FirmwareDriver, PropertyGroups::PrintOperations,
                           PropertyNames::PausePrinting, value);
    };
    PrinterContext::Requests requests;
    requests.cancelAll = [model] { model->SetCancelAllZplJobs(true); };
    requests.pause = [pausePrinting] { pausePrinting("true"); };
    requests.start = [pausePrinting] { pausePrinting("false"); };
    requests.sendToHost = [model](std::string_view data) {
        model->SetNetworkResponseState(zpl::NetworkResponse::Status::Answer, Base64::Encode(data));
    };
    return requests;
}

}  // namespace

LabelRenderPlugin::LabelRenderPlugin() = default;
LabelRenderPlugin::~LabelRenderPlugin() = default;

void LabelRenderPlugin::Create(QString const&, std::shared_ptr<QQmlApplicationEngine>) {
    std::unique_ptr<Zpl::Host::JobQueueInterface> queue;
    if (Features::Exists(FeatureNames::tracklessZplJobQueue)) {
        queue = std::make_unique<Zpl::Host::TracklessJobQueue>();
    } else {
        queue = std::make_unique<Zpl::Host::JobQueue>();
    }
    zplInterface_ = std::make_shared<TQZPLProcessorInterface>(std::move(queue));
}

void LabelRenderPlugin::Init(std::shared_ptr<PublishingPropertyManager> properties,
                             std::shared_ptr<PICLServerAgent> agent) {
    auto const& settings = AppSettings::GetInstance();
    DebugZoneSetupHelper::ConnectDebugZones(properties);
    ClearMemoryDevice(settings.FormatsDir());
    std::string const jobs = settings.Value("JobsFolder");
    PrintEngine::Printing::PrintProcessHandler::GetInstance()->SetJobsFolder(
        jobs.empty() ? settings.StorageDir() / "Jobs" : std::filesystem::path(jobs));

    zplModel_ = ZPLProcessorInterface::Create(properties, agent);
    zplModel_->PartManager().SetInstalledPart(InstalledPart());
    auto const dpi = std::dynamic_pointer_cast<UInt32Property>(properties->Find(PropertyNames::DotsPerInch));
    auto const printerContext = std::make_shared<PrinterContext>(
        *zplModel_, Scripting::Dpi(dpi->Get()), Scripting::Dpi(zplModel_->GetEmulatedDpiProperty()->Get()),
        std::make_shared<LocalClock>(), RequestsTo(zplModel_, agent));
    TQZPLProcessorInterface::ConnectModel(zplInterface_, zplModel_, printerContext);
    zplInterface_->InitCallbacks();
    zplInterface_->SetServerAgent(agent);
    DebugLog(Init, "ready");
}
