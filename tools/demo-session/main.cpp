// demo-session --ovl PATH: reads a launch file as a session program would and says what it would do.

#include <cstring>
#include <iostream>

#include "Files/OvSettings.h"
#include "RecordPrinter.h"

int main(int count, char** arguments) {
  if (count != 3 || strcmp(arguments[1], "--ovl") != 0) {
    std::cerr << "Usage: demo-session --ovl PATH\n";
    return 2;
  }
  OvSettings record;
  if (!record.loadOvlFile(arguments[2])) {
    std::cerr << "demo-session: " << arguments[2] << " can't be read as a launch file.\n";
    return 1;
  }
  orvane::demo::printRecord(record, std::cout);
  return 0;
}
