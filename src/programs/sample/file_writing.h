#pragma once

#include <filesystem>
#include <string_view>

#include "text/text.h"

namespace rivelt::sample {

// Both write a whole new file and throw a std::filesystem::filesystem_error that names it if that
// does not work.

// UTF-16, low byte first, behind the mark FF FE.
void Write_Text_File(const std::filesystem::path& path, Text_View text);

void Write_Bytes(const std::filesystem::path& path, std::string_view bytes);

}  // namespace rivelt::sample
