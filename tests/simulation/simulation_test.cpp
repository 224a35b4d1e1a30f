// Stations, kills, cuts, full disks and clocks that jump, as a seed has it: whatever happens, the books agree and
// nobody was told what is not so. JXC_SIMULATION_SECONDS=3600 goes on for so long behind the stories of the suite;
// JXC_SEED=n begins with another seed; JXC_SIMULATION_TRACE=FILE keeps the moves of one that fails.
#include "simulation/simulation.h"

#include "harness/account_set_fixture.h"
#include "server/test_engine.h"

#include <chrono>
#include <cstdlib>
#include <fstream>

namespace jxc::simulation_test {

using test::Simulation;

constexpr int commands = 160;

int asked(const char* name, int usual) {
  const char* const words = std::getenv(name);
  return words ? std::atoi(words) : usual;
}

/// What may break is a matter of the seed too: alone one fault shows what many together hide.
Simulation::Faults faultsOf(unsigned seed) {
  switch (seed % 6) {
    case 0:
      return {};
    case 1:
      return {.kill = 4};
    case 2:
      return {.cut = 6};
    case 3:
      return {.full = 8};
    case 4:
      return {.clock = 60};
    default:
      return {.kill = 2, .cut = 3, .full = 4, .clock = 40};
  }
}
int stationsOf(unsigned seed) {
  return 2 + static_cast<int>(seed / 6 % 3);
}

std::string lastOf(const std::vector<std::string>& moves) {
  std::string last;
  for (std::size_t i = moves.size() - std::min<std::size_t>(moves.size(), 25); i < moves.size(); ++i)
    last += moves[i] + '\n';
  return last;
}

class SimulationTest : public test::AccountSetFixture {};

TEST_F(SimulationTest, TheBooksAgreeAndNobodyWasToldWhatIsNotSo) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + std::chrono::seconds(asked("JXC_SIMULATION_SECONDS", 0));
  std::map<std::string, int> happened;
  const unsigned first = static_cast<unsigned>(asked("JXC_SEED", 1));
  // The same stories on every machine, however quick it is.
  const unsigned stories = std::getenv("JXC_SEED") != nullptr ? 1 : test::onServer() ? 8 : 48;
  for (unsigned seed = first; seed < first + stories || Clock::now() < end; ++seed) {
    Simulation simulation(seed, stationsOf(seed), faultsOf(seed));
    const QString wrong = simulation.run(commands);
    for (const char* what : {"done", "killed", "lost", "full", "busy", "clock", "S", "A", "C", "looked", "fate"})
      happened[what] += simulation.count(what);
    if (wrong.isEmpty()) continue;
    const std::vector<std::string>& moves = simulation.trace();
    if (const char* const file = std::getenv("JXC_SIMULATION_TRACE")) {
      std::ofstream kept(file);
      for (const std::string& move : moves)
        kept << move << '\n';
    }
    FAIL() << "JXC_SEED=" << seed << " does it again: " << wrong.toStdString() << "\n" << lastOf(moves);
  }
  for (const auto& [what, often] : happened)
    RecordProperty(what, often);
  if (stories == 1) return;
  for (const char* what : {"killed", "full", "clock", "S", "A", "C"})
    EXPECT_GT(happened[what], 0) << what;
  EXPECT_GT(happened["lost"] + happened["busy"], 0);
}

TEST_F(SimulationTest, OneSeedIsOneStory) {
  constexpr unsigned seed = 5;
  const auto moves = [](unsigned of) {
    Simulation simulation(of, 3, faultsOf(seed));
    EXPECT_EQ(simulation.run(commands), QString());
    return simulation.trace();
  };
  const std::vector<std::string> once = moves(seed), again = moves(seed);
  for (std::size_t i = 0; i < std::min(once.size(), again.size()); ++i)
    ASSERT_EQ(once[i], again[i]) << "move " << i << " after\n" << lastOf({once.begin(), once.begin() + i});
  EXPECT_EQ(once.size(), again.size());
  EXPECT_NE(once, moves(seed + 6));
}

}  // namespace jxc::simulation_test
