#include "jobhost/TQZPLProcessorInterface.h"

#include <QtCore/QThread>

#include "PrintEngine/Printing/PrintProcessHandler.h"
#include "fields/text/Fonts.h"
#include "foundation/DebugZones.h"
#include "foundation/Log.h"
#include "frontend/context/ObjectStore.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/processor/CreateHandlers.h"
#include "jobhost/model/RfidReadResponses.h"
#include "labels/Job.h"

using PrintEngine::Printing::PrintProcessHandler;
using zpl::NetworkResponse;

TQZPLProcessorInterface::TQZPLProcessorInterface(std::unique_ptr<Zpl::Host::JobQueueInterface> queue,
                                                 MachineSettings machine)
    : machine_(std::move(machine)),
      systemContext_(std::make_shared<Context>(ContextProcessor::SystemContext)),
      handlerPool_(CreateHandlers(machine_.features.Has(FeatureNames::rfidEncoderSupport),
                                  machine_.features.Has(FeatureNames::disablePausing))),
      queue_(std::move(queue)) {
    ZplCore::UseFontFiles(machine_.fontFiles, fontCache_);
    systemContext_->Set(ZplContextKeys::CodePageConverter, ZplCodePageConverter(0));
    connect(this, &TQZPLProcessorInterface::zplCommandToProcessChanged, this, &TQZPLProcessorInterface::Consume,
            Qt::AutoConnection);
}

TQZPLProcessorInterface::~TQZPLProcessorInterface() = default;

/// The property is held weakly: its own callback must not keep it.
template <typename T, typename React>
void TQZPLProcessorInterface::OnChange(std::shared_ptr<T> const& property, React react) {
    property->AddCallback([react, value = std::weak_ptr<T>(property)](std::shared_ptr<Property> const&) {
        if (auto const changed = value.lock()) react(changed->Get());
    });
}

void TQZPLProcessorInterface::ConnectModel(std::shared_ptr<TQZPLProcessorInterface> const& self,
                                           std::shared_ptr<ZPLProcessorInterface> model,
                                           std::shared_ptr<Scripting::PrinterContextInterface> printerContext) {
    self->model_ = std::move(model);
    self->printerContext_ = std::move(printerContext);
    self->pauseController_.emplace(*self->queue_, *self->model_, *self->printerContext_);

    auto const command = self->model_->GetCommandToProcessProperty();
    std::weak_ptr<TQZPLProcessorInterface> const weak = self;
    // A packet that arrives at this moment may be seen below and be told to the callback too; it counts once.
    std::unique_lock connecting(self->connectMutex_);
    self->OnChange(command, [weak, held = std::weak_ptr(command)](std::string const&) {
        auto const strong = weak.lock();
        auto const property = held.lock();
        if (!strong || !property) return;
        std::string value;
        {
            std::lock_guard const lock(strong->connectMutex_);
            value = property->Get();
            if (!value.empty() && value == strong->packetAtConnect_) return;
        }
        // When the clearing of a packet is told here, the next packet may stand in the property already; that one is
        // told by its own change.
        if (strong->isWritingCommand_ && QThread::currentThread() == strong->thread()) return;
        Q_EMIT strong->zplCommandToProcessChanged(QString::fromStdString(value));
    });
    self->OnChange(self->model_->GetResponseToProcessProperty(), [weak](std::string const& value) {
        if (auto const strong = weak.lock()) Q_EMIT strong->zplResponseToProcessChanged(QString::fromStdString(value));
    });
    self->packetAtConnect_ = command->Get();
    QString const waiting = QString::fromStdString(self->packetAtConnect_);
    connecting.unlock();
    if (!waiting.isEmpty()) Q_EMIT self->zplCommandToProcessChanged(waiting);
    connecting.lock();
    self->packetAtConnect_.clear();
}

