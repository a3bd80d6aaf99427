// The references of a whole route. Its files are read and left as they are.

#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "app/file_service.h"
#include "convert/count_references.h"
#include "convert/rebase_tsection.h"
#include "text/text.h"

namespace rivelt {

// A file or folder that is there and cannot be read, or is not of its form.
struct Unreadable_File : Failure {
  explicit Unreadable_File(Text name) : Name(std::move(name)) {}
  Text Name;
};

// Every operation can fail with Unreadable_File. A route without a local file has no numbers of its
// own, one without databases no references from them.
class Route_References {
 public:
  // Reads the catalogue and the route's tsection.dat. Before each file it calls before_file, which
  // may throw to end the work.
  Route_References(File_System_Object& files, Text root, Text route,
                   std::function<void()> before_file);

  // What a conversion would add to the route's own numbers.
  Long Section_Delta() const { return Local.Section_Delta; }
  Long Shape_Delta() const { return Local.Shape_Delta; }

  void Count_Paths();
  void Count_World();
  void Count_Databases();

  const Reference_Count& Of(Reference_Kind kind) const { return Counter.Of(kind); }

  // World files that are binary, so that nothing in them was counted.
  const std::vector<Text>& Binary_Files() const { return Binary; }

 private:
  struct Installed_Catalogue {
    Catalogue_Numbers Numbers;
    std::function<Long(Text_View)> Shape_Id;
    Long Reserved_Sections = 0;
    Long Reserved_Shapes = 0;
  };

  Installed_Catalogue Read_Catalogue();
  Rebased_Tsection Read_Local();
  void Count_World_File(File& file);
  void Count_Database(const Text& name);
  Text Read(File& file);

  File_System_Object& Files;
  Text Root;
  Text Route;
  std::function<void()> Before_File;
  Installed_Catalogue Global;
  Rebased_Tsection Local;
  Reference_Counter Counter;
  std::vector<Text> Binary;
};

}  // namespace rivelt
