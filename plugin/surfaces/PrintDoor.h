#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QTimer>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>

#include "propertybus/Property.h"

class PICLServerAgent;
class PublishingPropertyManager;

/// By which surfaces print: a stream goes to the component that takes the streams of all clients, and has its turn
/// there, so that pausing, cancelling and counting hold for it. Lives on the main thread. A stream that has been handed
/// over prints whatever becomes of this process or of the host; one that waits here goes with this process.
class PrintDoor : public QObject {
public:
    /// Told once. `error`: one sentence for people; empty if all of the stream has been taken.
    using Done = std::function<void(QString const& error)>;

    static constexpr qsizetype LongestStream = 32 << 20;  ///< bytes

    /// Without an agent whoever shares the properties takes the streams.
    PrintDoor(std::shared_ptr<PublishingPropertyManager> properties, std::shared_ptr<PICLServerAgent> agent);
    ~PrintDoor() override;

    /// Whether there is somebody who takes streams.
    bool IsOpen();
    /// Takes whole labels. The next stream is handed over when the one before is taken, which takes as long as the
    /// printer is paused and has enough to print: so whoever has much to print waits for `done` with the next part.
    void Print(QByteArray stream, Done done);

private:
    struct Waiting {
        QByteArray stream;
        Done done;
    };

    void Connect();
    void HandOver();
    void Send();
    void Hear(std::string const& text);
    void LookAround();
    void End(QString const& error);

    std::shared_ptr<PublishingPropertyManager> properties_;
    std::shared_ptr<PICLServerAgent> agent_;
    std::shared_ptr<StringProperty> stream_;
    std::shared_ptr<StringProperty> taken_;
    std::string const name_;
    std::uint32_t number_ = 0;  ///< of the stream that was handed over last
    bool isUnderWay_ = false;   ///< it is the first of these
    std::deque<Waiting> waiting_;
    QTimer lookAround_;
    unsigned absences_ = 0;  ///< in a row
};
