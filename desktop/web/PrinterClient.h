#pragma once

#include <chrono>
#include <mutex>
#include <string>

/// A client of the printer's TCP door, as everybody else.
class PrinterClient {
public:
    /// `address`: HOST:PORT of the door.
    explicit PrinterClient(std::string address) : address_(std::move(address)) {}
    ~PrinterClient();
    PrinterClient(PrinterClient const&) = delete;
    PrinterClient& operator=(PrinterClient const&) = delete;

    /// Sends a stream and ends it. Throws Refusal if the printer does not take it in time.
    void Print(std::string const& stream) const;
    /// Sends bytes on a connection that stays. Throws Refusal.
    void Write(std::string const& bytes);
    /// What has come back on that connection; waits a moment if nothing has.
    std::string Read();

private:
    int Connect() const;
    static void Send(int connection, std::string const& bytes);
    void Close();

    std::string const address_;
    std::mutex mutex_;
    int connection_ = -1;
};
