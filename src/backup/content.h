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
  void Add_Byte(char byte);
  void Add_Word(std::uint64_t word);

  Content Read;
  std::uint64_t Pending = 0;  // the bytes of a word that is not complete yet, the first one lowest
};

// Failure: the file cannot be read.
Content Content_Of(const File& file);

// Whether the file has this content. One of another size is not read.
bool Has_Content(const File& file, const Content& content);

// Of the bytes of a text in memory.
Content Content_Of(Text_View text);

}  // namespace rivelt
