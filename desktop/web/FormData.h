#pragma once

#include <string>
#include <string_view>

/// The content of a part of a form (RFC 7578): of the one with that name, or of the first if none has it. `type` is
/// that of the form's content, which names the boundary of the parts. Throws std::invalid_argument with a sentence if
/// the form is damaged.
std::string_view PartOfForm(std::string_view type, std::string_view form, std::string_view name);
