#include "programs/sample/dynamic_track.h"

#include "programs/sample/text_file.h"

namespace rivelt::sample {
namespace {

Text Invented_Size(std::size_t place, Random_Source& random) {
  if (place % 2 == 0) return Joined(random.Decimal(200, 40000, 100), u" 0");
  const auto angle = random.Decimal(-900000, 900000, 1000000);
  return Joined(angle, u" ", random.Decimal(500, 30000, 10));
}

void Add_Sections(Text& lines, const Dynamic_Track& track) {
  for (std::size_t place = 0; place < track.Sections.size(); ++place) {
    const auto& [id, size] = track.Sections[place];
    if (id == 0) continue;
    Line(lines, 1, u"TrackSection (");
    Line(lines, 2, u"SectionCurve ( ", place % 2, u" ) ", id, u" ", size);
    Line(lines, 1, u")");
  }
}

void Add_Path(Text& lines, const Dynamic_Track& track) {
  Text ids;
  for (const Long id : track.Section_Ids()) ids += Joined(u" ", id);
  Line(lines, 1, u"TrackPath ( ", track.Shape_Id, u" ", track.Section_Ids().size(), ids, u" )");
}

}  // namespace

std::vector<Long> Dynamic_Track::Section_Ids() const {
  std::vector<Long> ids;
  for (const Dynamic_Section& section : Sections) {
    if (section.Id != 0) ids.push_back(section.Id);
  }
  return ids;
}

std::vector<Dynamic_Track> Invent_Dynamic_Tracks(std::size_t count, Long first_section,
                                                 Long first_shape, Random_Source random) {
  std::vector<Dynamic_Track> tracks(count);
  for (Dynamic_Track& track : tracks) {
    track.Shape_Id = first_shape++;
    const auto always_used = static_cast<std::size_t>(random.Below(5));
    for (std::size_t place = 0; place < track.Sections.size(); ++place) {
      if (place != always_used && !random.One_In(3)) continue;
      track.Sections[place] = {first_section++, Invented_Size(place, random)};
    }
  }
  return tracks;
}

Text Local_Catalogue(const std::vector<Dynamic_Track>& tracks) {
  std::size_t section_count = 0;
  for (const Dynamic_Track& track : tracks) section_count += track.Section_Ids().size();
  Text lines = File_Start(u"T0t");
  Line(lines, 0, u"TrackSections ( ", section_count);
  for (const Dynamic_Track& track : tracks) Add_Sections(lines, track);
  Line(lines, 0, u")");
  Line(lines, 0, u"SectionIdx ( ", tracks.size());
  for (const Dynamic_Track& track : tracks) Add_Path(lines, track);
  Line(lines, 0, u")");
  return lines;
}

}  // namespace rivelt::sample
