#include "system/TerminationSignals.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>

#include "system/Exception.h"

namespace System::TerminationSignals {

namespace {

int pipeEnds[2] = {-1, -1};

void onTerminationSignal(int signalNumber) {
  const int savedErrno = errno;
  const char byte = static_cast<char>(signalNumber);
  // A full pipe already holds a pending request; losing this byte changes nothing.
  [[maybe_unused]] const ssize_t written = write(pipeEnds[1], &byte, 1);
  errno = savedErrno;
}

}  // namespace

int install() {
  if (pipeEnds[0] >= 0) return pipeEnds[0];
  if (pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0) {
    throw PlatformCallException("pipe2", "System::TerminationSignals::install");
  }
  struct sigaction action {};
  action.sa_handler = onTerminationSignal;
  sigemptyset(&action.sa_mask);
  action.sa_flags = SA_RESTART;
  sigaction(SIGTERM, &action, nullptr);
  sigaction(SIGINT, &action, nullptr);
  return pipeEnds[0];
}

bool drain() {
  bool seen = false;
  char buffer[16];
  while (read(pipeEnds[0], buffer, sizeof(buffer)) > 0) seen = true;
  return seen;
}

}  // namespace System::TerminationSignals
