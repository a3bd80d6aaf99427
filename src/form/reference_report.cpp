#include "form/reference_report.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <numeric>
#include <set>
#include <utility>

#include "text/primitives.h"

namespace rivelt {
namespace {

constexpr std::pair<Reference_Kind, Text_View> Named_Kinds[] = {
    {Reference_Kind::Track_Object, u"Track objects"},
    {Reference_Kind::Dynamic_Section, u"Sections of dynamic tracks"},
    {Reference_Kind::Dynamic_Shape, u"Shapes of dynamic tracks"},
    {Reference_Kind::Path_Section, u"Sections of track paths"},
    {Reference_Kind::Database_Section, u"Sections in databases"},
    {Reference_Kind::Database_Shape, u"Shapes in databases"},
    {Reference_Kind::Junction, u"Junctions in databases"},
};
static_assert(std::size(Named_Kinds) == Reference_Kinds);

constexpr Text_View Places[] = {u"to the catalogue", u"to the route's own", u"to nowhere"};
constexpr std::size_t Most_Shown = 3;

Text Line(std::initializer_list<Text_View> fields) {
  Text line;
  for (const Text_View field : fields) line += Concatenate({line.empty() ? u"" : u"\t", field});
  return line + Text(Line_End);
}

Text_View Place(Leads where) {
  return Places[static_cast<std::size_t>(where)];
}

Text Counted(Double count, Text_View what = u"") {
  return Concatenate({Trim_Text(Number_Text(count)), what.empty() ? u"" : u" ", what});
}

Text Count_Line(Text_View kind, const Reference_Count& count) {
  const Long total = std::accumulate(count.Numbers.begin(), count.Numbers.end(), Long{0});
  const auto leading = [&](Leads where) { return Counted(count.Of(where), Place(where)); };
  return Line({kind, Counted(total, u"references"), leading(Leads::To_Catalogue),
               leading(Leads::To_Own), leading(Leads::To_Nowhere)});
}

Text Lost_Lines(Text_View kind, const Reference_Count& count, std::size_t most) {
  Text lines;
  for (std::size_t i = 0; i < std::min(count.Lost.size(), most); ++i) {
    lines += Line({u"  to nowhere", kind, count.Lost[i].File, Counted(count.Lost[i].Number)});
  }
  return lines;
}

Text Unknown_Count_Line(const Reference_Counter::Unknown_Shapes& unknown) {
  std::set<Text> names;
  Long objects = 0;
  for (const auto& [key, shape] : unknown) {
    names.insert(key.first);
    objects += shape.Objects;
  }
  return Line({u"Unknown shapes", Counted(static_cast<Double>(names.size())),
               Counted(objects, u"track objects")});
}

}  // namespace

bool Route_References::All_Lead_Somewhere() const {
  return Has_Database && std::ranges::all_of(Named_Kinds, [this](const auto& named) {
           return Counter.Of(named.first).Lost.empty();
         });
}

Text Reference_Report(const Route_References& references, bool whole) {
  const Reference_Counter& counter = references.Counter;
  Text counts;
  Text lost;
  for (const auto& [kind, name] : Named_Kinds) {
    counts += Count_Line(name, counter.Of(kind));
    (whole ? lost : counts) +=
        Lost_Lines(name, counter.Of(kind), whole ? counter.Of(kind).Lost.size() : Most_Shown);
  }
  counts += Unknown_Count_Line(counter.Unknown());
  for (const Text& file : references.Unread) counts += Line({u"Passed over", file});
  if (!references.Has_Database) counts += Line({u"No track database"});
  if (!whole) return counts;
  for (const auto& [key, shape] : counter.Unknown()) {
    lost += Line({u"  unknown shape", shape.Name, Counted(shape.Number),
                  Counted(shape.Objects, u"track objects"), shape.First_File, Place(shape.Where)});
  }
  return lost + counts;
}

}  // namespace rivelt
