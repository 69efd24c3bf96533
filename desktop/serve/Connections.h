#pragma once

#include <cstddef>
#include <list>
#include <memory>

#include "desktop/serve/ClientConnection.h"

/// The clients of the printer, in the order in which they get their turns, and what they may take together.
class Connections {
public:
    using Pointer = std::shared_ptr<ClientConnection>;

    static constexpr std::size_t Most = 1000;                  ///< where the system gives a process as many files
    static constexpr std::size_t Memory = 64UL << 20;          ///< for what clients have sent, before shares get small
    static constexpr std::size_t LargestShare = 16UL << 20;    ///< of it for one client
    static constexpr std::size_t SmallestShare = 128UL << 10;  ///< however many there are
    static constexpr std::size_t MostUnsent = 64UL << 20;      ///< answers that wait for clients, together

    /// Asks the system for as many open files as the connections need.
    Connections();

    auto begin() { return list_.begin(); }
    auto end() { return list_.end(); }
    std::size_t Size() const { return list_.size(); }
    bool IsFull() const;
    ClientConnection& Add(int descriptor, StreamState const& start);
    void Add(Pointer connection) { list_.push_back(std::move(connection)); }
    /// Closes the connection that is most easily missed: the one that has been silent longest, or else the one whose
    /// format has been unfinished longest. False if there is none but `kept` and those who came a moment ago.
    bool MakePlace(Pointer const& kept);
    /// Whoever has had a turn stands behind the others.
    void PutBehind(Pointer const& connection);
    /// The first quarter of them, at least one.
    void PutFirstBehind();
    /// A client that has cost much is read and looked at no more until `NextPutOff` gives it.
    void PutOff(ClientConnection& connection);
    bool HasPutOffs() const;
    /// Who has been put off longest, and is not any more; null without one.
    Pointer NextPutOff();
    template <typename Predicate>
    void RemoveIf(Predicate isDone) {
        list_.remove_if(isDone);
    }

    /// Looks anew how much may wait of one client before it is not read on: little while all together have sent much.
    void SetShares();
    bool IsAtShare(ClientConnection const& connection) const { return connection.Waiting().size() >= share_; }
    /// Answers a client, unless too much waits for others who do not read.
    void Answer(ClientConnection& connection, std::string const& bytes) const;

private:
    std::list<Pointer> list_;
    std::size_t most_;
    std::size_t share_ = LargestShare;
    std::uint64_t putOffs_ = 0;  // so far
};
