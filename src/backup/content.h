// A file's size and checksum: enough to know it again byte for byte.

#pragma once

#include <cstdint>
#include <string_view>

#include "system/file_service.h"

namespace rivelt {

struct Content {
  std::uint64_t Size = 0;  // in bytes
  std::uint64_t Checksum = 0;
  bool operator==(const Content&) const = default;
};

// Takes the bytes of a content piece by piece; where the pieces are cut makes no difference.
class Content_Reader {
 public:
  void Add(std::string_view bytes);
  Content Whole() const;

 private:
  Content Read;
  std::uint64_t Word = 0;  // that is not complete yet
};

// Failure: the file cannot be read.
Content Content_Of(const File& file);

// Whether the file has this content. One of another size is not read.
bool Has_Content(const File& file, const Content& content);

// Whether nobody has written the file between the two, by size and time.
inline bool Is_Unchanged(const File_State& first, const File_State& second) {
  return first.Size == second.Size && first.Modified == second.Modified;
}

// Of the bytes of a text in memory.
Content Content_Of(Text_View text);

}  // namespace rivelt
