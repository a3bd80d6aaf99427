#include "linux_files_fixture.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "text/utf8.h"

namespace rivelt {
namespace {

std::string Fresh_Folder(std::string parent) {
  parent += "/rivelt-test-XXXXXX";
  if (mkdtemp(parent.data()) == nullptr) throw std::runtime_error("no folder to test in");
  return parent;
}

std::unique_ptr<Machine_Under_Test> Make_Linux_Machine() {
  return std::make_unique<Linux_Machine>();
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Linux, Files_Contract, testing::Values(&Make_Linux_Machine),
                         [](const auto&) { return "Machine"; });

// The root is the Wine prefix as well.
Linux_Machine::Linux_Machine(const std::string& parent)
    : Native_Root(Fresh_Folder(parent)), System(Native_Root) {}

Linux_Machine::~Linux_Machine() {
  std::filesystem::remove_all(Native_Root);
}

Text Linux_Machine::Root() const {
  return From_Utf8(Native_Root);
}

void Linux_Machine::Plant(Text_View name, std::string_view bytes) {
  std::ofstream file(Native(To_Utf8(name)), std::ios::binary);
  file << bytes;
  file.close();
  EXPECT_TRUE(file.good()) << To_Utf8(name);
}

void Linux_Machine::Plant_Folder(Text_View name) {
  EXPECT_TRUE(std::filesystem::create_directory(Native(To_Utf8(name)))) << To_Utf8(name);
}

void Linux_Machine::Make_Read_Only(Text_View name) {
  std::filesystem::permissions(Native(To_Utf8(name)), std::filesystem::perms::owner_read);
}

std::string Linux_Machine::Bytes(Text_View name) const {
  std::ifstream file(Native(To_Utf8(name)), std::ios::binary);
  EXPECT_TRUE(file.is_open()) << To_Utf8(name);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<Text> Linux_Machine::Names(Text_View folder) const {
  std::vector<Text> names;
  for (const auto& entry : std::filesystem::directory_iterator(Native(To_Utf8(folder))))
    names.push_back(From_Utf8(entry.path().filename().native()));
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace rivelt
