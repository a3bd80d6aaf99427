// The folder of one update of a route.
//
//   Quenby\backup\FOLDER\2026-11-22 20.15.07              of a finished update of the route in
//   FOLDER Quenby\backup\FOLDER\2026-11-22 20.15.07.unfinished   of one that has not finished
//     tsection.dat, World\...   the originals, in the layout of the route
//     journal.txt               written when all originals are kept; without it, or if it is not
//                               whole, the update has touched nothing
//     all moved                 there once the last new file is in the route
//     changed since\...         files that somebody changed, set aside when it was rolled back
//     .rivelt-new\...           of a restore: the files that it puts into the route

#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "backup/decision.h"
#include "backup/journal.h"
#include "backup/placed_files.h"
#include "system/file_service.h"
#include "text/text.h"

namespace rivelt {

inline constexpr Text_View Journal_Name = u"journal.txt";
inline constexpr Text_View All_Moved_Name = u"all moved";
inline constexpr Text_View Changed_Since_Name = u"changed since";
inline constexpr Text_View New_Files_Name = u".rivelt-new";

class Update_Folder {
 public:
  // route and name are those of folders. The files must outlive the object.
  Update_Folder(File_System_Object& files, Text_View root, Text_View route, Text_View name);

  const Text& Path() const { return Kept.Path(); }

  // Nothing if there is no whole one.
  std::optional<Journal> Read() const;
  void Write(const Journal& journal);

  // The file of the route that holds one of the two places of a file of the journal; null if there
  // is none.
  std::unique_ptr<File> Holder_Of(const Journal_File& file, Text_View place) const;

  // A file of the route that holds the place of one of the journal.
  struct Holder {
    std::unique_ptr<File> Held;
    Found Kind;
  };

  // As a rule one, none where there is no file, two where somebody has added one that differs in
  // letter case.
  std::vector<Holder> Holders_Of(const Journal_File& file) const;

  Found Found_Of(const Journal_File& file) const;
  Outcome Outcome_Of(const Journal& journal) const;

  // Where the kept original is the route's own file, makes it a copy, or editing the route would
  // change both.
  void Detach(const Journal_File& file);

  // Files in the making that a killed process has left in the route and where it is staged. One
  // that goes to another disk has such a name until its copy is there.
  void Delete_Temporaries();

  // Makes it the folder of a finished update.
  void Complete();

  // Deletes the kept originals of these entries, as far as their bytes are the known ones or the
  // route has them.
  void Discard_Kept(const Journal& journal);

  // Removes the folder of an update that has left nothing in the route. What the journal does not
  // know stays, in a folder that has lost its ending. Without a journal the folder loses only what
  // the route has as well.
  void Discard(const Journal& journal);

  Placed_Files Kept;
  Placed_Files Route;

 private:
  Found Kind_Of(const Journal_File& file, const File& found) const;
  bool Is_Waiting(const Journal_File& file) const;
  bool Is_In_Route(Text_View place, const Content& content) const;
  void Remove_New_Files();
  void Delete_If_There(Text_View name);
  Text Lose_Ending() const;

  File_System_Object& Files;
  Text Quenby;
  Text Parent;
};

// The folders of the route's updates, those that have not finished with their ending.
std::vector<Text> Update_Folders(File_System_Object& files, Text_View root, Text_View route);

}  // namespace rivelt
