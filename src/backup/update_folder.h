// The folder of one update of a route. In Quenby\backup\FOLDER, where FOLDER is the route's:
//
//   2026-11-22 20.15.07              of a finished update
//   2026-11-22 20.15.07.unfinished   of one that has not finished
//
// In it:
//
//   tsection.dat, World\...   the originals, in the route's layout and spelling
//   journal.txt               written when all originals are kept. Without one the update has
//                             touched nothing, or it was rolled back and what is left was set aside
//   changed since\...         files that somebody changed, set aside when it was rolled back
//   .rivelt-new\...           new files that the update has made itself

#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "backup/journal.h"
#include "backup/placed_files.h"
#include "system/file_service.h"
#include "text/text.h"

namespace rivelt {

inline constexpr Text_View Journal_Name = u"journal.txt";
inline constexpr Text_View Unflushed_Journal_Name = u".rivelt-journal";  // until it is on disk
inline constexpr Text_View Changed_Since_Name = u"changed since";
inline constexpr Text_View New_Files_Name = u".rivelt-new";

// The route in that folder of the installation at Root. The files must outlive it.
struct Updated_Route {
  File_System_Object& Files;
  Text Root;
  Text Folder;
};

enum class Found : std::uint8_t {
  Original,  // what was there, or the very file that is kept, edited in place
  New,       // what the update puts there
  Gone,      // nothing, though there was a file
  Other,     // somebody has changed it
};

struct Finding {
  Found What;
  bool Is_Both = false;  // original and new file are the same, and this is what was found
  bool Waits = false;    // the new file is still where the update takes it from

  bool Is_New() const { return What == Found::New || Is_Both; }

  // The update moved the file, and somebody changed it later.
  bool Has_Come() const { return What == Found::Other && !Waits; }
};

enum class Outcome : std::uint8_t {
  Finished,     // only its last steps are missing
  Untouched,    // nothing in the route is the update's
  Left,         // somebody has changed every file, so that its numbers are unknown
  Rolled_Back,  // the originals are put back
};

Outcome Decide(const std::vector<Finding>& files);

class Update_Folder {
 public:
  Update_Folder(const Updated_Route& route, Text_View name);

  const Text& Path() const { return Kept.Path(); }

  bool Has_Journal() const;

  // Nothing if there is none or it is not whole. Failure: it cannot be read.
  std::optional<Journal> Read() const;
  void Write(const Journal& journal, Text_View name);

  Finding Look(const Journal_File& file);
  Outcome Look(const Journal& journal);

  // The kept original. Failure, which names it: it is not there, or has not the journal's bytes.
  File& Original_Of(const Journal_File& file);

  // Hands over every file in it but the journal.
  void Walk(const std::function<void(const Text& place, File& file)>& take) const;

  // Whether the route has every kept file byte for byte.
  bool Is_All_In_Route();

  // Makes it the folder of a finished update.
  void Finish();

  // Removes the folder of an update that has left nothing in the route. What the route does not
  // have byte for byte stays, in a folder that has lost its ending.
  void Remove();

  Placed_Files Kept;
  Placed_Files Route;
  Placed_Files Waiting;  // below Quenby

 private:
  bool Can_Go(Text_View place, const File& file);
  void Remove_Empty(const Text& path);
  void Lose_Ending();

  File_System_Object& Files;
  Text Parent;
};

// The folders of the route's updates, in the order of their times.
std::vector<Text> Update_Folders(const Updated_Route& route);
std::vector<Text> Unfinished_Updates(const Updated_Route& route);

}  // namespace rivelt
