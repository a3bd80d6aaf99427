// Where things are in an installation: every path is spelled here, by plain concatenation onto the
// installation's root. Letter case does not count in a path, so that what is read as "\routes" and
// what an update replaces in "\Routes" is one folder: each keeps the spelling that the procedures
// give it.

#pragma once

#include <array>

#include "text/primitives.h"
#include "text/text.h"

namespace rivelt::places {

// The catalogue's name, in the installation and in a route.
inline constexpr Text_View Tsection = u"tsection.dat";
inline constexpr Text_View World_Folder = u"World";

inline Text Below(Text_View folder, Text_View name) {
  return Concatenate({folder, u"\\", name});
}

// The global catalogue.
inline Text Catalogue(Text_View root) {
  return Concatenate({root, u"\\global\\", Tsection});
}

inline Text Routes(Text_View root) {
  return Concatenate({root, u"\\routes"});
}
inline Text Route(Text_View root, Text_View route_folder) {
  return Concatenate({root, u"\\routes\\", route_folder});
}
inline Text Local_Catalogue(Text_View root, Text_View route_folder) {
  return Below(Route(root, route_folder), Tsection);
}
inline Text World(Text_View root, Text_View route_folder) {
  return Concatenate({root, u"\\routes\\", route_folder, u"\\world"});
}

// The folder of everything that the program writes beside the routes.
inline Text Quenby(Text_View root) {
  return Concatenate({root, u"\\Quenby"});
}
inline Text Backups(Text_View root) {
  return Concatenate({root, u"\\Quenby\\backup"});
}
// The folder of all updates of a route.
inline Text Updates(Text_View root, Text_View route_folder) {
  return Concatenate({root, u"\\Quenby\\backup\\", route_folder});
}

// Below Quenby.
inline constexpr Text_View Staging_Name = u"tmp";

inline Text Staging(Text_View root) {
  return Concatenate({root, u"\\Quenby\\tmp"});
}

// Of a route's track database and road database.
inline constexpr std::array<Text_View, 2> Database_Endings = {u".tdb", u".rdb"};

// The converted databases of a route, which the flat files' count and walk leave alone.
inline constexpr Text_View Databases_Folder = u"route";

inline Text Staged_Databases(Text_View root) {
  return Below(Staging(root), Databases_Folder);
}

// A catalogue of the route's own, which one simulator reads in place of the global one.
inline Text Own_Catalogue(Text_View root, Text_View route_folder) {
  return Concatenate({root, u"\\routes\\", route_folder, u"\\OpenRails\\", Tsection});
}

// Where a staged file goes below the route's folder. Its exact name decides.
inline Text Place_Of_Staged(Text_View name) {
  return name == Tsection ? Text(name) : Below(World_Folder, name);
}
inline Text Destination(Text_View root, Text_View route_folder, Text_View place) {
  return Concatenate({root, u"\\Routes\\", route_folder, u"\\", place});
}

}  // namespace rivelt::places
