#include "binary/blocks.h"

#include <vector>

#include "text/primitives.h"

namespace rivelt {
namespace {

// The number, the name and the content of each kind, "-" for none.

constexpr Text_View World_Kinds =
    u"00040003 Static B 00040005 TrackObj B 00040006 Dyntrack B 00040008 Forest B "
    u"00040009 Telepole B 0004000B CollideObject B 00040011 Signal B 00040038 Gantry B "
    u"00040039 CarSpawner B 0004003B Pickup B 0004003C Platform B 0004003D Siding B "
    u"0004003E LevelCr B 0004003F Transfer B 00040040 Speedpost B 00040041 Hazard B "
    u"0004004B Tr_Worldfile B 0004004C Tr_Watermark u 0004005F FileName s "
    u"00040061 Position fff 00040062 Direction fuu 00040063 MaxVisDistance u "
    u"00040064 Quality u 00040065 StaticDetailLevel u 00040068 StaticFlags x "
    u"00040069 CollideFlags u 0004006A CollideFunction u 0004006C UiD u "
    u"0004006D TrackSections B 0004006E TrackSection buff 00040077 SectionIdx i "
    u"00040078 SectionCurve u 0004007C JNodePosn iifff 0004009E SignalSubObj x "
    u"000400BA SignalUnits uB 000400BB SignalUnit uB 000400C1 Elevation f "
    u"000400C8 Population u 000400C9 Area ff 000400CB ScaleRange ff "
    u"000400CC StartPosition fff 000400CD EndPosition fff 000400CE StartType u "
    u"000400CF EndType u 00040115 StartDirection u 00040116 EndDirection u "
    u"00040117 ViewDbSphere B 00040118 Radius f 00040119 NoDirLight - 0004011B VDbId u "
    u"0004011C VDbIdCount u 0004012A Matrix3x3 fffffffff 0004026E TrItemId uu "
    u"00040285 QDirection ffff 00040317 Config u 00040327 PlatformData x "
    u"0004032B SpeedRange uu 0004032C PickupType uu 0004032D PickupAnimData uu "
    u"0004032E PickupCapacity uu 00040330 CarFrequency f 00040331 CarAvSpeed f "
    u"00040334 SidingData x 00040336 LevelCrParameters ff 00040337 LevelCrData xu "
    u"00040338 LevelCrTiming fff 0004033F Speed_Sign_Shape u*ffff 00040342 Speed_Digit_Tex s "
    u"00040347 Speed_Text_Size fff 00040354 Width f 00040355 Height f 00040356 TreeTexture s "
    u"00040357 TreeSize ff 000404CF CrashProbability u";

constexpr Text_View Database_Kinds =
    u"0004006C UiD iuuuiuffffff 0004007D TrackNodes uB 0004007E TrackNode uB "
    u"0004007F TrPins uuB 00040080 TrPin uu 00040081 TrVectorNode B "
    u"00040082 TrJunctionNode uuu 00040086 TrEndNode u "
    u"00040089 TrVectorSections u*uuiuuuuuiuffffff 0004008C TrSignalType xufs "
    u"0004008D TrSignalDirs uB 0004008E TrSignalDir uuuu 0004008F TrSignalRDir fffiuf "
    u"0004026C TrItemRefs uB 0004026D TrItemRef u 0004026E TrItemId u 0004026F TrItemSData fx "
    u"00040270 TrItemPData ffii 00040271 TrItemRData fffii 00040272 TrItemSRData uuf "
    u"00040273 TrItemTable uB 00040274 EmptyItem B 00040275 SignalItem B "
    u"00040276 PickupItem B 00040277 PlatformItem B 00040278 HazzardItem B "
    u"00040279 CarSpawnerItem B 0004027A SidingItem B 0004027B LevelCrItem B "
    u"0004027C SpeedPostItem B 0004027D SoundRegionItem B 0004027E CrossoverItem B "
    u"00040326 PlatformName s 00040328 PlatformTrItemData xu "
    u"00040329 PlatformMinWaitingTime u 0004032A PlatformNumPassengersWaiting u "
    u"0004032F PickupTrItemData fx 00040333 SidingName s 00040335 SidingTrItemData xu "
    u"0004033C SpeedpostTrItemData uf?f?f 00040349 CrossoverTrItemData uu 000403C2 Station s "
    u"00040494 Serial u 000404D0 TrackDB B";

Block_Kinds Read_Table(Text_View table) {
  Block_Kinds kinds;
  const std::vector<Text_View> words = Split_Text(table);
  for (auto word = words.begin(); word != words.end(); word += 3) {
    const Double number = Text_Value(Concatenate({u"&h", word[0]}));
    kinds[static_cast<std::uint32_t>(number)] = {Text(word[1]),
                                                 Text(word[2] == u"-" ? u"" : word[2])};
  }
  return kinds;
}

}  // namespace

const Block_Kinds& Kinds_In(File_Kind file) {
  static const Block_Kinds world = Read_Table(World_Kinds);
  static const Block_Kinds database = Read_Table(Database_Kinds);
  return file == File_Kind::World ? world : database;
}

}  // namespace rivelt
