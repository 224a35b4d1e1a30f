// The main of a fuzz target without a fuzzer: runs it once over every file of the folders that are named. What once
// crashed stands there and stays mended.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" [[gnu::weak]] int LLVMFuzzerInitialize(int* count, char*** arguments);

int main(int count, char** arguments) {
  if (LLVMFuzzerInitialize) LLVMFuzzerInitialize(&count, &arguments);
  int files = 0;
  for (int i = 1; i < count; ++i)
    for (const auto& entry : std::filesystem::recursive_directory_iterator(arguments[i])) {
      if (!entry.is_regular_file()) continue;
      std::ifstream file(entry.path(), std::ios::binary);
      const std::string bytes(std::istreambuf_iterator<char>(file), {});
      std::printf("%s\n", entry.path().c_str());
      std::fflush(stdout);  // the last name printed is the one that ended the program
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
      ++files;
    }
  std::printf("%d inputs\n", files);
  return files == 0;
}
