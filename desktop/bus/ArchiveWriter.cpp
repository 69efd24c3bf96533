#include "desktop/bus/ArchiveWriter.h"

#include <utility>

#include "foundation/DebugZones.h"
#include "foundation/Files.h"

ArchiveWriter::ArchiveWriter(std::filesystem::path path) : path_(std::move(path)), thread_([this] { Run(); }) {}

ArchiveWriter::~ArchiveWriter() {
    {
        std::lock_guard const lock(mutex_);
        isEnding_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

void ArchiveWriter::Write(std::string content) {
    {
        std::lock_guard const lock(mutex_);
        waiting_ = std::move(content);
    }
    changed_.notify_all();
}

void ArchiveWriter::Wait() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return !waiting_ && !isWriting_; });
}

void ArchiveWriter::Run() {
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return waiting_ || isEnding_; });
        if (!waiting_) return;
        std::string const content = *std::exchange(waiting_, std::nullopt);
        isWriting_ = true;
        lock.unlock();
        if (auto const error = WriteFileAtomically(path_, content, WholeAfter::PowerLoss))
            DebugLog(Error, "archived values cannot be written to " + path_.string() + ": " + error.message());
        lock.lock();
        isWriting_ = false;
        changed_.notify_all();
    }
}
