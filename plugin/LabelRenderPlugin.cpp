#include "plugin/LabelRenderPlugin.h"

#include <QtQml/QQmlApplicationEngine>

#include "PrintEngine/Printing/JobFileSystemStrings.h"
#include "foundation/AppSettings.h"
#include "foundation/Base64.h"
#include "foundation/DebugZones.h"
#include "foundation/Log.h"
#include "frontend/context/ObjectStore.h"
#include "jobhost/JobQueue.h"
#include "jobhost/TQZPLProcessorInterface.h"
#include "jobhost/TracklessJobQueue.h"
#include "jobhost/model/PrinterContext.h"
#include "plugin/DebugZoneSetupHelper.h"
#include "plugin/InstalledPart.h"
#include "plugin/Machine.h"
#include "plugin/TQTWSProcessorInterface.h"
#include "plugin/TWSProcessorInterface.h"
#include "plugin/surfaces/RegisterSurfaces.h"
#include "propertybus/PICLServerAgent.h"
#include "propertybus/PropertyIdentifiers.h"
#include "propertybus/PublishingPropertyManager.h"

namespace {

/// What of the machine depends on its make: the desk's printer prints as fast as it is told to.
class PrinterFeatureChecker : public PrinterFeatureCheckerInterface {
public:
    bool HasAdjustablePrintSpeed() const override { return true; }
};

/// What a stream asks of the machine goes to the components whose business it is.
PrinterContext::Requests RequestsTo(std::shared_ptr<ZPLProcessorInterface> const& model,
                                    std::shared_ptr<PICLServerAgent> const& agent,
                                    std::weak_ptr<TQZPLProcessorInterface> const& door) {
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
    requests.status = [model, door](Scripting::PrinterStatus& status) {
        auto const host = door.lock();
        unsigned const jobs = host ? host->JobsInQueue() : 0;
        bool const onePrints = model->GetCurrentJobPath() != JobFileSystemStrings::NoPage;
        status.formatsInBuffer = jobs - (onePrints && jobs > 0 ? 1 : 0);
    };
    return requests;
}

std::shared_ptr<PrinterContext> MakePrinterContext(std::shared_ptr<ZPLProcessorInterface> const& model,
                                                   PublishingPropertyManager const& properties,
                                                   std::shared_ptr<PICLServerAgent> const& agent,
                                                   std::weak_ptr<TQZPLProcessorInterface> const& door) {
    auto const dpi = std::dynamic_pointer_cast<UInt32Property>(properties.Find(PropertyNames::DotsPerInch));
    return std::make_shared<PrinterContext>(
        *model, Scripting::Dpi(dpi->Get()), Scripting::Dpi(model->GetEmulatedDpiProperty()->Get()),
        std::make_shared<LocalClock>(), RequestsTo(model, agent, door), std::make_shared<PrinterFeatureChecker>());
}

/// What streams ask for and cannot have is a matter for the log: what is lost is a warning, the rest is information.
void LogReportsOfStreams() {
    Log::SetSink([](LogTopic topic, std::string_view line) {
        if (topic == LogTopic::Limit || topic == LogTopic::Font || topic == LogTopic::File ||
            topic == LogTopic::Dropped)
            DebugLog(Warning, std::string(line));
        else
            DebugLog(Info, std::string(line));
    });
}

}  // namespace

LabelRenderPlugin::LabelRenderPlugin() = default;
LabelRenderPlugin::~LabelRenderPlugin() = default;

void LabelRenderPlugin::Create(QString const&, std::shared_ptr<QQmlApplicationEngine> engine) {
    std::unique_ptr<Zpl::Host::JobQueueInterface> queue;
    if (Features::Exists(FeatureNames::tracklessZplJobQueue)) {
        queue = std::make_unique<Zpl::Host::TracklessJobQueue>();
    } else {
        queue = std::make_unique<Zpl::Host::JobQueue>();
    }
    zplInterface_ = std::make_shared<TQZPLProcessorInterface>(std::move(queue), Machine());
    twsInterface_ = std::make_shared<TQTWSProcessorInterface>();
    RegisterSurfaces(*engine, zplInterface_.get(), twsInterface_.get());
}

void LabelRenderPlugin::Init(std::shared_ptr<PublishingPropertyManager> properties,
                             std::shared_ptr<PICLServerAgent> agent) {
    LogReportsOfStreams();
    auto const machine = Machine();
    ClearMemoryDevice(machine.formatsFolder);
    KeepObjects(machine.formatsFolder);

    DebugZoneSetupHelper::ConnectDebugZones(properties);
    zplModel_ = ZPLProcessorInterface::Create(properties, agent, machine);
    zplModel_->PartManager().SetInstalledPart(InstalledPart());
    auto const printerContext = MakePrinterContext(zplModel_, *properties, agent, zplInterface_);
    if (AppSettings::GetInstance().Value("TellFindings") == "true") zplInterface_->TellFindings();
    TQZPLProcessorInterface::ConnectModel(zplInterface_, zplModel_, printerContext);
    zplInterface_->InitCallbacks();
    twsModel_ = TWSProcessorInterface::Create(properties, agent);
    TQTWSProcessorInterface::ConnectModel(twsInterface_, twsModel_);
    twsInterface_->SetPropertyManager(properties);
    twsInterface_->InitCallbacks();
    zplInterface_->SetServerAgent(agent);
    twsInterface_->SetServerAgent(agent);
    DebugLog(Init, "ready");
}
