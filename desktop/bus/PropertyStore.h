#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <string>

#include "desktop/bus/ArchiveWriter.h"
#include "propertybus/PiclMessage.h"

/// The properties of the bus and who follows them, without the sockets: what each message changes, and what is said to
/// whom for it. An archived value that nobody else holds, as its owner is away, is on the disk before its write is
/// taken; one that its owner holds too is written by WriteChanges.
class PropertyStore {
public:
    using Peer = int;
    using Send = std::function<void(Peer, PiclMessage const&)>;

    static constexpr std::size_t MostProperties = 10'000;
    static constexpr std::size_t MostBytes = std::size_t{256} << 20;  ///< of all values together

    /// `archive`: the file of the archived values, read now.
    PropertyStore(std::filesystem::path archive, Send send);

    void Handle(Peer peer, PiclMessage const& message);
    /// The peer is gone: nobody owns its properties now. Their values stay for those who ask.
    void Remove(Peer peer);

    /// Whether archived values have changed since they were written.
    bool HasChanges() const { return hasChanges_; }
    /// Writes them, and waits for the disk. A failure is logged.
    void WriteChanges();
    /// Has them written, by and by: who is on the bus does not wait for the disk.
    void WriteChangesBehind();

private:
    struct Entry {
        std::string value;
        bool known = false;  ///< some value has been given
        bool archived = false;
        bool written = false;  ///< by a follower, while nobody owned it: the owner takes that value over
        Peer owner = 0;        ///< 0 for none
        std::set<Peer> followers;
    };

    Entry* Reach(Peer peer, PropertyAddress const& address);
    bool Store(Peer peer, PropertyAddress const& address, Entry& entry, std::string const& value);
    void Publish(Peer peer, PiclMessage const& message);
    void Subscribe(Peer peer, PropertyAddress const& address);
    void Set(Peer peer, PiclMessage const& message);
    void Tell(Peer peer, PropertyAddress const& address, Entry const& entry);
    void Refuse(Peer peer, std::string reason);
    void ReadArchive();
    void NoteChange(Entry const& entry);

    std::filesystem::path archive_;
    ArchiveWriter writer_;
    Send send_;
    std::map<PropertyAddress, Entry> entries_;
    std::size_t bytes_ = 0;
    bool hasChanges_ = false;
};
