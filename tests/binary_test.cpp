// Compressed and binary files, and the texts that they stand for.

#include "binary/binary_file.h"

#include <gtest/gtest.h>

#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "sample/binary_file.h"
#include "sample/random_source.h"
#include "sample/text_file.h"
#include "sample/track.h"
#include "text/primitives.h"
#include "text/utf16.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

using sample::Binary_File;
using sample::Compressed_File;
using sample::File_Text;

void Expect_There_And_Back(const Text& text) {
  const std::string binary = Binary_File(text);
  EXPECT_EQ(To_Utf8(Text_Of_Binary(binary)), To_Utf8(text));
  EXPECT_EQ(Text_Of_Binary(Compressed_File(binary)), text);
}

TEST(Binary_File, Of_A_World_File_And_A_Database_Gives_Their_Text_Again) {
  const sample::Route_Track route{
      u"AMBREWICK", sample::Invent_Shapes(300),
      sample::Invent_Dynamic_Tracks(40, 38000, 38000, sample::Random_Source(1))};
  const sample::World world = Invent_World(route, 1000, true, sample::Random_Source(2));
  Expect_There_And_Back(world.File);
  sample::Track_Database database;
  database.Add_Tile(-5354, 14850, world.Track);
  Expect_There_And_Back(Replace_Text(database.File(), u" 00 ", u" 0 "));
}

TEST(Binary_File, Of_Every_Block_And_Value_Gives_Their_Text_Again) {
  Text choices(3000, u'\0');
  std::iota(choices.begin(), choices.end(), u'\0');
  Expect_There_And_Back(File_Text(u"w0t", sample::Invented_Blocks(true, choices, 20)));
  Expect_There_And_Back(File_Text(u"T0t", sample::Invented_Blocks(false, choices, 20)));
}

}  // namespace
}  // namespace rivelt
