#include "desktop/bus/PropertyStore.h"

#include <rapidjson/document.h>

#include <vector>

#include "foundation/DebugZones.h"
#include "foundation/Files.h"
#include "foundation/Json.h"

using Type = PiclMessage::Type;

PropertyStore::PropertyStore(std::filesystem::path archive, Send send)
    : archive_(std::move(archive)), writer_(archive_), send_(std::move(send)) {
    ReadArchive();
}

void PropertyStore::Handle(Peer peer, PiclMessage const& message) {
    switch (message.type) {
        case Type::Hello: break;
        case Type::Publish: Publish(peer, message); break;
        case Type::Subscribe: Subscribe(peer, message.address); break;
        case Type::Set: Set(peer, message); break;
        default: Refuse(peer, "this message is the server's to send"); break;
    }
}

PropertyStore::Entry* PropertyStore::Reach(Peer peer, PropertyAddress const& address) {
    constexpr std::size_t LongestName = 200;
    auto const found = entries_.find(address);
    if (found != entries_.end()) return &found->second;
    if (entries_.size() < MostProperties && address.component.size() <= LongestName &&
        address.group.size() <= LongestName && address.property.size() <= LongestName) {
        return &entries_[address];
    }
    Refuse(peer, "no more properties are taken");
    return nullptr;
}

bool PropertyStore::Store(Peer peer, PropertyAddress const& address, Entry& entry, std::string const& value) {
    if (bytes_ - entry.value.size() + value.size() > MostBytes) {
        Refuse(peer, "no room for the value of " + address.property);
        return false;
    }
    bytes_ += value.size() - entry.value.size();
    entry.value = value;
    entry.known = true;
    return true;
}

void PropertyStore::Publish(Peer peer, PiclMessage const& message) {
    Entry* const entry = Reach(peer, message.address);
    if (!entry) return;
    if (entry->owner != 0 && entry->owner != peer) return Refuse(peer, message.address.property + " has an owner");
    bool const takesOver = entry->written && entry->owner == 0;
    bool const changes = !takesOver && (!entry->known || entry->value != message.value);
    if (changes && !Store(peer, message.address, *entry, message.value)) return;
    bool const returns = entry->owner == 0;
    entry->owner = peer;
    entry->written = false;
    bool const archives = message.archived && (changes || takesOver || !entry->archived);
    entry->archived = message.archived;
    if (archives) NoteChange(*entry);
    if (takesOver && entry->value != message.value) Tell(peer, message.address, *entry);
    if (!changes && !returns) return;
    for (Peer const follower : entry->followers) Tell(follower, message.address, *entry);
}

void PropertyStore::Subscribe(Peer peer, PropertyAddress const& address) {
    Entry* const entry = Reach(peer, address);
    if (!entry) return;
    entry->followers.insert(peer);
    Tell(peer, address, *entry);
}

void PropertyStore::Set(Peer peer, PiclMessage const& message) {
    PiclMessage const taken{.type = Type::Taken, .address = message.address};
    Entry* const entry = Reach(peer, message.address);
    if (!entry || !Store(peer, message.address, *entry, message.value)) {
        send_(peer, taken);
        return;
    }
    entry->written = entry->owner == 0;
    if (entry->archived) NoteChange(*entry);
    for (Peer const follower : entry->followers) {
        if (follower != peer && follower != entry->owner) Tell(follower, message.address, *entry);
    }
    if (entry->owner != 0 && entry->owner != peer) Tell(entry->owner, message.address, *entry);
    // Last: who knows that a write is taken relies on its being told.
    send_(peer, taken);
}

void PropertyStore::Tell(Peer peer, PropertyAddress const& address, Entry const& entry) {
    bool const available = entry.owner != 0 || entry.written;
    if (available) {
        send_(peer, {.type = Type::Changed, .address = address, .value = entry.value});
    } else {
        send_(peer, {.type = Type::Absent, .address = address});
    }
}

void PropertyStore::Refuse(Peer peer, std::string reason) {
    DebugLog(Warning, "peer " + std::to_string(peer) + ": " + reason);
    send_(peer, {.type = Type::Refused, .value = std::move(reason)});
}

void PropertyStore::Remove(Peer peer) {
    for (auto& [address, entry] : entries_) {
        entry.followers.erase(peer);
        if (entry.owner != peer) continue;
        entry.owner = 0;
        for (Peer const follower : entry.followers) Tell(follower, address, entry);
    }
    // A name that nobody holds and that holds nothing is forgotten.
    std::erase_if(entries_, [](auto const& pair) {
        return !pair.second.known && pair.second.owner == 0 && pair.second.followers.empty();
    });
}

void PropertyStore::ReadArchive() {
    std::string const text = ReadRegularFile(archive_);
    if (text.empty()) return;
    rapidjson::Document document;
    if (!ReadJson(text, document) || !document.IsArray()) {
        DebugLog(Error, archive_.string() + " is no archive of properties");
        return;
    }
    for (auto const& row : document.GetArray()) {
        if (!row.IsArray() || row.Size() != 5) continue;
        std::vector<std::string> texts;
        for (auto const& cell : row.GetArray())
            texts.push_back(cell.IsString() ? std::string(cell.GetString(), cell.GetStringLength()) : "");
        Entry entry;
        entry.value = texts[3];
        entry.known = entry.archived = true;
        entry.written = texts[4] == "written";
        bytes_ += entry.value.size();
        entries_[{texts[0], texts[1], texts[2]}] = std::move(entry);
    }
}

void PropertyStore::NoteChange(Entry const& entry) {
    hasChanges_ = true;
    if (entry.owner == 0) WriteChanges();
}

void PropertyStore::WriteChanges() {
    WriteChangesBehind();
    writer_.Wait();
}

void PropertyStore::WriteChangesBehind() {
    hasChanges_ = false;
    JsonWriter writer;
    writer.StartArray();
    for (auto const& [address, entry] : entries_) {
        if (!entry.archived) continue;
        writer.StartArray().String(address.component).String(address.group).String(address.property);
        writer.String(entry.value).String(entry.written ? "written" : "").EndArray();
    }
    writer.EndArray();
    writer_.Write(writer.Text());
}
