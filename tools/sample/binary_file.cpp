#include "sample/binary_file.h"

#include <zlib.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <map>
#include <sstream>
#include <utility>
#include <vector>

#include "sample/text_file.h"
#include "text/utf16.h"

namespace rivelt::sample {
namespace {

// Grouped by content: the names of the blocks and their numbers, without the 0004 in front.
constexpr const char* World_Facts =
    "-: NoDirLight 119 B: Static 3 TrackObj 5 Dyntrack 6 Forest 8 Telepole 9 CollideObject B "
    "Signal 11 Gantry 38 CarSpawner 39 Pickup 3B Platform 3C Siding 3D LevelCr 3E Transfer 3F "
    "Speedpost 40 Hazard 41 Tr_Worldfile 4B TrackSections 6D ViewDbSphere 117 buff: "
    "TrackSection 6E f: Elevation C1 Radius 118 CarFrequency 330 CarAvSpeed 331 Width 354 "
    "Height 355 ff: Area C9 ScaleRange CB LevelCrParameters 336 TreeSize 357 fff: Position 61 "
    "StartPosition CC EndPosition CD LevelCrTiming 338 Speed_Text_Size 347 ffff: "
    "QDirection 285 fffffffff: Matrix3x3 12A fuu: Direction 62 i: SectionIdx 77 iifff: "
    "JNodePosn 7C s: FileName 5F Speed_Digit_Tex 342 TreeTexture 356 u: Tr_Watermark 4C "
    "MaxVisDistance 63 Quality 64 StaticDetailLevel 65 CollideFlags 69 CollideFunction 6A "
    "UiD 6C SectionCurve 78 Population C8 StartType CE EndType CF StartDirection 115 "
    "EndDirection 116 VDbId 11B VDbIdCount 11C Config 317 CrashProbability 4CF u*ffff: "
    "Speed_Sign_Shape 33F uB: SignalUnits BA SignalUnit BB uu: TrItemId 26E SpeedRange 32B "
    "PickupType 32C PickupAnimData 32D PickupCapacity 32E x: StaticFlags 68 SignalSubObj 9E "
    "PlatformData 327 SidingData 334 xu: LevelCrData 337";
constexpr const char* Database_Facts =
    "B: TrVectorNode 81 EmptyItem 274 SignalItem 275 PickupItem 276 PlatformItem 277 "
    "HazzardItem 278 CarSpawnerItem 279 SidingItem 27A LevelCrItem 27B SpeedPostItem 27C "
    "SoundRegionItem 27D CrossoverItem 27E TrackDB 4D0 fffii: TrItemRData 271 fffiuf: "
    "TrSignalRDir 8F ffii: TrItemPData 270 fx: TrItemSData 26F PickupTrItemData 32F "
    "iuuuiuffffff: UiD 6C s: PlatformName 326 SidingName 333 Station 3C2 u: TrEndNode 86 "
    "TrItemRef 26D TrItemId 26E PlatformMinWaitingTime 329 PlatformNumPassengersWaiting 32A "
    "Serial 494 u*uuiuuuuuiuffffff: TrVectorSections 89 uB: TrackNodes 7D TrackNode 7E "
    "TrSignalDirs 8D TrItemRefs 26C TrItemTable 273 ufff: SpeedpostTrItemData 33C uu: "
    "TrPin 80 CrossoverTrItemData 349 uuB: TrPins 7F uuf: TrItemSRData 272 uuu: "
    "TrJunctionNode 82 uuuu: TrSignalDir 8E xu: PlatformTrItemData 328 SidingTrItemData 335 "
    "xufs: TrSignalType 8C";

struct Block_Fact {
  std::uint32_t Number;
  std::string Holds;  // letters as in binary/blocks.h, but for "?"
};

using Block_Facts = std::map<Text, Block_Fact>;

Block_Facts Read_Facts(const char* facts) {
  Block_Facts blocks;
  std::istringstream words(facts);
  Block_Fact fact{};
  for (std::string word; words >> word;) {
    if (word.ends_with(':')) {
      fact.Holds = word.substr(0, word.find_first_of("-:"));
    } else {
      words >> std::hex >> fact.Number;
      blocks[Text(word.begin(), word.end())] = fact;
    }
  }
  return blocks;
}

const Block_Facts& Facts_Of(bool is_world) {
  static const Block_Facts world = Read_Facts(World_Facts);
  static const Block_Facts database = Read_Facts(Database_Facts);
  return is_world ? world : database;
}

std::string Bytes_Of_Number(auto number) {
  return {reinterpret_cast<const char*>(&number), sizeof(number)};
}

// The number in 4 bytes.
template <class Number>
std::string Bytes_Of_Digits(Text_View word, auto... base) {
  const std::string digits(word.begin(), word.end());
  Number number{};
  const char* end = digits.data() + digits.size();
  if (std::from_chars(digits.data(), end, number, base...).ptr != end) throw Failure();
  return Bytes_Of_Number(number).substr(0, 4);
}

class Content_Writer {
 public:
  explicit Content_Writer(Text_View text)
      : Rest(text.substr(32)),
        Facts(Facts_Of(text[21] == u'w')),
        Bytes(text.begin() + 16, text.begin() + 32) {
    Bytes[7] = 'b';
  }

