#include "command.h"
#include "platform/large_pages.h"

int main(int argc, char** argv) {
  platform::useLargePages(platform::heapOfCommand);
  return kgen::runCommandLine(argc, argv);
}
