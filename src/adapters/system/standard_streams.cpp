#include "adapters/system/standard_streams.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

namespace qrn::system {

void secureStandardStreams() {
  for (int fd = STDIN_FILENO; fd <= STDERR_FILENO; ++fd)
    if (::fcntl(fd, F_GETFD) < 0)  // open() takes the lowest free number, which is this one
      (void)!::open("/dev/null", fd == STDOUT_FILENO ? O_RDONLY : O_RDWR);
  // A handler instead of ignoring: what is ignored stays so in programs that this one starts.
  struct sigaction action {};
  action.sa_handler = [](int) {};
  action.sa_flags = SA_RESTART;
  ::sigaction(SIGPIPE, &action, nullptr);
  ::sigaction(SIGXFSZ, &action, nullptr);
}

bool nobodyReadsOutput() {
  pollfd output{STDOUT_FILENO, 0, 0};
  return ::poll(&output, 1, 0) == 1 && (output.revents & (POLLERR | POLLHUP)) != 0;
}

}  // namespace qrn::system
