// A file descriptor and its owner.

#pragma once

#include <functional>
#include <string>
#include <string_view>
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
  ~Descriptor() { Close(); }

  bool Is_Open() const { return Held >= 0; }
  int Number() const { return Held; }
  void Close();

 private:
  int Held = -1;
};

// Not open if it cannot be opened; errno says why. A child process does not get it.
Descriptor Open(const std::string& path, int flags, unsigned permissions = 0);

// Opened for reading if it is a regular file. Does not wait for anything else of that name.
Descriptor Open_Regular_File(const std::string& path);

// Hands on all that is left to read, in pieces of at most 1 MB. Failure: it cannot be read.
void Read_In_Pieces(const Descriptor& source,
                    const std::function<void(std::string_view piece)>& take);

}  // namespace rivelt
