#include "plugin/windows/RunWindow.h"

int main(int argc, char** argv) { return RunWindow<PreviewWindow>(argc, argv, "preview"); }
