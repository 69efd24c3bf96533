#include "frontend/context/FormatCommands.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

namespace {

// A command lies there as: length of the letters and flags; letters; delimiter, offset and length as the flags say;
// number of parameters; length of each; their bytes. Numbers take seven bits a byte, the low ones first.
constexpr unsigned IsControl = 1;
constexpr unsigned HasOffset = 2;
constexpr unsigned HasOwnDelimiter = 4;
constexpr unsigned FlagBits = 3;

// What grows is small, so that growing costs little.
constexpr std::size_t LargestGrowing = 64UL * 1024;

/// Appends numbers and texts to a block, several at a time.
class Packer {
public:
    explicit Packer(std::string& block) : block_(block) {}
    Packer(Packer const&) = delete;
    Packer& operator=(Packer const&) = delete;

    void Number(std::uint64_t number) {
        constexpr std::size_t LongestNumber = 10;
        if (held_ + LongestNumber > buffer_.size()) Flush();
        for (; number >= 0x80; number >>= 7) buffer_[held_++] = static_cast<char>(number | 0x80);
        buffer_[held_++] = static_cast<char>(number);
    }
    void Text(std::string_view text) {
        if (held_ + text.size() > buffer_.size()) Flush();
        if (text.size() > buffer_.size()) {
            block_ += text;
        } else {
            held_ = static_cast<std::size_t>(std::copy(text.begin(), text.end(), buffer_.begin() + held_) -
                                             buffer_.begin());
        }
    }
    void Flush() {
        block_.append(buffer_.data(), held_);
        held_ = 0;
    }

private:
    std::string& block_;
    std::array<char, 128> buffer_;
    std::size_t held_ = 0;
};

class Reader {
public:
    explicit Reader(char const* at) : at_(at) {}

    char const* At() const { return at_; }
    std::uint64_t Number() {
        std::uint64_t number = 0;
        for (unsigned shift = 0;; shift += 7) {
            auto const byte = static_cast<std::uint8_t>(*at_++);
            number |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
            if (byte < 0x80) return number;
        }
    }
    std::string_view Text(std::size_t length) {
        at_ += length;
        return {at_ - length, length};
    }

private:
    char const* at_;
};

}  // namespace

void PackedCommands::Append(ZplCommand const& command) {
    unsigned const flags = (command.isControl ? IsControl : 0) | (command.offset ? HasOffset : 0) |
                           (command.delimiter != ',' ? HasOwnDelimiter : 0);
    Packer packer(packed_);
    packer.Number(command.command.size() << FlagBits | flags);
    packer.Text(command.command);
    if (flags & HasOwnDelimiter) packer.Text({&command.delimiter, 1});
    if (flags & HasOffset) {
        packer.Number(*command.offset);
        packer.Number(command.length);
    }
    packer.Number(command.parameters.size());
    for (auto const parameter : command.parameters) packer.Number(parameter.size());
    packer.Text(command.parameters.Text());
    packer.Flush();

    ++size_;
    streamBytes_ += 1 + command.command.size() + command.parameters.Text().size() + command.parameters.size();
}

void PackedCommands::Read(std::size_t& position, ZplCommand& command) const {
    Reader reader(packed_.data() + position);
    auto const head = reader.Number();
    command.command = reader.Text(head >> FlagBits);
    command.isControl = (head & IsControl) != 0;
    command.delimiter = head & HasOwnDelimiter ? reader.Text(1).front() : ',';
    command.offset.reset();
    command.length = 0;
    command.stored.reset();
    if (head & HasOffset) {
        command.offset = reader.Number();
        command.length = reader.Number();
    }
    command.parameters.clear();
    std::uint32_t begin = 0;
    for (auto count = reader.Number(); count > 0; --count) {
        command.parameters.AddBegin(begin);
        begin += static_cast<std::uint32_t>(reader.Number());
    }
    command.parameters.AppendToLast(reader.Text(begin));
    position = static_cast<std::size_t>(reader.At() - packed_.data());
}

char const* FormatCommands::Append(ZplCommand const& command, bool isImmediate) {
    if (isRefused_) return nullptr;
    hasImmediate_ |= isImmediate;
    auto& parts = Own();
    // Another format may share the last part, but for what comes now.
    bool const grows = !parts.empty() && parts.back().own && parts.back().own.use_count() == 2 &&
                       parts.back().own->Packed().size() + command.parameters.Bytes() <= LargestGrowing;
    if (!grows) {
        auto const own = std::make_shared<PackedCommands>();
        parts.push_back({own, own, {}, 0, nullptr});
    }
    auto& last = *parts.back().own;
    packed_ -= grows ? last.Packed().size() : 0;
    bytes_ -= grows ? last.StreamBytes() : 0;
    last.Append(command);
    packed_ += last.Packed().size();
    bytes_ += last.StreamBytes();
    ++size_;
    return RefuseExcess();
}

char const* FormatCommands::AppendRecalled(std::shared_ptr<PackedCommands const> commands,
                                           std::optional<std::uint64_t> place, std::uint64_t length,
                                           std::string format) {
    if (isRefused_ || commands->size() == 0) return nullptr;
    size_ += commands->size();
    recalled_ += commands->size();
    packed_ += commands->Packed().size();
    bytes_ += commands->StreamBytes();
    Own().push_back(
        {std::move(commands), nullptr, place, length, std::make_shared<std::string const>(std::move(format))});
    return RefuseExcess();
}

char const* FormatCommands::RefuseExcess() {
    char const* excess = nullptr;
    if (packed_ > MostPackedBytes) excess = "more than 128 MiB of commands";
    if (recalled_ > MostRecalledCommands) excess = "more than 100,000 recalled commands";
    if (excess) {
        Clear();
        isRefused_ = true;
    }
    return excess;
}

std::vector<FormatCommands::Part>& FormatCommands::Own() {
    if (!parts_) {
        parts_ = std::make_shared<std::vector<Part>>();
    } else if (parts_.use_count() > 1) {
        parts_ = std::make_shared<std::vector<Part>>(*parts_);
    }
    return *parts_;
}

FormatCommands::Iterator FormatCommands::begin() const {
    static std::vector<Part> const none;
    return Iterator(parts_ ? *parts_ : none);
}

void FormatCommands::Iterator::Read() {
    while (part_ < parts_->size() && position_ == (*parts_)[part_].commands->Packed().size()) {
        ++part_;
        position_ = 0;
    }
    atEnd_ = part_ == parts_->size();
    if (atEnd_) return;
    auto const& part = (*parts_)[part_];
    part.commands->Read(position_, command_);
    if (part.own) return;
    command_.stored = StoredPlace{*part.format, command_.offset.value_or(0), command_.length};
    command_.offset = part.recalledAt;
    command_.length = part.recallLength;
}
