// The references of a whole route. Its files are read and left as they are.

#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "convert/count_references.h"
#include "convert/rebase_tsection.h"
#include "system/file_service.h"
#include "text/text.h"

namespace rivelt {

// A file or folder that is there and cannot be read, or is not of its form.
struct Unreadable_File : Failure {
  explicit Unreadable_File(Text name) : Name(std::move(name)) {}
  Text Name;
};

// So many of a route's own numbers.
struct Left_Behind {
  Long In_Databases = 0;
  Long In_Track_Objects = 0;
};

// Every operation can fail with Unreadable_File. A route without a local file has no numbers of its
// own, one without databases no references from them.
class Route_References {
 public:
  // Reads the catalogue and the route's tsection.dat. Before each file it calls before_file, which
  // may throw to end the work.
  Route_References(File_System_Object& files, Text root, Text route,
                   std::function<void()> before_file);

  void Count_Paths();
  void Count_World();
  void Count_Databases();

  // What a conversion leaves on the old numbers unless it is one of the whole route.
  Left_Behind Count_Left_Behind();

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
  // Each of the files that is there, and of the world files each that is not binary, by its name
  // below the route's folder.
  using Take = std::function<void(Text_View name, Text_View text)>;
  void Read_World(const Take& take);
  void Read_Databases(const Take& take);
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
