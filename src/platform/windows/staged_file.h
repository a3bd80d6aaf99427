// A file that is written beside its place and takes it when it is complete.

#pragma once

#include <string>
#include <string_view>

#include "platform/windows/win32.h"

namespace rivelt {

// A name in the folder of path for what is in the making there, another for each attempt.
std::wstring Temporary_Beside(const std::wstring& path, int attempt);

// While it is being written it is in the target's folder under a name of its own and is marked
// for deletion, so that the system removes it with its last handle, also when the process is ended
// from outside. What can be left over: an empty file, if the process ends in the instant between
// making the file and marking it; the complete one, between taking the mark off and renaming it;
// and what was written, on a volume that knows no such mark.
class Staged_File {
 public:
  // Failure: the folder takes no new file.
  explicit Staged_File(std::wstring target);
  ~Staged_File();
  Staged_File(const Staged_File&) = delete;
  Staged_File& operator=(const Staged_File&) = delete;

  void Write(std::string_view bytes);

  // Gives it the times of another file.
  void Copy_Times(HANDLE from);

  // Puts the file in its place. Without replace a target that exists is a Failure, with it a target
  // that is read-only or held open is one. After a Failure the target is as it was.
  void Take_Place(bool replace);

 private:
  bool Mark_For_Deletion(bool deleted);

  std::wstring Target;
  std::wstring Temporary_Path;
  Owned_Handle Handle;
  bool Is_Marked = false;
  bool Is_In_Place = false;
};

}  // namespace rivelt
