// Where the numbers in a route's files lead, as a text for an owner.

#pragma once

#include <vector>

#include "convert/count_references.h"
#include "text/text.h"

namespace rivelt {

struct Route_References {
  // Whether every number leads somewhere.
  bool All_Lead_Somewhere() const;

  Reference_Counter Counter;
  std::vector<Text> Unread;  // world files in which nothing was counted, each with the reason
  bool Has_Database = false;
};

// A line for each kind of reference with how many lead where, and one for the shapes that the
// catalogue does not have. The whole report has a line for each reference to nowhere and for each
// of these shapes before them; any other names the first few of each kind that lead to nowhere.
// Tabs are between the fields of a line.
Text Reference_Report(const Route_References& references, bool whole);

}  // namespace rivelt
