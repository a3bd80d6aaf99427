#include "programs/sample/dynamic_track.h"

#include <cstdint>

#include "programs/sample/text_lines.h"
#include "text/primitives.h"

namespace rivelt::sample {
namespace {

bool Is_Curved(std::size_t place) {
  return place % 2 == 1;
}

Text Invented_Size(std::size_t place, Random_Source& random) {
  if (!Is_Curved(place)) return Decimal(random.Between(200, 40000), 2) + u" 0";
  const std::int64_t angle = random.Between(-900000, 900000);
  const Text radius = Decimal(random.Between(500, 30000), 1);
  return Concatenate({Decimal(angle, 6), u" ", radius});
}

Text Path(const Dynamic_Track& track) {
  Text ids;
  std::int64_t count = 0;
  for (const Dynamic_Section& section : track.Sections) {
    if (section.Id == 0) continue;
    ids += Concatenate({u" ", Whole_Number(section.Id)});
    ++count;
  }
  return Concatenate({Whole_Number(track.Shape_Id), u" ", Whole_Number(count), ids});
}

}  // namespace

Text_View Curve_Mark(std::size_t place) {
  return Is_Curved(place) ? u"1" : u"0";
}

std::vector<Dynamic_Track> Invent_Dynamic_Tracks(std::size_t count, Long first_section,
                                                 Long first_shape, Random_Source random) {
  std::vector<Dynamic_Track> tracks(count);
  for (Dynamic_Track& track : tracks) {
    track.Shape_Id = first_shape++;
    const std::size_t always_used = static_cast<std::size_t>(random.Below(5));
    for (std::size_t place = 0; place < track.Sections.size(); ++place) {
      if (place != always_used && !random.One_In(3)) continue;
      track.Sections[place] = {first_section++, Invented_Size(place, random)};
    }
  }
  return tracks;
}

Text Local_Catalogue(const std::vector<Dynamic_Track>& tracks) {
  Text_Lines records(u"T0t");
  std::int64_t section_count = 0;
  for (const Dynamic_Track& track : tracks) {
    for (const Dynamic_Section& section : track.Sections) section_count += section.Id != 0 ? 1 : 0;
  }
  records.Line(0, {u"TrackSections ( ", Whole_Number(section_count)});
  for (const Dynamic_Track& track : tracks) {
    for (std::size_t place = 0; place < track.Sections.size(); ++place) {
      const Dynamic_Section& section = track.Sections[place];
      if (section.Id == 0) continue;
      records.Line(1, {u"TrackSection ("});
      records.Line(2, {u"SectionCurve ( ", Curve_Mark(place), u" ) ", Whole_Number(section.Id),
                       u" ", section.Size});
      records.Line(1, {u")"});
    }
  }
  records.Line(0, {u")"});
  records.Line(0, {u"SectionIdx ( ", Whole_Number(static_cast<std::int64_t>(tracks.size()))});
  for (const Dynamic_Track& track : tracks) records.Line(1, {u"TrackPath ( ", Path(track), u" )"});
  records.Line(0, {u")"});
  return records.Whole();
}

}  // namespace rivelt::sample
