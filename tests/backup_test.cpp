// The pure parts of the journal of an update.

#include <gtest/gtest.h>

#include <functional>

#include "backup/backup_time.h"
#include "backup/journal.h"
#include "backup/update_folder.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

constexpr Finding Original{Found::Original}, New{Found::New}, Gone{Found::Gone};
constexpr Finding Both{Found::Original, true}, To_Move{Found::Original, false, true};
constexpr Finding Came{Found::Other}, To_Come{Found::Other, false, true};
constexpr Finding New_Twice{Found::New, false, true}, Both_To_Move{Found::Original, true, true};

TEST(Decide, What_Is_Found_Of_An_Unfinished_Update_Settles_What_Becomes_Of_It) {
  using enum Outcome;
  const struct {
    std::vector<Finding> Files;
    Outcome Wanted;
  } cases[] = {
      {{New, Came, Both}, Finished},
      {{Came, Came}, Finished},
      {{New, New_Twice}, Rolled_Back},
      {{New, Both_To_Move}, Rolled_Back},
      {{New, To_Come}, Rolled_Back},
      {{New, To_Move}, Rolled_Back},
      {{Gone, To_Come}, Rolled_Back},
      {{Came, Gone}, Rolled_Back},
      {{To_Move, To_Come, Both}, Untouched},
      {{Original}, Untouched},
      {{Came, To_Come}, Left},
      {{Came, To_Come, To_Move}, Rolled_Back},
      {{Came, Original}, Rolled_Back},
  };
  for (const auto& [files, wanted] : cases) {
    EXPECT_EQ(Decide(files), wanted) << &files - &cases[0].Files;
  }
}

TEST(Content, Pieces_Make_No_Difference_And_Every_Byte_Does) {
  std::string bytes = "some bytes of a file, more than a word, and with \xFF";
  const auto in_pieces = [&](std::size_t size) {
    Content_Reader reader;
    for (std::size_t i = 0; i < bytes.size(); i += size) {
      reader.Add(std::string_view(bytes).substr(i, size));
    }
    return reader.Whole();
  };
  const Content whole = in_pieces(bytes.size());
  for (std::size_t size = 1; size < 20; ++size) EXPECT_EQ(in_pieces(size), whole) << size;
  for (char& byte : bytes) {
    byte ^= 1;
    EXPECT_NE(in_pieces(bytes.size()), whole);
    byte ^= 1;
  }
}

Text Reason_Of(const std::function<void()>& step) try {
  step();
  return u"no failure";
} catch (const Failure& failure) {
  return failure.Reason();
}

Journal Example() {
  return {u"update",
          {{u"tsection.dat", u"tmp\\tsection.dat", Content{12, 0xFFFFFFFFFFFFFFFF}, Content{14, 1}},
           {u"World\\w-1.w", u"tmp\\w-1.w", std::nullopt, Content{0, 0}},
           {u"World\\w 2.w", u"", Content{3, 4}, std::nullopt}}};
}

TEST(Journal, Comes_Back_As_It_Was_And_Only_Whole) {
  const Text text = Journal_Text(Example());
  const auto journal = Read_Journal(text);
  ASSERT_TRUE(journal);
  EXPECT_EQ(*journal, Example());
  EXPECT_EQ(Read_Journal(Journal_Text({})), Journal());
  for (std::size_t length = 0; length < text.size(); ++length) {
    EXPECT_FALSE(Read_Journal(text.substr(0, length))) << length;
    Text changed = text;
    changed[length] ^= 1;
    EXPECT_FALSE(Read_Journal(changed)) << length;
  }
  for (const Text_View name : {u"tmp\\a\tb", u"tmp\\a\r\nb"}) {
    Journal odd = Example();
    odd.Files[0].Source = name;
    EXPECT_EQ(Reason_Of([&] { Journal_Text(odd); }),
              u"A name with a tab or a line end in it cannot be updated: " + Text(name));
  }
}

TEST(Backup_Time, Is_Later_Than_Every_Other_Whatever_The_Clock_Says) {
  const struct {
    Text_View Newest, Wanted;
  } cases[] = {
      {u"2999-12-31 23.59.59", u"3000-01-01 00.00.00"},
      {u"2996-02-28 23.59.59", u"2996-02-29 00.00.00"},
      {u"2999-08-09 10.19.08", u"2999-08-09 10.19.09"},
  };
  for (const auto& [newest, wanted] : cases) EXPECT_EQ(Backup_Time_After(newest), wanted);
  EXPECT_TRUE(Is_Backup_Time(Backup_Time_After(u"")));
  EXPECT_GT(Backup_Time_After(u"2001-01-01 00.00.00"), u"2026");
  EXPECT_THROW(Backup_Time_After(u"9999-12-31 23.59.59"), Failure);
  for (const Text_View text :
       {u"2026-11-22 20.15.0", u"2026-11-22_20.15.07", u"nineteen characters",
        u"2026-11-22 20:15:07", u"2026-11-22 20.15.07 "}) {
    EXPECT_FALSE(Is_Backup_Time(text)) << To_Utf8(text);
  }
}

}  // namespace
}  // namespace rivelt
