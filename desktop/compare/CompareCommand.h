#pragma once

#include "desktop/CommandLine.h"

/// What the exit code of `zpl compare` says, as that of other programs that compare.
enum class CompareResult { Alike = 0, Different = 1, Trouble = 2 };

/// Holds the pages of the two inputs of `render` against each other. Throws UsageError and OutputError.
CompareResult RunCompare(RenderOptions const& render, CompareOptions const& options);
