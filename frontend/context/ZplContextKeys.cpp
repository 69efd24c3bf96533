// Each line of the list defines its key.
#define ZPL_KEY(Type, Name, ...) \
    extern ContextKey<Type> const Name { __VA_ARGS__ }

#include "frontend/context/ZplContextKeys.h"