void TQZPLProcessorInterface::InitCallbacks() {
    auto& model = *model_;
    OnChange(model.GetPrintJobStatusProperty(),
             [this](std::string const& text) { HandleEvent(statusReducer_.StatusChanged(text)); });
    OnChange(model.GetCurrentJobPathProperty(),
             [this](std::string const& text) { HandleEvent(statusReducer_.PathChanged(text)); });
    OnChange(model.GetCurrentPrintingPageProperty(),
             [this](unsigned page) { HandleEvent(statusReducer_.PageChanged(page)); });
    OnChange(model.GetPrintingStoppedProperty(), [this](bool stopped) {
        printingStopped_ = stopped;
        if (stopped) queue_->CancelAll();
    });
    // It may have been so before anybody listened.
    printingStopped_ = model.GetPrintingStoppedProperty()->Get();
    OnChange(model.GetCancelAllZPLJobsProperty(), [this](bool cancel) {
        if (!cancel) return;
        model_->SetCancelAllJobs(true);
        queue_->CancelAll();
        model_->SetCancelAllZplJobs(false);
    });
    // Asked before anybody listened, when there was nothing to cancel; left so, it could never be asked again.
    if (model.GetCancelAllZPLJobsProperty()->Get()) model_->SetCancelAllZplJobs(false);
    OnChange(model.GetZplUnPauseProperty(), [this](unsigned page) {
        if (page == ZPLProcessorInterface::NoUnPause) return;
        pauseController_->UnPause(page);
        model_->SetZplUnPause(ZPLProcessorInterface::NoUnPause);
    });
    OnChange(model.GetRfidReadCommandResponseProp(), [this](std::string const& text) {
        auto responses = ParseRfidReadResponses(text);
        if (responses) HandleEvent(statusReducer_.NewRfidReadResponse(std::move(*responses)));
    });
    OnChange(model.GetCanSendCurrentJobToPrintResponse(), [this](std::string const& text) {
        if (text == "false") queue_->Cleanup();
    });
}

void TQZPLProcessorInterface::HandleEvent(std::optional<Zpl::Host::JobStatusChangedEvent> const& event) {
    if (!event) return;
    DebugLog(PrintJob, event->path.string() + ": status " + std::to_string(event->status) + ", page " +
                           std::to_string(event->page));
    queue_->Handle(*event, model_->PrintOnDemandToggle(), [printer = printerContext_] { printer->Reset(); });
}

void TQZPLProcessorInterface::SetServerAgent(std::shared_ptr<PICLServerAgent> agent) {
    serverAgent_ = std::move(agent);
    auto* const process = PrintProcessHandler::GetInstance();
    process->SetPrinterDPI(printerContext_->PrinterDpi().Value());
    process->SetupForPrinting(serverAgent_, model_->GetPropertyManager());
    fontCache_.SetWarningReceiver(
        [](std::string_view line, std::string_view) { DebugLog(Warning, std::string(line)); });
    process->SetPageReceiver(
        [](unsigned page) { DebugLog(PerformanceLogging, "page " + std::to_string(page) + " is rendered"); });
}

QString TQZPLProcessorInterface::zplCommandToProcess() const {
    return model_ ? QString::fromStdString(model_->GetCommandToProcessProperty()->Get()) : QString();
}

QString TQZPLProcessorInterface::zplResponseToProcess() const {
    return model_ ? QString::fromStdString(model_->GetResponseToProcessProperty()->Get()) : QString();
}

void TQZPLProcessorInterface::SetzplCommandToProcess(QString const& value) {
    if (value == zplCommandToProcess()) return;
    isWritingCommand_ = true;
    model_->GetCommandToProcessProperty()->Set(value.toStdString());
    isWritingCommand_ = false;
    Q_EMIT zplCommandToProcessChanged(value);
}

void TQZPLProcessorInterface::Consume(QString zplToProcess) {
    // The echo of the property being cleared.
    if (zplToProcess.isEmpty()) return;
    PrintProcessHandler::GetInstance()->InitializeOffscreenDrawing();
    std::optional<Zpl::Host::Packet> packet;
    bool isLast = false;
    try {
        packet = Zpl::Host::Packet::Parse(zplToProcess.toStdString());
        // A packet whose clearing was lost with the property server is repeated, and would print once more.
        bool const isRepeated = packet && packet->Number != 0 && packet->Number == lastPacket_;
        if (packet) lastPacket_ = packet->Number;
        isLast = packet && !isRepeated && packet->Command == Zpl::Host::Packet::EndOfStream;
        if (isRepeated)
            model_->SetNetworkResponseState(NetworkResponse::Status::Processing, std::nullopt);
        else if (packet)
            ConsumePacket(*packet, isLast);
        else
            DebugLog(Warning, "a packet that cannot be read is dropped");
    } catch (std::exception const& error) {
        DebugLog(Error, std::string("a packet is given up: ") + error.what());
    }
    if (isLast) FinishStream();
    // Also of a packet that was given up: the sender may rely on what it has stored when the packet is taken.
    SettleObjects();
    SetzplCommandToProcess({});
}

