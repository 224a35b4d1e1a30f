// The list of commands without a screen in docs/ is the list that the program would show.
#include "ui/commands.h"
#include "ui/screen.h"

#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <string>

namespace jxc::test {

TEST(NotThereYet, TheListTellsWhatIsMissingAndNothingElse) {
  std::set<std::string> missing, listed;
  for (const auto& command : ui::commands()) {
    if (!command.screen.empty() && !ui::isScreenRegistered(command.screen))
      missing.insert("T" + std::string(command.screen));
  }
  std::ifstream file(JXC_SOURCE_DIR "/docs/not-there-yet.md");
  ASSERT_TRUE(file.is_open());
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with("| `")) listed.insert(line.substr(3, line.find('`', 3) - 3));
  }
  EXPECT_EQ(listed, missing);
}

}  // namespace jxc::test
