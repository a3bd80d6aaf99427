// Backups of the older form: flat folders "FOLDER 2026-11-22 20.15.07" in Quenby\backup, each with
// the originals of one update of the route in FOLDER under their names alone.

#pragma once

#include <vector>

#include "backup/backup_name.h"
#include "system/file_service.h"
#include "text/text.h"

namespace rivelt {

// Of all routes, in the order of their folders.
std::vector<Flat_Backup_Name> Flat_Backups(File_System_Object& files, Text_View root);

Text Flat_Backup_Path(Text_View root, const Flat_Backup_Name& name);

// The place of one of its files in the route: the local tsection.dat, in any letter case, is in the
// route's folder, every other file in its World folder.
Text Place_In_Route(Text_View flat_name);

// The time of the route's newest one; empty if it has none.
Text Newest_Flat_Backup(File_System_Object& files, Text_View root, Text_View route);

bool Has_Unfinished_Flat_Backups(File_System_Object& files, Text_View root);

// Gives the folders "FOLDER.unfinished" of the older form, of updates that were interrupted, the
// names of finished ones: nothing in them says what the route has. Gives the routes' folders.
std::vector<Text> Keep_Unfinished_Flat_Backups(File_System_Object& files, Text_View root);

}  // namespace rivelt
