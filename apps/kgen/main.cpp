#include "command.h"

int main(int argc, char** argv) { return kgen::runCommandLine(argc, argv); }
