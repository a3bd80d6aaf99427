// Runs a fuzzer on the files of a folder, so that the kept inputs are part of every test run.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "fuzzing.h"

int main(int count, char** arguments) {
  int runs = 0;
  for (int i = 1; i < count; ++i) {
    for (const auto& entry : std::filesystem::directory_iterator(arguments[i])) {
      std::ifstream file(entry.path(), std::ios::binary);
      const std::vector<char> bytes(std::istreambuf_iterator<char>(file), {});
      std::fprintf(stderr, "%s\n", entry.path().filename().string().c_str());
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
      ++runs;
    }
  }
  std::printf("%d inputs\n", runs);
  return runs == 0 ? 1 : 0;
}
