#include "platform/linux/text_streams.h"

#include <sys/stat.h>
#include <sys/uio.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <limits>
#include <utility>

#include "platform/linux/descriptor.h"
#include "platform/linux/staged_file.h"
#include "text/utf16.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

constexpr std::size_t Most_Bytes = Unit_Size * std::numeric_limits<Position>::max();

std::size_t Size_Now(const Descriptor& file) {
  struct stat state {};
  if (fstat(file.Number(), &state) != 0) throw Failure();
  return static_cast<std::size_t>(state.st_size);
}

// As readv(2), after what has been read.
std::size_t Read_More(const Descriptor& file, Utf16_Content& content) {
  const std::size_t of_first = std::min(content.Size, Unit_Size);
  const std::size_t of_rest = content.Size - of_first;
  const iovec parts[] = {{reinterpret_cast<char*>(&content.First) + of_first, Unit_Size - of_first},
                         {reinterpret_cast<char*>(content.Rest.data()) + of_rest,
                          content.Rest.size() * Unit_Size - of_rest}};
  ssize_t count = 0;
  do {
    count = readv(file.Number(), parts, 2);
  } while (count < 0 && errno == EINTR);
  if (count < 0) throw Failure();
  return static_cast<std::size_t>(count);
}

// The file may grow or shrink meanwhile: what counts is where reading finds its end. There is
// always room for more than expected, so that getting exactly that much means the end, too.
void Read_To_End(const Descriptor& file, Utf16_Content& content) {
  const std::size_t expected = Size_Now(file);
  if (expected > Most_Bytes) throw Failure();
  content.Rest.resize(expected / Unit_Size + 1);
  for (;;) {
    const std::size_t count = Read_More(file, content);
    content.Size += count;
    if (content.Size > Most_Bytes) throw Failure();
    if (count == 0 || content.Size == expected) break;
    if (content.Size == (content.Rest.size() + 1) * Unit_Size)
      content.Rest.resize(content.Rest.size() * 2);
  }
}

class Linux_Read_Stream : public Read_Stream {
 public:
  explicit Linux_Read_Stream(Descriptor source) : Source(std::move(source)) {}

  Text ReadAll() override {
    Utf16_Content content;
    Read_To_End(Source, content);
    return Decode_Utf16(std::move(content));
  }

 private:
  Descriptor Source;
};

class Linux_Write_Stream : public Write_Stream {
 public:
  Linux_Write_Stream(const std::string& path, bool overwrite, bool unicode)
      : Target(path), Overwrite(overwrite), Unicode(unicode) {}

  void Write(Text_View text) override {
    if (!Unicode) return Target.Write({}, To_Utf8(text));
    const std::string_view mark = std::exchange(Is_First, false) ? Utf16_Mark : std::string_view();
    Target.Write(mark, Bytes_Of(text));
  }

  void Close() override { Target.Take_Place(Overwrite); }

  const Descriptor& Handle() const { return Target.Handle(); }

 private:
  Staged_File Target;
  bool Overwrite;
  bool Unicode;
  bool Is_First = true;
};

struct Free_Memory {
  void operator()(char* memory) const { std::free(memory); }
};

std::string Behind_Links(const std::string& path) {
  const std::unique_ptr<char, Free_Memory> real(realpath(path.c_str(), nullptr));
  if (!real) throw Failure();
  return real.get();
}

}  // namespace

std::unique_ptr<Read_Stream> Open_Read_Stream(const std::string& path) {
  Descriptor source = Open_Regular_File(path);
  if (!source.Is_Open()) throw Failure();
  return std::make_unique<Linux_Read_Stream>(std::move(source));
}

std::unique_ptr<Write_Stream> Make_Write_Stream(const std::string& path, bool overwrite,
                                                bool unicode) {
  struct stat old {};
  if (stat(path.c_str(), &old) != 0)
    return std::make_unique<Linux_Write_Stream>(path, overwrite, unicode);
  const bool may_go = S_ISREG(old.st_mode) && (old.st_mode & S_IWUSR) != 0;
  if (!overwrite || !may_go) throw Failure();
  auto stream = std::make_unique<Linux_Write_Stream>(Behind_Links(path), overwrite, unicode);
  // Not every file system has permissions.
  static_cast<void>(fchmod(stream->Handle().Number(), old.st_mode & 0777));
  return stream;
}

}  // namespace rivelt