  std::string Run() {
    while (Next_Word()) {
      if (Word == u")" && !Is_Quoted) {
        Close();
      } else {
        Put(Next_Letter());
      }
    }
    while (!Around.empty()) Close();
    return std::move(Bytes);
  }

 private:
  struct Open_Block {
    std::string_view Holds;
    std::size_t Start;  // after its size
    std::size_t Next = 0;
  };

  bool Next_Word() {
    Rest.remove_prefix(std::min(Rest.find_first_not_of(u" \t\r\n"), Rest.size()));
    Is_Quoted = Rest.starts_with(u'"');
    Word.clear();
    std::size_t at = Is_Quoted ? 1 : 0;
    for (; at < Rest.size() && (Is_Quoted ? Rest[at] != u'"' : Rest[at] > u' '); ++at) {
      if (Is_Quoted && Rest[at] == u'\\' && at + 1 < Rest.size()) ++at;
      Word += Rest[at];
    }
    const bool is_there = at > 0;
    Rest.remove_prefix(std::min(at + (Is_Quoted ? 1 : 0), Rest.size()));
    return is_there;
  }

  char Next_Letter() {
    if (Around.empty()) return 'B';
    Open_Block& block = Around.back();
    if (block.Next == block.Holds.size()) block.Next = block.Holds.find('*') + 1;
    if (block.Holds.substr(block.Next, 1) == "*") ++block.Next;
    if (block.Next == block.Holds.size()) throw Failure();
    const char letter = block.Holds[block.Next];
    if (letter != 'B') ++block.Next;
    return letter;
  }

  void Put(char letter) {
    if (letter == 'b' || letter == 'B') return Open();
    if (letter == 's') Bytes += Bytes_Of_Number(static_cast<std::uint16_t>(Word.size())) + Units();
    if (letter == 'x') Bytes += Bytes_Of_Digits<std::uint32_t>(Word, 16);
    if (letter == 'f') Bytes += Bytes_Of_Digits<float>(Word);
    if (letter == 'u' || letter == 'i') Bytes += Bytes_Of_Digits<std::int64_t>(Word);
  }

  void Open() {
    const auto found = Facts.find(Word);
    if (found == Facts.end()) throw Failure();
    Bytes += Bytes_Of_Number(0x00040000 + found->second.Number) + "size";
    Around.push_back({found->second.Holds, Bytes.size()});
    Next_Word();
    const bool has_label = Is_Quoted || Word != u"(";
    Bytes += static_cast<char>(has_label ? Word.size() : 0);
    if (!has_label) return;
    Bytes += Units();
    Next_Word();
  }

