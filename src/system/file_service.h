// What the program asks of files. Each system has a back end that implements these classes.
//
// Paths are texts with "\" or "/" between their components, several in a row like one. Letter case
// of a component does not count. Where a folder can hold several entries that differ in letter case
// alone, every spelling of a folder below the installation's root leads to the same one, the first
// in the order of a walk, and the others are in no walk. The root itself and a file at the end of a
// path are taken as spelled where that exists, else as the first entry that fits. A file or folder
// that is made gets its own name as given.
//
// A file in the making has a name that begins with Temporary_Prefix, where it needs one before its
// own; so has a file on its way to another volume or to its deletion, where the system needs it.
// None outlives its operation unless the process is killed.
//
// Every operation that fails raises Failure; none reports a status. What is on disk is then as it
// was before the operation. The reason is a path, below the installation's root where it is in it,
// and the system's words; of what does not exist it is the path as given.

#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "text/text.h"

namespace rivelt {

inline constexpr Text_View Temporary_Prefix = u".rivelt-";

// The reason of a Failure to lock a folder.
inline constexpr Text_View Locked_By_Another = u"another Rivelt is at work on this installation";

// A file opened for reading. The file is let go when the stream is dropped.
class Read_Stream {
 public:
  virtual ~Read_Stream() = default;

  // The whole content as one text, called once. FF FE at its start is dropped, FE FF too and means
  // that the bytes of each unit are swapped; without a mark the low byte comes first. An odd last
  // byte becomes a unit of its own, an empty file the empty text. Failure: 2^31 units or more.
  virtual Text ReadAll() = 0;
};

// A file being written. It appears under its name, complete, when Close returns, and not
// before: a stream that is dropped without Close, a failure or the end of the process leaves
// nothing of it, and an older file of that name as it was. After a loss of power an older file is
// as it was or replaced as a whole; a new one is safe after Flush.
class Write_Stream {
 public:
  virtual ~Write_Stream() = default;

  // Nothing is added to the text but, in a UTF-16 file, the mark FF FE before the first.
  virtual void Write(Text_View text) = 0;
  virtual void Close() = 0;
};

// The items of a folder as they were when it was asked, in the order of their names: letter case
// does not count, between equals the code units decide.
template <class Item>
class Collection {
 public:
  explicit Collection(std::vector<std::unique_ptr<Item>> items) : Items(std::move(items)) {}

  Long Count() const { return static_cast<Long>(Items.size()); }
  auto begin() const { return Items.begin(); }
  auto end() const { return Items.end(); }

  // The items, for a caller that keeps them.
  std::vector<std::unique_ptr<Item>> Take() && { return std::move(Items); }

 private:
  std::vector<std::unique_ptr<Item>> Items;
};

// The arguments of OpenAsTextStream.
inline constexpr int For_Reading = 1;
inline constexpr int Format_Unicode = -1;

// Which file it is, whatever its names. Two names of one file have one identity; a file keeps its
// own when it is renamed and when it is written in place.
struct File_Identity {
  std::uint64_t Volume = 0;
  std::uint64_t Index = 0;
  bool operator==(const File_Identity&) const = default;
};

struct File_State {
  std::uint64_t Size = 0;     // in bytes
  std::int64_t Modified = 0;  // when its content last changed: nanoseconds since 1970, UTC
  std::int64_t Came = 0;      // likewise, when it got its newest name, as far as the system knows
  File_Identity Identity;
  std::uint32_t Names = 1;  // under which the file system knows it
};

class File {
 public:
  virtual ~File() = default;

  // Without the path, as it is on disk.
  virtual Text name() const = 0;

  // mode is For_Reading, format is Format_Unicode.
  virtual std::unique_ptr<Read_Stream> OpenAsTextStream(int mode, int format) = 0;

  // With force a read-only file goes too; without, it is a Failure. The name is free afterwards,
  // though another program may have the file open, and other names of the file lead to it as it is.
  virtual void Delete(bool force) = 0;

