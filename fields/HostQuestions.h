#pragma once

#include "frontend/context/ZplContextKeys.h"

namespace ZplCore {

/// Lets `answer` be asked when the page or the whole format has been printed, as `key` says: one of
/// HostVerificationLabelCallbacks and HostVerificationFormatCallbacks. A question belongs to the copy whose replay asks
/// it, so the replay of the next copy asks anew and nothing is answered twice.
void AddHostQuestion(ContextProcessor& processor, ContextKey<std::vector<ZplContextKeys::ResponseCallback>> const& key,
                     ZplContextKeys::ResponseCallback answer);

}  // namespace ZplCore
