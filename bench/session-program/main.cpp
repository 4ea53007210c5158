// The session program of the launch benchmark: tells when it started, removes its launch file as others do, and ends.

#include <chrono>
#include <cstdint>
#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

int main(int count, char** arguments) {
  const int64_t now =
      std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now().time_since_epoch()).count();
  const char* const pipe = getenv("ORVANE_BENCH_STARTED");
  if (count != 3 || !pipe) return 2;
  unlink(arguments[2]);
  const int descriptor = open(pipe, O_WRONLY);
  return write(descriptor, &now, sizeof now) == sizeof now ? 0 : 1;
}
