#pragma once

/// Marks what the print-engine library offers to the rest of the system; everything else in it stays hidden.
#define PRINTENGINE_API __attribute__((visibility("default")))
