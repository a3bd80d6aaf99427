#include "naive_passes.h"

#include <algorithm>
#include <optional>
#include <regex>
#include <string>
#include <utility>
#include <vector>

#include "text/primitives.h"

namespace rivelt::naive {
namespace {

constexpr Text_View Blanks = u" \t\r\n";

// The ")" that balances the "(" at open, or 0.
Position Walk(const Text& text, Position open) {
  int depth = 1;
  for (auto i = static_cast<std::size_t>(open); i < text.size(); ++i) {
    if (text[i] == u'(') ++depth;
    if (text[i] == u')') --depth;
    if (depth == 0) return static_cast<Position>(i + 1);
  }
  return 0;
}

// Takes the section record at p, up to the blank after its number, off the rest.
Double Take_Section(Position p, Text& rest, Text& output) {
  p = Find_Text(p, rest, u")");
  if (p == 0) throw Failure();
  output += Left_Text(rest, p);
  const Position q = Find_Text(p + 4, rest, u" ");
  const Text field(Mid_Text(rest, p + 1, q - p));
  const Position end = Read_Number(field).End;
  const auto matches = [](Text_View text, const wchar_t* form) {
    const std::wregex regex(form, std::regex::icase);
    return std::regex_search(std::wstring(text.begin(), text.end()), regex);
  };
  if (matches(Mid_Text(field, end + 1), L"[0-9]")) throw Failure();
  // Whatever is between two digits of a number, a blank must not be.
  if (matches(Left_Text(field, end), L"[0-9a-f][^ \\t\\r\\n]*[ \\t\\r\\n][\\s\\S]*[0-9a-f]"))
    throw Failure();
  rest = Mid_Text(rest, q);
  return Text_Value(field);
}

// Takes the section record at p off the rest if its number is a single digit between blanks.
bool Take_Single_Digit(Position p, Text& rest, Text& output) {
  p = Find_Text(p, rest, u")");
  if (p == 0) throw Failure();
  Position q = p + 1;
  while (Mid_Text(rest, q, 1) == u" ") ++q;
  const Text_View digit = Mid_Text(rest, q, 1);
  if (q == p + 1 || digit < u"0" || digit > u"9" || Mid_Text(rest, q + 1, 1) != u" ") return false;
  output += Left_Text(rest, q);
  rest = Mid_Text(rest, q + 1);
  return true;
}

// How many keywords among the first units of the text are followed by a "(" after their words.
int Openings(const Text& text, std::size_t units) {
  int count = 0;
  for (Position p = 0; (p = Find_Text(p + 1, text, u"Dyntrack")) != 0;) {
    auto i = static_cast<std::size_t>(p) - 1;
    if (i >= units) break;
    while (i < text.size() && Text_View(u" \t\r\n()\"").find(text[i]) == Text_View::npos) ++i;
    while (i < text.size() && Blanks.find(text[i]) != Text_View::npos) ++i;
    if (i < text.size() && text[i] == u'(') ++count;
  }
  return count;
}

}  // namespace

Rebased_Tsection Rebase_Tsection(Text rest, Long reserved_sections, Long reserved_shapes,
                                 const Log_Line& log) {
  Rebased_Tsection result;
  Text& output = result.Output.emplace();
  std::vector<Double> sections, shapes;
  const auto moved = [&](const Text& what, Double id, std::vector<Double>& own, Long reserved,
                         Long& delta) {
    if (own.empty()) delta = Round_Long(reserved - id);
    if (own.empty() && delta != 0) {
      log(what + u" changed: " + Number_Text(id) + u" -> " + Number_Text(reserved));
    }
    own.push_back(id);
    return Number_Text(id + delta);
  };
  while (const Position p = Find_Text(1, rest, u"SectionCurve")) {
    const Double id = Take_Section(p, rest, output);
    output += moved(u"SectionIdx", id, sections, reserved_sections, result.Section_Delta);
  }
  Position p = Find_Text(Find_Text(1, rest, u"SectionIdx"), rest, u"(");
  const Double record_count = Text_Value(Mid_Text(rest, p + 1, 20));
  for (p = Find_Text(p, rest, u"TrackPath"); p > 0; p = Find_Text(1, rest, u"TrackPath")) {
    p = Find_Text(p, rest, u"(");
    output += Left_Text(rest, p);
    const Position q = Find_Text(p, rest, u")");
    const auto found = Split_Text(Trim_Text(Mid_Text(rest, p + 1, q - p - 1)));
    std::vector<Text> fields(found.begin(), found.end());
    if (fields.empty()) throw Failure();
    fields[0] =
        moved(u"ShapeIdx", Text_Value(fields[0]), shapes, reserved_shapes, result.Shape_Delta);
    for (std::size_t i = 2; i < fields.size(); ++i) {
      result.Path_Sections.push_back(Text_Value(fields[i]));
      fields[i] = Trim_Text(Number_Text(Text_Value(fields[i]) + result.Section_Delta));
    }
    output += Join_Text(fields);
    rest = u" " + Text(Mid_Text(rest, q));
  }
  output += rest;
  result.Own = {Number_Set(sections), Number_Set(shapes)};
  log(u"Total of " + Number_Text(record_count) + u" dynamic tracks");
  return result;
}

Passed_World Rebase_Dyntracks(Text rest, Long section_delta, Long shape_delta,
                              const Log_Line& log) {
  Passed_World result;
  Text& output = result.Output.emplace();
  while (Position p = Find_Text(1, rest, u"Dyntrack")) {
    ++result.Count;
    const Text before = rest.substr(static_cast<std::size_t>(p) - 1);
    bool has_single_digit = false;
    for (int i = 0; i < 5; ++i, p = 1) {
      p = Find_Text(p, rest, u"SectionCurve");
      if (Take_Single_Digit(p, rest, output)) {
        has_single_digit = true;
      } else {
        const Double id = Take_Section(p, rest, output);
        output += Number_Text(id == 4294967295.0 ? id : id + section_delta);
      }
    }
    p = Find_Text(Find_Text(1, rest, u"SectionIdx"), rest, u"(");
    const Position q = Find_Text(p, rest, u")");
    const Double id = Text_Value(Mid_Text(rest, p + 1, q - p));
    const bool stays = has_single_digit && id < 0;
    output += Left_Text(rest, stays ? q - 1 : p);
    if (!stays) output += Number_Text(id + shape_delta) + u" ";
    rest = Mid_Text(rest, q);
    if (Openings(before, before.size() - rest.size()) > 1) throw Failure();
  }
  log(Number_Text(result.Count) + u" dynamic tracks");
  output += rest;
  return result;
}

namespace {

// One record at the front of the rest. What stays of it, in three parts, and what goes.
struct Record {
  Text Front, Middle, Back;
  Text Id, Name;
  bool Name_First = false;
  Position Left_End = 0;  // where it ends if it has to stay as it is, else 0
};

Record Read_Record(const Text& rest) {
  const Position open = Find_Text(1, rest, u"(");
  const Position end = open == 0 ? 0 : Walk(rest, open);
  const Text own = end == 0 ? rest : Text(Left_Text(rest, end));
  Record left;
  left.Left_End = end;
  // Where a target is in the record; 0 if it only comes later.
  const auto find = [&](Position start, Text_View target) {
    if (Find_Text(start, rest, target) == 0) throw Failure();
    return Find_Text(start, own, target);
  };
  Position p = find(1, u"SectionIdx");
  if (p == 0) return left;
  const Position id_open = find(p, u"(");
  if (id_open == 0) return left;
  const Position id_close = find(id_open, u")");
  Record record;
  record.Id = Mid_Text(rest, id_open + 1, id_close - id_open);
  static_cast<void>(Text_Value(record.Id));
  p = Find_Text(id_close, own, u"FileName");
  if (p == 0) p = find(end == 0 ? id_close : 1, u"FileName");
  if (p == 0) return left;
  record.Name_First = p < id_close;
  const Position name_open = find(p, u"(");
  if (name_open == 0) return left;
  const Position name_close = find(name_open, u")");
  if (record.Name_First && name_close > id_open) return left;
  const Text name(Mid_Text(rest, name_open + 1, name_close - name_open - 1));
  const bool is_in_quotes = std::ranges::count(name, u'"') % 2 == 1;
  const bool is_closed_later = Mid_Text(own, name_close).find(u'"') != Text_View::npos;
  if (end != 0 && is_in_quotes && is_closed_later) return left;
  record.Name = Trim_Text(name);
  const Position gap = std::min(id_close, name_close);
  record.Front = Left_Text(rest, std::min(id_open, name_open));
  record.Middle = Mid_Text(rest, gap, std::max(id_open, name_open) - gap + 1);
  record.Back = Mid_Text(rest, std::max(id_close, name_close));
  return record;
}

// What stays of the rest without the record, nothing if its brackets are at odds with its elements.
std::optional<Text> Without(const Record& record) {
  const Text whole = record.Front + record.Middle + record.Back;
  const Position close = Walk(whole, Find_Text(1, whole, u"("));
  if (close == 0) throw Failure();
  if (close <= Position(whole.size() - record.Back.size())) return std::nullopt;
  return Text(Mid_Text(whole, close + 1));
}

}  // namespace

Passed_World Check_Track_Objects(Text rest, const Shape_Tables& tables, const Log_Line& log) {
  Passed_World result;
  Text& output = result.Output.emplace();
  while (const Position p = Find_Text(1, rest, u"TrackObj")) {
    output += Left_Text(rest, p - 1);
    rest = Mid_Text(rest, p);
    Record record = Read_Record(rest);
    const Text name = record.Left_End == 0 ? tables.Map_Shape(record.Name) : Text();
    if (name == u" -delete-") {
      if (const auto without = Without(record)) {
        ++result.Count;
        rest = *without;
        continue;
      }
      const Position end = Walk(rest, Find_Text(1, rest, u"("));
      record.Left_End = end == 0 ? Position(rest.size() - record.Back.size() + 1) : end;
    }
    if (record.Left_End != 0) {
      ++result.Left;
      log(u"Left a track object as it is, I cannot read it");
      output += Left_Text(rest, record.Left_End);
      rest = Mid_Text(rest, record.Left_End + 1);
      continue;
    }
    const Double old_id = Text_Value(record.Id);
    const Long found_id = tables.Shape_Id(name);
    const Double new_id = found_id == -1 ? old_id : found_id;
    if (found_id == -1) {
      log(u"Unknown shape " + name + u", id " + Number_Text(old_id));
    } else if (new_id != old_id) {
      ++result.Corrected;
      log(name + u" id: " + Number_Text(old_id) + u" -> " + Number_Text(new_id));
    }
    if (new_id != old_id || (found_id != -1 && name != record.Name)) ++result.Count;
    Text first = Number_Text(new_id) + u" ";
    Text second = u" " + name + u" ";
    if (record.Name_First) std::swap(first, second);
    output += record.Front + first + record.Middle + second;
    rest = record.Back;
  }
  log(Number_Text(result.Count) + u" track sections has been changed");
  output += rest;
  return result;
}

}  // namespace rivelt::naive
