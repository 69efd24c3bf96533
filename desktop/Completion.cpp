#include "desktop/Completion.h"

#include "desktop/Options.h"

namespace {

bool IsFolder(OptionRow const& option) { return option.value == "DIR"; }

std::string NamesOf(CommandRow const& command) {
    std::string names;
    for (auto const* const option : OptionsOf(command)) names.append(names.empty() ? "" : " ").append(option->name);
    return names;
}

std::string CommandNames() {
    std::string names;
    for (auto const& command : Commands()) names.append(command.name).append(" ");
    return names + "help --help --version";
}

/// The branch that completes the value of one option.
std::string BashValue(OptionRow const& option) {
    std::string const branch = "        " + std::string(option.name) + ") ";
    if (!option.choices.empty()) return branch + "_zpl_words '" + std::string(option.choices) + "'; return ;;\n";
    return branch + (IsFolder(option) ? "_zpl_files -d" : "_zpl_files -f") + "; return ;;\n";
}

/// The branch that completes the options and operands of a command.
std::string BashCommand(CommandRow const& command) {
    std::string const words = command.operandWords.empty() ? NamesOf(command) : std::string(command.operandWords);
    bool const takesFiles = !command.operands.empty() && command.operandWords.empty();
    return "        " + std::string(command.name) + ":-*) _zpl_words '" + NamesOf(command) + "' ;;\n        " +
           std::string(command.name) + ":*) " + (takesFiles ? "_zpl_files -f" : "_zpl_words '" + words + "'") + " ;;\n";
}

std::string Bash() {
    std::string script = R"(# Completion of zpl for bash.
_zpl_words() { mapfile -t COMPREPLY < <(compgen -W "$1" -- "$word"); }
_zpl_files() { compopt -o filenames 2>/dev/null; mapfile -t COMPREPLY < <(compgen "$1" -- "$word"); }
_zpl() {
    local at=$COMP_CWORD word=${COMP_WORDS[COMP_CWORD]}
    COMPREPLY=()
    if [ "$at" -eq 1 ]; then _zpl_words ')" +
                         CommandNames() + R"('; return; fi
    # The equals sign between an option and its value is a word of its own.
    if [ "$word" = = ]; then word=; elif [ "${COMP_WORDS[at-1]}" = = ]; then at=$((at - 1)); fi
    case ${COMP_WORDS[at-1]} in
)";
    for (auto const& option : Options()) {
        if (!option.value.empty()) script += BashValue(option);
    }
    script += "    esac\n    case ${COMP_WORDS[1]}:$word in\n";
    for (auto const& command : Commands()) script += BashCommand(command);
    return script + "    esac\n}\ncomplete -F _zpl zpl\n";
}

/// Text within the single quotes of a shell, in which zsh gives brackets and colons a meaning.
std::string ZshText(std::string_view text) {
    std::string escaped;
    for (char const c : text) {
        if (c == '\'') {
            escaped += "'\\''";
            continue;
        }
        if (c == '[' || c == ']' || c == ':' || c == '\\') escaped += '\\';
        escaped += c;
    }
    return escaped;
}

std::string ZshOption(OptionRow const& option) {
    std::string const name(option.name);
    std::string const help = "[" + ZshText(option.help) + "]";
    if (option.value.empty()) return "'" + name + help + "'";
    std::string const action = !option.choices.empty() ? "(" + std::string(option.choices) + ")"
                               : IsFolder(option)      ? "_files -/"
                                                       : "_files";
    // More than once, where each adds something, is for the command to judge.
    return "'*" + name + (name.starts_with("--") ? "=" : "+") + help + ":" + ZshText(option.value) + ":" + action + "'";
}

std::string ZshCommand(CommandRow const& command) {
    std::string branch = "        " + std::string(command.name) + ") _arguments";
    for (auto const* const option : OptionsOf(command)) branch += " \\\n            " + ZshOption(*option);
    if (!command.operandWords.empty()) {
        branch += " \\\n            '1:" + ZshText(command.operands) + ":(" + std::string(command.operandWords) + ")'";
    } else if (!command.operands.empty()) {
        branch += " \\\n            '*:" + ZshText(command.operands) + ":_files'";
    }
    return branch + " ;;\n";
}

std::string Zsh() {
    std::string script = "#compdef zpl\n# Completion of zpl for zsh.\n_zpl() {\n    local -a commands=(\n";
    for (auto const& command : Commands())
        script += "        '" + std::string(command.name) + ":" + ZshText(command.summary) + "'\n";
    script += R"(    )
    if (( CURRENT == 2 )); then _describe command commands; return; fi
    shift words
    (( CURRENT-- ))
    case $words[1] in
)";
    for (auto const& command : Commands()) script += ZshCommand(command);
    return script + R"(    esac
}
if [ "$funcstack[1]" = _zpl ]; then _zpl "$@"; else compdef _zpl zpl; fi
)";
}

}  // namespace

std::string CompletionScript(std::string_view shell) { return shell == "bash" ? Bash() : Zsh(); }
