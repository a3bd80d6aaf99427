#include "platform/windows/text_streams.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "platform/windows/ansi.h"
#include "platform/windows/file_actions.h"
#include "platform/windows/paths.h"
#include "platform/windows/staged_file.h"
#include "platform/windows/win32.h"
#include "text/utf16.h"

namespace rivelt {
namespace {

class Windows_Read_Stream : public Read_Stream {
 public:
  explicit Windows_Read_Stream(const std::wstring& path) : Handle(Open_For_Reading(path)) {}

  Text ReadAll() override {
    LARGE_INTEGER size{};
    Require(GetFileSizeEx(Handle.get(), &size));
    constexpr LONGLONG most = Unit_Size * LONGLONG{std::numeric_limits<Position>::max()};
    Require(size.QuadPart <= most);
    const auto byte_count = static_cast<std::size_t>(size.QuadPart);
    Utf16_Content content{.Rest = Text(byte_count / Unit_Size, u'\0'), .Size = byte_count};
    const std::size_t of_first = std::min(byte_count, Unit_Size);
    Read_Bytes(reinterpret_cast<char*>(&content.First), of_first);
    Read_Bytes(reinterpret_cast<char*>(content.Rest.data()), byte_count - of_first);
    return Decode_Utf16(std::move(content));
  }

 private:
  void Read_Bytes(char* bytes, std::size_t count) {
    while (count > 0) {
      constexpr std::size_t most = std::size_t{1} << 26;
      DWORD read = 0;
      Require(
          ReadFile(Handle.get(), bytes, static_cast<DWORD>(std::min(count, most)), &read, nullptr));
      Require(read > 0);
      bytes += read;
      count -= read;
    }
  }

  Owned_Handle Handle;
};

class Windows_Write_Stream : public Write_Stream {
 public:
  Windows_Write_Stream(std::wstring path, bool overwrite, bool unicode)
      : Output(std::move(path)), Overwrite(overwrite), Unicode(unicode) {}

  void Write(Text_View text) override {
    if (!Unicode) return Output.Write(To_Ansi(text));
    if (std::exchange(Is_First, false)) Output.Write(Utf16_Mark);
    Output.Write(Bytes_Of(text));
  }

  void Close() override { Output.Take_Place(Overwrite); }

 private:
  Staged_File Output;
  bool Overwrite;
  bool Unicode;
  bool Is_First = true;
};

}  // namespace

std::unique_ptr<Read_Stream> Open_Read_Stream(const std::wstring& path) {
  return std::make_unique<Windows_Read_Stream>(path);
}

std::unique_ptr<Write_Stream> Make_Write_Stream(const std::wstring& path, bool overwrite,
                                                bool unicode) {
  const Path_State old = State_Of(path);
  Require(!old.Exists || (overwrite && !old.Is_Folder && !old.Is_Read_Only));
  return std::make_unique<Windows_Write_Stream>(path, overwrite, unicode);
}

}  // namespace rivelt
