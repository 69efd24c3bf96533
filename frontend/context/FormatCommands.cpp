#include "frontend/context/FormatCommands.h"

#include <cstdint>

namespace {

// A command lies there as: length of the letters and flags; letters; delimiter and offset as the flags say; number of
// parameters; length of each; their bytes. Numbers take seven bits a byte, the low ones first.
constexpr unsigned IsControl = 1;
constexpr unsigned HasOffset = 2;
constexpr unsigned HasOwnDelimiter = 4;
constexpr unsigned FlagBits = 3;

constexpr std::size_t BlockBytes = 64UL * 1024;

void PackNumber(std::string& block, std::uint64_t number) {
    for (; number >= 0x80; number >>= 7) block += static_cast<char>(number | 0x80);
    block += static_cast<char>(number);
}

class Reader {
public:
    Reader(std::string const& block, std::size_t& position) : block_(block), position_(position) {}

    std::uint64_t Number() {
        std::uint64_t number = 0;
        for (unsigned shift = 0;; shift += 7) {
            auto const byte = static_cast<std::uint8_t>(block_[position_++]);
            number |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
            if (byte < 0x80) return number;
        }
    }
    std::string_view Text(std::size_t length) {
        auto const text = std::string_view(block_).substr(position_, length);
        position_ += length;
        return text;
    }

private:
    std::string const& block_;
    std::size_t& position_;
};

/// Bytes that PackNumber and the letters may take beside the parameters' own.
std::size_t MostBytesOf(ZplCommand const& command) {
    constexpr std::size_t Numbers = 32;
    constexpr std::size_t MostOfALength = 5;
    return Numbers + command.command.size() + command.parameters.Text().size() +
           command.parameters.size() * MostOfALength;
}

}  // namespace

char const* FormatCommands::Append(ZplCommand const& command, bool isRecalled) {
    if (isRefused_) return nullptr;
    auto& block = BlockFor(MostBytesOf(command));
    auto const before = block.size();
    unsigned const flags = (command.isControl ? IsControl : 0) | (command.offset ? HasOffset : 0) |
                           (command.delimiter != ',' ? HasOwnDelimiter : 0);
    PackNumber(block, command.command.size() << FlagBits | flags);
    block += command.command;
    if (flags & HasOwnDelimiter) block += command.delimiter;
    if (flags & HasOffset) PackNumber(block, *command.offset);
    PackNumber(block, command.parameters.size());
    for (auto const parameter : command.parameters) PackNumber(block, parameter.size());
    block += command.parameters.Text();

    ++size_;
    bytes_ += 1 + command.command.size() + command.parameters.Text().size() + command.parameters.size();
    packed_ += block.size() - before;
    recalled_ += isRecalled ? 1 : 0;
    char const* const excess = Excess();
    if (excess) {
        Clear();
        isRefused_ = true;
    }
    return excess;
}

char const* FormatCommands::Excess() const {
    if (recalled_ > MostRecalledCommands) return "more than 100,000 recalled commands";
    return packed_ > MostPackedBytes ? "more than 128 MiB of commands" : nullptr;
}

std::string& FormatCommands::BlockFor(std::size_t bytes) {
    if (!blocks_) {
        blocks_ = std::make_shared<std::vector<std::string>>();
    } else if (blocks_.use_count() > 1) {
        blocks_ = std::make_shared<std::vector<std::string>>(*blocks_);
    }
    if (blocks_->empty() || blocks_->back().size() + bytes > BlockBytes) blocks_->emplace_back();
    if (bytes > BlockBytes) blocks_->back().reserve(bytes);
    return blocks_->back();
}

FormatCommands::Iterator FormatCommands::begin() const {
    static std::vector<std::string> const none;
    return Iterator(blocks_ ? *blocks_ : none);
}

void FormatCommands::Iterator::Read() {
    while (block_ < blocks_->size() && position_ == (*blocks_)[block_].size()) {
        ++block_;
        position_ = 0;
    }
    atEnd_ = block_ == blocks_->size();
    if (atEnd_) return;
    Reader reader((*blocks_)[block_], position_);
    auto const head = reader.Number();
    command_.command = reader.Text(head >> FlagBits);
    command_.isControl = (head & IsControl) != 0;
    command_.delimiter = head & HasOwnDelimiter ? reader.Text(1).front() : ',';
    command_.offset.reset();
    if (head & HasOffset) command_.offset = reader.Number();
    command_.parameters.clear();
    std::uint32_t begin = 0;
    for (auto count = reader.Number(); count > 0; --count) {
        command_.parameters.AddBegin(begin);
        begin += static_cast<std::uint32_t>(reader.Number());
    }
    command_.parameters.AppendToLast(reader.Text(begin));
}
