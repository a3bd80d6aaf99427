// The verbs that a system supplies. What files and folders are is written once over them.
//
// A native path leads to one place on the disk and has its names as they are there. It is a text on
// every system; "" is the working directory. Unless a verb says otherwise, its paths are native, it
// raises Failure with a reason when it cannot do its work, and the disk is then as it was.

#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "system/file_service.h"
#include "text/letter_case.h"

namespace rivelt {

enum class Kind { File, Folder, Other };

// What is under a name. Of a link all but Is_Link describes what the link leads to.
struct Entry {
  Kind What = Kind::Other;
  bool Is_Link = false;
  bool Is_Read_Only = false;
  File_State State;
};

// A file opened for reading, from its first byte on.
class Source {
 public:
  virtual ~Source() = default;

  // In bytes, when it was opened.
  virtual std::uint64_t Size() const = 0;

  // The number of bytes read, at most room. 0: there are no more.
  virtual std::size_t Read(char* bytes, std::size_t room) = 0;
};

// A file in the making, which goes when it is dropped without a name of its own.
class Draft {
 public:
  virtual ~Draft() = default;

  virtual void Write(std::string_view bytes) = 0;

  // Gives it the mode of the file at path, and on request its times, as far as the file system has
  // them. Called after the last Write.
  virtual void Take_After(const Text& path, bool with_times) = 0;

  // Returns when the content is safe from a loss of power.
  virtual void Flush() = 0;

  // Gives it the name that it was made for. With replace a file of that name makes way in the same
  // instant. False: the name is taken, and the draft can still be given it.
  virtual bool Take_Name(bool replace) = 0;
};

class File_Verbs {
 public:
  // separator is what the system puts between the names of a native path.
  explicit File_Verbs(char16_t separator) : Separator(separator) {}
  virtual ~File_Verbs() = default;
  File_Verbs(const File_Verbs&) = delete;
  File_Verbs& operator=(const File_Verbs&) = delete;

  // path is the program's; it may lead nowhere.
  virtual void Set_Root(Text_View path);

  // The native path of the program's path. None: there is nothing of that kind. Failure: the system
  // does not say.
  virtual std::optional<Text> Find(Text_View path, Kind kind) = 0;

  // Where something new belongs that has the program's path, whether or not the name is taken.
  // Failure: the path is invalid, or its folder does not exist.
  virtual Text Place(Text_View path) = 0;

  // None: nothing is there. Failure: the system does not say.
  virtual std::optional<Entry> Look(const Text& path) const = 0;

  // The names of one kind in a folder, in any order. A link is of the kind that it leads to.
  virtual std::vector<Name_Key> Names(const Text& folder, Kind kind) const = 0;

  // Failure: among others, that another program writes to the file, where the system knows.
  virtual std::unique_ptr<Source> Open(const Text& path) const = 0;

  // A new file for that path. What is at the path now is left alone.
  virtual std::unique_ptr<Draft> Make(const Text& path) = 0;

  virtual void Make_Folder(const Text& path) = 0;

  // Renames a file or folder; target is a free name. False: target is on another volume.
  virtual bool Rename(const Text& path, const Text& target) = 0;

  // Gives the file a second name. False: it has none, for whatever reason.
  virtual bool Link(const Text& path, const Text& target) = 0;

  // The file goes though it is read-only. Its name is free when this returns.
  virtual void Delete(const Text& path) = 0;

  virtual void Delete_Folder(const Text& path) = 0;

  // As File::Take_Mode_Of, of the file at path.
  virtual void Set_Mode(const Text& path, const Text& model) = 0;

  // As File_System_Object::Flush.
  virtual void Flush(const Text& folder) = 0;

  // Keeps the folder locked until the result is dropped. Null: no lock is to be had here. Failure:
  // it is locked already.
  virtual std::shared_ptr<void> Lock(const Text& folder) = 0;

  // Text in the system's narrow encoding.
  virtual std::string Narrow(Text_View text) const = 0;

  // The path of an entry of a folder.
  Text Below(Text_View folder, Text_View name) const;

  // The last name of the path.
  Text Name_Of(Text_View path) const;

  // A free name of ours in the folder of path.
  Text Temporary_Beside(const Text& path) const;

  // What could not be done with the file or folder at path, in words.
  Failure Refused(Text_View path, Text_View words) const;

 private:
  char16_t Separator;
  Text Root;  // the native path of what is in the installation's folder begins with it
};

// The files of the system that has these verbs.
std::unique_ptr<File_System_Object> Files_Over(std::unique_ptr<File_Verbs> verbs);

}  // namespace rivelt
