#include "frontend/context/ContextKey.h"

std::uint64_t NextContextKeyId() {
    static std::uint64_t last = 0;
    return ++last;
}
