#pragma once

#include <string>
#include <string_view>

/// A script that lets a shell, bash or zsh, complete the commands and options of `zpl`.
std::string CompletionScript(std::string_view shell);
