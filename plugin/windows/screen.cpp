#include "plugin/windows/RunWindow.h"

int main(int argc, char** argv) { return RunWindow<ScreenWindow>(argc, argv, "screen"); }
