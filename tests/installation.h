// An installation on a disk in memory, and a user in front of the program, in a few words.

#pragma once

#include <string>
#include <vector>

#include "platform/memory/memory_files.h"
#include "platform/memory/memory_window.h"
#include "system/fixed_registry.h"
#include "text/primitives.h"

namespace rivelt {

using Lines = std::vector<Text>;

// The lines of a log; the text after the last line end is one more line if it is not empty.
inline Lines Lines_Of(Text_View log) {
  Lines lines;
  while (!log.empty()) {
    const std::size_t end = log.find(Line_End);
    lines.emplace_back(log.substr(0, end));
    log.remove_prefix(end == Text_View::npos ? log.size() : end + Line_End.size());
  }
  return lines;
}

inline constexpr Text_View Standard_Line =
    u"Rivelt needs to run on a computer with MSTS installed!";

class Installation {
 public:
  Installation& Global(Text_View content) { return Put(u"global\\tsection.dat", content); }

  // A route in a folder of that name; what follows goes into it.
  Installation& Route(Text_View name) {
    Current_Route = name;
    Disk.Put_Folder(Concatenate({u"\\train\\routes\\", name, u"\\world"}));
    return Put(Concatenate({u"routes\\", name, u"\\a.trk"}),
               Concatenate({u"Name ( ", name, u" )"}));
  }
  Installation& Local(Text_View content) { return Put_In_Route(u"tsection.dat", content); }
  Installation& World(Text_View name, Text_View content) {
    return Put_In_Route(Concatenate({u"world\\", name}), content);
  }
  Installation& Put(Text_View path, Text_View content) {
    Disk.Put_File(Concatenate({u"\\train\\", path}), content);
    return *this;
  }

  Text Content(Text_View path) { return Disk.Content(Concatenate({u"\\train\\", path})); }
  Lines Staged() const { return Disk.Names(u"\\train\\Quenby\\tmp"); }

  Memory_Disk Disk;

 private:
  Installation& Put_In_Route(Text_View path, Text_View content) {
    return Put(Concatenate({u"routes\\", Current_Route, u"\\", path}), content);
  }

  Text Current_Route;
};

// A small catalogue and a route that needs every kind of change.
inline constexpr Text_View Small_Catalogue =
    u"_INFO ( Build 12a) TrackSections ( 400 ) TrackShapes ( 500 "
    u"TrackShape ( 31 FileName ( keep.s ) ) TrackShape ( 77 FileName ( New.s ) ) )";
inline constexpr Text_View Small_Local =
    u"SectionCurve ( 0 ) 300 10 SectionIdx ( 1 TrackPath ( 360 1 300 )";
inline constexpr Text_View Moved_Local =
    u"SectionCurve ( 0 ) 400 10 SectionIdx ( 1 TrackPath ( 500 1 400 )";

inline Text Small_World(Text_View section, Text_View shape) {
  Text text = u"Tr_Worldfile ( Dyntrack ( ";
  for (int i = 0; i < 5; ++i) {
    text += Concatenate({u"SectionCurve ( 0 ) ", i == 0 ? section : u"4294967295", u" 0 "});
  }
  return text + Concatenate({u"SectionIdx ( ", shape, u" ) ) )"});
}

// A database with a section, a shape and a junction of the route's own, and one of the catalogue's.
inline Text Small_Database(Text_View section, Text_View shape) {
  const Text rest = u" 1 1 1 2 0 00 1 1 0 0 0 0 0 0 ";
  return Concatenate({u"TrackDB ( TrVectorSections ( 2 ", section, u" ", shape, rest, u"7 31", rest,
                      u") TrJunctionNode ( 0 ", shape, u" 0 ) )"});
}

inline void Put_Small_Route(Installation& installation, Text_View name) {
  installation.Route(name).Local(Small_Local).World(u"w-1.w", Small_World(u"300", u"360"));
  installation.World(u"w-2.W",
                     u"tr_worldfile ( TrackObj ( SectionIdx ( 5 ) FileName ( old.s ) ) )");
}

}  // namespace rivelt
