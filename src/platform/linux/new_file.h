// A file that gets its name when it is whole.

#pragma once

#include <string>
#include <string_view>

#include "platform/linux/descriptor.h"

namespace rivelt {

// Renames unless to is taken. False: it is not renamed; errno is EEXIST if to is taken, EXDEV if
// the two are on two file systems.
bool Rename_To_Free_Name(const std::string& from, const std::string& to);

// A name in the folder of path for what is in the making there.
std::string Temporary_Beside(const std::string& path);

class New_File {
 public:
  // path is native, its folder exists. Nothing stands under it before Commit, and nothing stays of
  // a file that is dropped without. Failure: no file can be made in that folder.
  explicit New_File(const std::string& path);
  New_File(const New_File&) = delete;
  New_File& operator=(const New_File&) = delete;
  ~New_File();

  // Appends head and body. After a Failure the file is lost.
  void Write(std::string_view head, std::string_view body);

  // Permissions and, for a copy, times can be set through it.
  const Descriptor& Handle() const { return Content; }

  // Gives the file its name, called once. With replace a file of that name makes way in the same
  // instant, without it is a Failure. After a Failure the file is lost, and an older one as it was.
  void Commit(bool replace);

 private:
  void Open_Beside();
  void Link_Beside();
  void Make_Sure_It_Is_Stored() const;
  bool Link(const std::string& path) const;

  std::string Path;
  Descriptor Content;
  std::string Temporary;  // empty as long as the file has no name at all
  bool Is_Whole = true;
};

}  // namespace rivelt
