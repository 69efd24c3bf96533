#include "printengine/src/scripts/Modules.h"

#include <dlfcn.h>

namespace PrintEngine::Scripts {

namespace {

/// A library stays loaded: what it has opened lives as long as the process.
template <typename Module>
struct Loaded {
    Loaded(char const* file, char const* function) {
        // By its name alone it is looked for where this program looks for its libraries.
        void* const library = dlopen(file, RTLD_NOW | RTLD_LOCAL);
        using Function = Module const* (*)();
        auto const table = library ? reinterpret_cast<Function>(dlsym(library, function)) : nullptr;
        module = table ? table() : nullptr;
        if (module && module->version == ZplModuleVersion) return;
        module = nullptr;
        char const* const reason = library ? nullptr : dlerror();
        why = reason ? reason : std::string(file) + " is of another version";
    }

    Module const* module;
    std::string why;
};

Loaded<ZplScriptsModule> const& LoadedScripts() {
    static Loaded<ZplScriptsModule> const loaded("libzplscripts.so", "ZplScripts");
    return loaded;
}

}  // namespace

ZplScriptsModule const* ScriptsModule() { return LoadedScripts().module; }

std::string const& WhyNoScripts() { return LoadedScripts().why; }

ZplBreaksModule const* BreaksModule() {
    static Loaded<ZplBreaksModule> const loaded("libzplbreaks.so", "ZplBreaks");
    return loaded.module;
}

}  // namespace PrintEngine::Scripts
