#pragma once

#include <string>

#include "desktop/web/HttpMessage.h"

/// The print stream that a request brings: its body, or the part "file" of a form. Throws Refusal.
std::string StreamOf(HttpRequest& request);
