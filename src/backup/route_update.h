// Puts new files into a route so that it can be undone: keeps the originals before anything is
// touched, and knows every file by its bytes.

#pragma once

#include <map>
#include <optional>
#include <set>
#include <vector>

#include "backup/update_folder.h"
#include "system/file_service.h"
#include "text/text.h"

namespace rivelt {

// What an update does to one file of the route.
struct Replacement {
  Text Place;   // below the route's folder, whose sub-folder may be spelled in another letter case
  Text Source;  // where the new file waits, below Quenby; empty if the file is only removed
  std::optional<File_State> As_Checked;  // the original's when the check read it
};

class Route_Update {
 public:
  // route is the name of its folder. The files must outlive the object.
  Route_Update(File_System_Object& files, Text_View root, Text_View route)
      : Files(files), Root(root), Route(route) {}

  // Its folder: that of an update that has not finished, else a new one.
  Update_Folder& Begin();

  // Keeps every original and writes the journal; all of it is on disk on return. After an update
  // that failed goes on with that one: what it has moved must be as it left it, and what is to come
  // as it was or gone. Failure: it cannot be done; the route is as it was.
  void Keep_Originals(const std::vector<Replacement>& replacements);

  // Whether the route had a file in the place of a replacement.
  bool Has_Original(Text_View place) const;

  // To be called just before that file is deleted or, where there was none, the new one moved.
  // Failure: the place does not hold what was kept.
  void Require_As_Kept(Text_View place) const;

  // Places of the originals that were no longer what the check had read.
  std::vector<Text> Changed_Since_Check() const;

  // After the last file has moved.
  void Complete();

  // The same, if an earlier update has moved all its files and failed only then.
  void Complete_If_All_Moved();

  // Drops what was begun and has not touched the route.
  void Give_Up();

 private:
  void Take_Up_Unfinished();
  void Make_Folder();
  void Carry_Over(const std::vector<Replacement>& replacements);
  const Journal_File& Entry_Of(Text_View place) const;
  void Add(const Replacement& replacement, Journal_File file);
  Journal_File Kept(const Replacement& replacement);
  void Keep_File(File& original, Journal_File& file);
  void Require_Distinct_Originals() const;
  void Flush_Kept(const std::vector<Replacement>& replacements) const;

  File_System_Object& Files;
  Text Root;
  Text Route;
  std::optional<Update_Folder> Current;
  Journal Earlier;  // of the update that is gone on with
  Journal Entries;
  std::map<Text, std::size_t> By_Place;  // of the replacements: their entries
  std::map<Text, File_State> As_Kept;    // the originals just before they were kept, by place
  std::set<Text> Twins;                  // folded places that the route has more than once
  Journal Newly_Kept;
  Journal Dropped;  // kept for files that the update does not replace any more
};

}  // namespace rivelt
