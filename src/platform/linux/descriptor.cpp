#include "platform/linux/descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace rivelt {

void Descriptor::Close() {
  if (Is_Open()) close(std::exchange(Held, -1));
}

Descriptor Open(const std::string& path, int flags, unsigned permissions) {
  int number = -1;
  do {
    number = open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY, permissions);
  } while (number < 0 && errno == EINTR);
  return Descriptor(number);
}

Descriptor Open_Regular_File(const std::string& path) {
  Descriptor opened = Open(path, O_RDONLY | O_NONBLOCK);
  struct stat state {};
  if (opened.Is_Open() && (fstat(opened.Number(), &state) != 0 || !S_ISREG(state.st_mode)))
    opened.Close();
  return opened;
}

long Read(const Descriptor& source, void* buffer, std::size_t size) {
  long count = 0;
  do {
    count = read(source.Number(), buffer, size);
  } while (count < 0 && errno == EINTR);
  return count;
}

}  // namespace rivelt
