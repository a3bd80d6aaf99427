#include "platform/linux/descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>

#include "text/text.h"

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

void Read_In_Pieces(const Descriptor& source,
                    const std::function<void(std::string_view piece)>& take) {
  // Not cleared: most files are much smaller, and thousands of them are read.
  constexpr std::size_t size = std::size_t{1} << 18;
  const auto buffer = std::make_unique_for_overwrite<char[]>(size);
  for (;;) {
    const ssize_t count = read(source.Number(), buffer.get(), size);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw Failure();
    if (count == 0) return;
    take({buffer.get(), static_cast<std::size_t>(count)});
  }
}

}  // namespace rivelt
