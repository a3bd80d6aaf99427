// What a file holds, in short: enough to know it again byte for byte.

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
  void Add_Word(std::uint64_t word);

  Content Read;
  std::uint64_t Pending = 0;  // the bytes of a word that is not complete yet, the first one lowest
};

// Failure: the file cannot be read.
Content Content_Of(const File& file);

// Of the bytes of a text in memory.
Content Content_Of(Text_View text);

}  // namespace rivelt
