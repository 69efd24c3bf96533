#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "PrintEngine/Printing/TrueTypeCacheCreator.h"
#include "foundation/MachineSettings.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "jobhost/model/JobQueueInterface.h"
#include "jobhost/model/JobStatusPropertyChangeReducer.h"
#include "jobhost/model/Packet.h"
#include "jobhost/model/PrintStream.h"
#include "jobhost/model/StreamFindings.h"
#include "jobhost/model/ZPLProcessorInterface.h"
#include "jobhost/model/ZplPauseController.h"

class Property;

/// The door of the host: takes the packets of print streams, collects their labels into jobs, and turns what the print
/// driver reports into calls of the job queue. Lives on the main thread; property callbacks come from the thread that
/// delivers properties and touch only the reducer, one flag and the queue.
class TQZPLProcessorInterface : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString zplCommandToProcess READ zplCommandToProcess WRITE SetzplCommandToProcess NOTIFY
                   zplCommandToProcessChanged)
    Q_PROPERTY(QString zplResponseToProcess READ zplResponseToProcess NOTIFY zplResponseToProcessChanged)

public:
    explicit TQZPLProcessorInterface(std::unique_ptr<Zpl::Host::JobQueueInterface> queue, MachineSettings machine = {});
    ~TQZPLProcessorInterface() override;

    /// `self` is what keeps this object. A packet that is waiting already is taken.
    static void ConnectModel(std::shared_ptr<TQZPLProcessorInterface> const& self,
                             std::shared_ptr<ZPLProcessorInterface> model,
                             std::shared_ptr<Scripting::PrinterContextInterface> printerContext);
    void InitCallbacks();
    void SetServerAgent(std::shared_ptr<PICLServerAgent> agent);

    /// From the next stream on, what is found in streams is told to who takes them, and not to the log. Barcodes are
    /// looked at too, and the files of pages carry where those stand that may not scan.
    void TellFindings();

    /// Jobs in the queue, the one that prints among them.
    unsigned JobsInQueue() const { return *jobsInQueue_; }

    QString zplCommandToProcess() const;
    QString zplResponseToProcess() const;
    void SetzplCommandToProcess(QString const& value);

Q_SIGNALS:
    void zplCommandToProcessChanged(QString value);
    void zplResponseToProcessChanged(QString value);

public Q_SLOTS:
    /// Takes one packet, and clears the property when it is done with: that is the sender's leave to send the next.
    void Consume(QString zplToProcess);

private:
    void ConsumePayload(std::string_view payload, bool isLast);
    void ConsumePacket(Zpl::Host::Packet const& packet, bool isLast);
    void StartStream();
    std::optional<std::uint64_t> Format() const;
    void FinishStream();
    void HandOverLabels();
    void RenderInLine();
    template <typename T, typename React>
    void OnChange(std::shared_ptr<T> const& property, React react);
    void HandleEvent(std::optional<Zpl::Host::JobStatusChangedEvent> const& event);

    MachineSettings const machine_;
    std::atomic<bool> printingStopped_{false};
    std::shared_ptr<Context> systemContext_;
    PrintEngine::Printing::TrueTypeCacheCreator fontCache_;
    CommandHandlerPool handlerPool_;
    std::optional<Zpl::Host::PrintStream> stream_;
    std::optional<Zpl::Host::StreamFindings> findings_;
    std::string jobName_;
    std::vector<Zpl::Label> labels_;
    bool jobFlag_ = false;
    std::uint32_t lastPacket_ = 0;  // number of the one that was taken last
    std::shared_ptr<std::atomic<unsigned>> jobsInQueue_ = std::make_shared<std::atomic<unsigned>>(0);
    std::atomic<bool> isWritingCommand_{false};
    std::mutex connectMutex_;
    std::string packetAtConnect_;  // while it is consumed by ConnectModel
    std::shared_ptr<ZPLProcessorInterface> model_;
    std::shared_ptr<Scripting::PrinterContextInterface> printerContext_;
    std::unique_ptr<Zpl::Host::JobQueueInterface> queue_;
    Zpl::Host::JobStatusPropertyChangeReducer statusReducer_;
    std::optional<ZplPauseController> pauseController_;
    std::shared_ptr<PICLServerAgent> serverAgent_;
};
