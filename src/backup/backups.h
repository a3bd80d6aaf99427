// The originals that an Update replaces, kept so that it can be taken back.
//
//   Quenby\backup\FOLDER.unfinished           of an Update of the route in FOLDER that goes on
//   Quenby\backup\FOLDER 2026-11-22 20.15.07  of one that has come to its end, by local time
//
// Each holds files under the names that they have in the route, flat. From the moment in which the
// first file of a route is deleted to the moment in which the last new one stands, every original
// is in the route or in its .unfinished folder, so that the route can be made what it was. An empty
// .rivelt-NAME in there is for a new file whose original has that name in other letter case.

#pragma once

#include <cstdint>
#include <vector>

#include "app/file_service.h"
#include "text/text.h"

namespace rivelt {

// The file of a route's own that is staged and kept beside its world files.
inline constexpr Text_View Local_File = u"tsection.dat";

// Whether the name is that of the local file in any letter case.
bool Is_Local_File(Text_View name);

// Where the file of a route's own goes by its name: the local tsection.dat into the route's folder,
// any other into its World folder.
Text Route_File_Path(Text_View root, Text_View route_folder, bool is_tsection, Text_View name);

struct Backup {
  Text Route_Folder;
  Text Time;  // 2026-11-22 20.15.07
  Long Files = 0;
  std::uint64_t Bytes = 0;
};

class Backups {
 public:
  // root is the installation's. The files must outlive the object.
  Backups(File_System_Object& files, Text_View root) : Files(files), Root(root) {}

  // Keeps every file of the route that one of the new files will replace, in the route's
  // .unfinished folder, and forces it and new_files_folder to disk. What is kept there already
  // stays. Failure: it cannot be done, or two new files would replace the same one; nothing is kept
  // that was not before.
  void Keep_Originals(Text_View route_folder, const Collection<File>& new_files,
                      Text_View new_files_folder);

  // Marks the kept originals as those of an Update that has come to its end.
  void Complete(Text_View route_folder);

  // The folders of the routes whose last Update has not come to its end.
  std::vector<Text> Unfinished() const;

  bool Is_Unfinished(Text_View route_folder) const;

  // Puts the originals back over the route's files. Failure: some may be back, but all are still
  // kept; it can be tried again.
  void Take_Back(Text_View route_folder);

  // Completed ones, in the order of routes, the oldest first.
  std::vector<Backup> List() const;

  // Copies the files of a backup over the route's, which go into a new backup. Failure: there is no
  // such backup, or not all files could be copied; what was replaced can be taken back then.
  void Restore(const Backup& backup);

 private:
  Text Parent_Folder() const { return Root + u"\\Quenby\\backup"; }
  Text Unfinished_Folder(Text_View route_folder) const;
  Text Completed_Folder(Text_View route_folder, Text_View time) const;
  Text Original_Path(Text_View route_folder, Text_View name) const;
  void Make_Folder(const Text& path);
  void Remove_New_One(Text_View route_folder, Text_View name);
  void Put_Back(Text_View route_folder, File& original);
  void Delete_Temporaries(const Text& folder);
  void Flush_Route(Text_View route_folder);

  File_System_Object& Files;
  Text Root;
};

}  // namespace rivelt
