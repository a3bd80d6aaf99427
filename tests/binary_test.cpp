// Reading compressed and binary files as texts.

#include "binary/binary_file.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <numeric>
#include <string>
#include <utility>

#include "sample/binary_file.h"
#include "sample/text_file.h"
#include "text/primitives.h"
#include "text/utf16.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

using sample::Compressed_File;

TEST(Binary_File, Of_Every_Block_And_Value_Gives_Their_Text_Again) {
  Text choices(3000, u'\0');
  std::iota(choices.begin(), choices.end(), u'\0');
  for (const bool is_world : {true, false}) {
    const Text blocks = sample::Invented_Blocks(is_world, choices, 32);
    const Text text = sample::File_Text(is_world ? u"w0t" : u"T0t", blocks);
    EXPECT_EQ(To_Utf8(Text_Of_Binary(sample::Binary_File(text))), To_Utf8(text));
  }
}

std::string Number(auto number) {
  return {reinterpret_cast<const char*>(&number), sizeof(number)};
}
std::string Block(std::uint32_t number, const std::string& holds, Text_View label = u"") {
  const std::string rest = static_cast<char>(label.size()) + std::string(Bytes_Of(label)) + holds;
  return Number(number) + Number(static_cast<std::uint32_t>(rest.size())) + rest;
}

const std::string Head = "SIMISA@@@@@@@@@@JINX0w0b______\r\n";
std::string World(const std::string& holds) {
  return Head + Block(0x4004B, holds);
}

TEST(Binary_File, With_A_Label_Has_It_After_The_Name_And_With_A_Text_In_It_Is_That_Text) {
  const std::string narrow = "SIMISA@@@@@@@@@@JINX0w1t______\r\n\r\nTr_Worldfile ( \u00C9 )";
  const std::pair<std::string, std::string> cases[] = {
      {narrow, narrow},
      {Compressed_File(narrow), narrow},
      {World(Block(0x40003, Block(0x40119, ""), u"\u00C9a") + Block(0x4006C, Number(7), u"a b")),
       "SIMISA@@@@@@@@@@JINX0w0t______\r\n\r\nTr_Worldfile (\r\n\tStatic \u00C9a (\r\n"
       "\t\tNoDirLight ( )\r\n\t)\r\n\tUiD \"a b\" ( 7 )\r\n)\r\n"},
  };
  for (const auto& [bytes, text] : cases) EXPECT_EQ(To_Utf8(Text_Of_Binary(bytes)), text);
}

TEST(Binary_File, Without_A_Checksum_Is_Whole_And_Has_The_Size_In_Its_Header_Odd_Ones_Too) {
  const std::string file = World(Block(0x40119, "") + Block(0x4006C, Number(7)));
  const Text text = Text_Of_Binary(file);
  const std::string compressed = Compressed_File(file);
  for (std::size_t cut = 0; cut <= 4; ++cut) {
    const std::string bytes = compressed.substr(0, compressed.size() - cut);
    EXPECT_TRUE(Is_Binary(From_Utf16(bytes)));
    EXPECT_EQ(Uncompressed_Size(From_Utf16(bytes), bytes.size()), file.size());
    EXPECT_EQ(Text_Of_Binary(From_Utf16(bytes), bytes.size()), text) << cut;
  }
  EXPECT_EQ(file.size() % 2, 1U);
  EXPECT_EQ(Text_Of_Binary(From_Utf16(file), file.size()), text);
  EXPECT_EQ(Uncompressed_Size(From_Utf16(file), file.size()), file.size());
  EXPECT_FALSE(Is_Binary(text));
  EXPECT_EQ(Uncompressed_Size(text, 1), 0U);
}

TEST(Binary_File, That_Cannot_Be_Read_Says_Where_And_Why) {
  const std::string uid = Block(0x4006C, Number(7));
  const std::string compressed = Compressed_File(World(uid));
  const auto changed = [&](std::size_t place, char by) {
    std::string bytes = compressed;
    bytes[place] = static_cast<char>(bytes[place] + by);
    return bytes;
  };
  const std::pair<std::string, Text_View> cases[] = {
      {"SIMISA@@@@@@@@@", u"0: not a binary or compressed file"},
      {"SIMISA@F@@@@@@@=", u"0: not a binary or compressed file"},
      {"SIMISA@@@@@@@@@@JINX0r0b______\r\n", u"16: not a world file or track database"},
      {Head, u"32: the file ends inside"},
      {"SIMISA@@@@@@@@@@JINX0w0t______\r\nab\xFF", u"34: not valid UTF-8"},
      {Head + Block(0x4006C, Number(7)),
       u"block 0004006c UiD is not the first block of such a file"},
      {World(uid) + '\0', u"block 0004004b Tr_Worldfile ends before the file"},
      {World(Block(0x40082, Number(7))), u"41: block 00040082 is not known"},
      {Head + Block(0x4004B, uid).substr(0, 20), u"32: block 0004004b Tr_Worldfile reaches beyond"},
      {World(Block(0x4006C, "12345")), u"54: block 0004006c UiD has bytes left after"},
      {World(Block(0x40118, Number(0x7F800000))), u"50: block 00040118 Radius has an infinite"},
      {World(Block(0x4033F, Number(~0U))), u"54: block 0004033f Speed_Sign_Shape ends inside"},
      {changed(8, 1), u": the compressed data does not have the size"},
      {changed(8, -1), u": the compressed data does not have the size"},
      {changed(16, 1), u"16: the compressed data is damaged"},
      {changed(compressed.size() - 1, 1), u": the compressed data is damaged"},
  };
  for (const auto& [bytes, reason] : cases) {
    try {
      Text_Of_Binary(bytes);
      ADD_FAILURE() << "is read: " << To_Utf8(reason);
    } catch (const Failure& failure) {
      EXPECT_NE(failure.Reason().find(reason), Text::npos)
          << To_Utf8(failure.Reason()) << " for " << To_Utf8(reason);
    }
  }
}

}  // namespace
}  // namespace rivelt
