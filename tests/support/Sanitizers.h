#pragma once

/// By how many times a test shrinks what is only a matter of size, and waits longer, where a sanitizer watches every
/// access; else 1.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int SanitizerFactor = 10;
#else
constexpr int SanitizerFactor = 1;
#endif