  void Close() {
    if (Around.empty()) throw Failure();
    const std::size_t start = Around.back().Start;
    Around.pop_back();
    Bytes.replace(start - 4, 4, Bytes_Of_Number(static_cast<std::uint32_t>(Bytes.size() - start)));
  }

  std::string Units() const { return std::string(Bytes_Of(Word)); }

  Text_View Rest;
  const Block_Facts& Facts;
  std::string Bytes;
  Text Word;
  bool Is_Quoted = false;
  std::vector<Open_Block> Around;
};

Text_View Invented_Value(char letter, std::size_t choice) {
  using Values = std::vector<Text_View>;
  static const std::map<char, Values> values = {
      {'u', {u"4294967295", u"0", u"1"}},
      {'i', {u"-2147483648", u"2147483647"}},
      {'x', {u"ffffffff", u"00200180"}},
      {'f',
       {u"0", u"-0", u"nan", u"0.0001", u"9.999999e-05", u"-100000000", u"1.0000001e+08", u"1e-45",
        u"3.4028235e+38", u"16777216", u"-1.5"}},
      {'s',
       {u"a.s", u"\u00DF\U0001F682", u"\"\"", u"\"\\\"\\\\\"", u"\"a b\"", u"\"\u3000\"",
        u"\"(\""}}};
  const Values& of_letter = values.at(letter);
  return of_letter[choice % of_letter.size()];
}

// Adds the content of a block up to the first of any number of inner blocks.
void Add_Values(Text& records, Text_View name, std::string holds, std::size_t choice) {
  const std::size_t repeated = holds.find('*');
  if (repeated != std::string::npos) {
    Add(records, choice % 3);
    holds = holds.substr(repeated + 1);
    for (std::size_t times = choice % 3; times > 1; --times) holds += holds;
    if (choice % 3 == 0) holds.clear();
  }
  if (name == u"SpeedpostTrItemData") holds.resize(4 - choice % 3);
  for (const char letter : holds) {
    if (letter == 'B') return;
    if (letter == 'b') Add(records, u"SectionCurve (", choice, u")");
    if (letter != 'b') Add(records, Invented_Value(letter, choice++));
  }
}

}  // namespace

Text Invented_Blocks(bool is_world, Text_View choices, std::size_t deepest) {
  const Block_Facts& facts = Facts_Of(is_world);
  std::vector<Block_Facts::const_pointer> blocks;
  for (const auto& block : facts) blocks.push_back(&block);
  Text records = is_world ? u" Tr_Worldfile (" : u" TrackDB (";
  std::size_t depth = 1;
  std::size_t values = 0;
  for (const char16_t choice : choices) {
    const auto& [name, fact] = *blocks[choice % 128 % blocks.size()];
    const bool ends_one = choice % 128 >= blocks.size() || depth == deepest;
    if (ends_one && depth > 1) --depth, Add(records, u")");
    if (ends_one) continue;
    Add(records, name, u"(");
    Add_Values(records, name, fact.Holds, values += choice / 128 + 1);
    if (fact.Holds.ends_with('B'))
      ++depth;
    else
      Add(records, u")");
  }
  while (depth-- > 0) Add(records, u")");
  return records;
}

std::string Binary_File(Text_View text) {
  return "SIMISA@@@@@@@@@@" + Content_Writer(text).Run();
}

std::string Compressed_File(std::string_view binary) {
  const auto* content = reinterpret_cast<const Bytef*>(binary.data() + 16);
  const auto size = static_cast<std::uint32_t>(binary.size() - 16);
  uLongf stream_size = compressBound(size);
  std::string stream(stream_size, '\0');
  compress(reinterpret_cast<Bytef*>(stream.data()), &stream_size, content, size);
  return "SIMISA@F" + Bytes_Of_Number(size) + "@@@@" + stream.substr(0, stream_size);
}

}  // namespace rivelt::sample