void TQZPLProcessorInterface::ConsumePacket(Zpl::Host::Packet const& packet, bool isLast) {
    if (!stream_ && !packet.payload.empty()) StartStream();
    model_->SetNetworkResponseState(NetworkResponse::Status::Processing, std::nullopt);
    std::optional<Log::ScopedSink> sink;
    if (findings_) {
        findings_->Append(packet.SessionId, packet.payload);
        sink.emplace([this](LogTopic topic, std::string_view text) {
            findings_->Collected().AddReport(topic, std::string(text), Format(), Log::Place());
        });
    }
    ConsumePayload(packet.payload, isLast);
    SettleObjects();
}

void TQZPLProcessorInterface::TellFindings() {
    findings_.emplace([this](std::string const& message) { model_->TellFinding(message); });
}

void TQZPLProcessorInterface::StartStream() {
    auto const makeSession = [this] {
        auto session = std::make_unique<Zpl::Host::Session>(*model_, systemContext_, fontCache_, printerContext_,
                                                            handlerPool_, machine_);
        if (findings_) session->Target().KeepNotes();
        return session;
    };
    if (!findings_) {
        stream_.emplace(makeSession);
        return;
    }
    auto const tell = [this](Finding finding, Findings::Format format) {
        findings_->Collected().Add(std::move(finding), format);
    };
    stream_.emplace(makeSession, Zpl::Host::PrintStream::Watch{ZplCore::FieldMap::Detail::Symbols, tell});
}

/// Where the format under way begins.
std::optional<std::uint64_t> TQZPLProcessorInterface::Format() const {
    return stream_ ? stream_->Format() : std::nullopt;
}

void TQZPLProcessorInterface::ConsumePayload(std::string_view payload, bool isLast) {
    while (!payload.empty()) {
        auto result = stream_->Consume(payload, printingStopped_, isLast);
        payload = result.remaining;
        if (!result.label) continue;
        auto& [name, label] = *result.label;
        if (jobName_.empty()) jobName_ = std::move(name);
        if (result.hasRfidOperations) jobFlag_ = true;
        labels_.push_back(std::move(label));
        if (findings_) findings_->EndLabel(jobName_, Format().value_or(0), stream_->Current().LastCommandOffset());
    }
}

void TQZPLProcessorInterface::FinishStream() {
    if (findings_) findings_->EndStream(jobName_);
    try {
        HandOverLabels();
    } catch (std::exception const& error) {
        DebugLog(Error, "the job of a stream is given up: " + std::string(error.what()));
        model_->SetNetworkResponseState(NetworkResponse::Status::Done, std::nullopt);
    }
    // Whatever became of it: the next stream begins with nothing.
    labels_.clear();
    jobName_.clear();
    stream_.reset();
    jobFlag_ = false;
}

void TQZPLProcessorInterface::HandOverLabels() {
    if (labels_.empty()) {
        model_->SetNetworkResponseState(NetworkResponse::Status::Done, std::nullopt);
    } else if (machine_.runningOnTarget) {
        // Held by the job, however it ends.
        ++*jobsInQueue_;
        std::shared_ptr<void> const counted(nullptr, [count = jobsInQueue_](void*) { --*count; });
        auto const onJobClosed = [model = model_, counted] {
            model->SetNetworkResponseState(NetworkResponse::Status::Done, std::nullopt);
        };
        Zpl::Job job(std::move(labels_), onJobClosed, jobFlag_);
        job.SetOrigin(lastPacket_);
        queue_->Enqueue(job, jobName_, model_->PrintOnDemandToggle());
    } else {
        RenderInLine();
    }
}

void TQZPLProcessorInterface::RenderInLine() {
    Zpl::Job job(std::move(labels_), {}, jobFlag_);
    job.Start(jobName_);
    for (unsigned page = 0; page < job.Quantity(); ++page) job.RenderLabel(page);
    job.End();
}
