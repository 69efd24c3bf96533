#pragma once

namespace Scripting {

/// How the lines of a text block stand in its width.
enum class ScriptTextJustification { Left = 0, Right = 1, Center = 2, Justified = 3 };

/// Where the next character of a text stands.
enum class ScriptTextFlow { Horizontal = 0, Vertical = 1, Reverse = 2 };

}  // namespace Scripting
