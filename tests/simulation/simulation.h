// 模拟: several stations over one account set in one process, each move of which follows from a seed.
#pragma once

#include "engine/database.h"

#include <QString>

#include <memory>
#include <random>
#include <string>
#include <vector>

namespace jxc::test {

/// Stations work at their counters in turns: at each call to the database, and while a question of theirs stands, one
/// of them is chosen to go on. Only one moves at a time, so a seed decides all that happens; what goes wrong with one
/// can be looked at as often as wanted. The seed also breaks things: a station is killed, its connection is cut or the
/// answer to its commit lost (on a server), the disk is full, another holds the file too long, its clock jumps.
class Simulation {
 public:
  /// Out of a thousand calls, or of a thousand commands for the clock.
  struct Faults {
    int kill = 0, cut = 0, full = 0, clock = 0;
  };

  Simulation(unsigned seed, int stations, const Faults& faults);
  ~Simulation();
  Simulation(const Simulation&) = delete;
  Simulation& operator=(const Simulation&) = delete;

  /// So many commands of all stations together. Now and then, and at the end, all finish what they are at, and the
  /// books are proven and compared with what the operators were told. Empty, or what is wrong.
  QString run(int commands);

  /// All moves in their order, one a line.
  const std::vector<std::string>& trace() const;
  /// How often each kind of thing happened: "audited", "killed", "cut" ….
  int count(const std::string& what) const;

 private:
  struct Stations;
  std::unique_ptr<Stations> all_;
};

}  // namespace jxc::test
