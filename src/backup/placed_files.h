// Files by their places below a folder, "tsection.dat" or "World\w-1.w", in any letter case.

#pragma once

#include <functional>
#include <map>
#include <memory>
#include <utility>

#include "system/file_service.h"
#include "text/letter_case.h"
#include "text/text.h"

namespace rivelt {

// The part of a place after its folder.
Text_View Name_In(Text_View place);

// The part before it with its separator, or nothing.
Text_View Folder_In(Text_View place);

// Hands over every file in the folder and in all folders below it. start is the folder's place with
// its separator, or nothing.
void Walk_Files(const Folder& folder, const Text& start,
                const std::function<void(const Text& place, File& file)>& take);

// The names in a folder are read once, when the first place in it is asked for.
class Placed_Files {
 public:
  // The files must outlive the object.
  Placed_Files(File_System_Object& files, Text folder) : Files(files), Folder(std::move(folder)) {}

  const Text& Path() const { return Folder; }
  Text Path(Text_View place) const;

  // The file of that place: the one that is spelled like it, else the first that fits; null if
  // there is none.
  File* Find(Text_View place);

  // The place as it is spelled on disk, as far as it is there.
  Text Spelled(Text_View place);

  // Whether the folder has a second file that differs in letter case alone.
  bool Has_Twin(Text_View place);

  // To be called after a file has got that place. Failure: there is none.
  void Add(Text_View place);

  // To be called after the file that Find gave has been removed.
  void Forget(Text_View place);
  void Forget_All() { Known.clear(); }

  // Makes the folder of the place if it is missing.
  void Make_Folder_Of(Text_View place);

  // Returns when what is in the folders that were asked for is safe on disk.
  void Flush() const;

 private:
  using Names = std::map<Name_Key, std::unique_ptr<File>>;

  struct Known_Folder {
    Text Spelled;  // with its separator, as in a place
    Names Files;
  };

  Known_Folder& Folder_Of(Text_View place);
  Names::iterator Fitting(Names& names, Text_View place) const;

  File_System_Object& Files;
  Text Folder;
  std::map<Text, Known_Folder> Known;  // by folded name, with its separator
};

}  // namespace rivelt