  // Moves the file to target_path, on another volume too, with its mode and times. target_path must
  // not exist. After a Failure the file is where it was and target_path is as it was. The two names
  // never exist at once: across volumes the file first gives up its name to one of ours, when its
  // content is safe from a loss of power on the other. The names are safe after Flush.
  virtual void Move(Text_View target_path) = 0;

  // Copies the file to target_path, which must not exist, with its mode and times. All or nothing.
  virtual void Copy(Text_View target_path) = 0;

  // As Copy, but a file that has one name gets a second one, where the file system can: it costs no
  // room, and what replaces or deletes one of the names leaves the other as it was. A file that is
  // written in place changes under both.
  virtual void Keep(Text_View target_path) = 0;

  // Makes the file read-only or not, as the file at path is; where files have permissions, its
  // permissions become those of that file. Nothing happens where the file system has neither.
  virtual void Take_Mode_Of(Text_View path) = 0;

  // As it is now. Failure: the file has gone.
  virtual File_State State() const = 0;

  // Hands all bytes of the file to take, from the first to the last, in pieces of at most 1 MB. All
  // pieces but the last have one size, a multiple of 8.
  virtual void Read_Bytes(const std::function<void(std::string_view piece)>& take) const = 0;
};

class Folder {
 public:
  virtual ~Folder() = default;

  // Without the path, as it is on disk.
  virtual Text name() const = 0;

  // The folders in this one, links to folders among them.
  virtual Collection<Folder> SubFolders() const = 0;

  // The regular files in this folder, links to files among them.
  virtual Collection<File> Files() const = 0;
};

// Holds other programs off a folder. Let go when it is dropped, and by the end of the process.
class Folder_Lock {
 public:
  virtual ~Folder_Lock() = default;

  // Whether it still holds: not if another folder has taken the place of the one that was locked.
  virtual bool In_Force() const = 0;
};

class File_System_Object {
 public:
  virtual ~File_System_Object() = default;

  // Where the installation is, whether or not it exists. Nothing to know for a system on which no
  // two entries of a folder differ in letter case alone.
  virtual void Set_Root(Text_View) {}

  // Failure: there is no such file.
  virtual std::unique_ptr<File> GetFile(Text_View path) = 0;

  // Failure: there is no such folder, or its place is taken by something else.
  virtual std::unique_ptr<Folder> GetFolder(Text_View path) = 0;

  // Failure: the system cannot say whether it exists.
  virtual bool FolderExists(Text_View path) = 0;

  // One level: the parent must exist, the folder must not.
  virtual void CreateFolder(Text_View path) = 0;

  // unicode makes UTF-16 text, low byte first; without it the text is narrow, in the system's
  // encoding (the ANSI code page on Windows, where a character that it lacks becomes "?"; UTF-8
  // elsewhere). Failure: without overwrite, a file of that name exists.
  virtual std::unique_ptr<Write_Stream> CreateTextFile(Text_View path, bool overwrite,
                                                       bool unicode) = 0;

  // force as in File::Delete. Failure: there is no such file.
  virtual void DeleteFile(Text_View path, bool force) = 0;

  // As GetFile, but null if there is no such file. Failure: the system cannot say.
  virtual std::unique_ptr<File> FindFile(Text_View path) = 0;

  // Gives the folder another name in its parent, which must be free.
  virtual void MoveFolder(Text_View path, Text_View target_path) = 0;

  // Failure: the folder is not empty.
  virtual void DeleteFolder(Text_View path) = 0;

  // Returns when the names in the folder and the content of its files are safe from a loss of
  // power. Failure: the disk reports that it has lost something or is full. A file system that
  // cannot flush, as some across a network, is no Failure.
  virtual void Flush(Text_View folder_path) = 0;

  // Failure: another program holds the folder locked, or this one does already. Where the file
  // system has no locks, the result is in force and holds nobody off.
  virtual std::unique_ptr<Folder_Lock> Lock(Text_View folder_path) = 0;
};

}  // namespace rivelt
