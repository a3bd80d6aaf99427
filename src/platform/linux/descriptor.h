// A file descriptor and its owner.

#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <utility>

namespace rivelt {

class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : Held(number) {}
  Descriptor(Descriptor&& other) noexcept : Held(std::exchange(other.Held, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(Held, other.Held);
    return *this;
  }
  ~Descriptor() {
    if (Is_Open()) close(Held);
  }

  bool Is_Open() const { return Held >= 0; }
  int Number() const { return Held; }

 private:
  int Held = -1;
};

// Not open if it cannot be opened; errno says why. A child process does not get it.
inline Descriptor Open_Descriptor(const std::string& path, int flags, unsigned permissions = 0) {
  int number = -1;
  do {
    number = open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY, permissions);
  } while (number < 0 && errno == EINTR);
  return Descriptor(number);
}

}  // namespace rivelt
