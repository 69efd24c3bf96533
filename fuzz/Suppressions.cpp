// What the checker of leaks cannot see. Fontconfig holds the values of its patterns by distances in place of addresses,
// so each list of fonts that is kept looks lost to who looks between two runs.
extern "C" char const* __lsan_default_suppressions() { return "leak:libfontconfig.so"; }
