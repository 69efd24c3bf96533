#pragma once

#include "frontend/context/ZplContextKeys.h"

namespace ZplCore {

/// What the pictures that a format asks for take together, in bytes. An answer goes to its sender in base64 on one line
/// of the property bus, which takes 64 MiB.
inline constexpr std::size_t MostAnswerBytes = 47UL * 1024 * 1024;

/// Lets `answer` be asked when the page or the whole format has been printed, as `key` says: one of
/// HostVerificationLabelCallbacks and HostVerificationFormatCallbacks. A question belongs to the copy whose replay asks
/// it, so the replay of the next copy asks anew and nothing is answered twice.
void AddHostQuestion(ContextProcessor& processor, ContextKey<std::vector<ZplContextKeys::ResponseCallback>> const& key,
                     ZplContextKeys::ResponseCallback answer);

}  // namespace ZplCore
