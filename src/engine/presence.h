// 在场: who works on an account set at the moment, and how one station gets it for itself.
#pragma once

#include "engine/database.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace jxc {

/// Who works at a station: a name on a file; on a server the number of an operator, 0 for a program without one.
struct Station {
  QString name;
  std::int64_t number = 0;
};

/// One program at an account set. It dies with the process, whatever way that ends, and writes nothing into the set. On
/// a file it is a place in a small file beside it, on a server a lock of a connection of its own.
class Presence {
 public:
  /// Leaves.
  virtual ~Presence() = default;
  /// Comes to work, or goes on under another name. False while somebody else has the set for himself.
  virtual bool enter(const Station& station) = 0;
  virtual void leave() = 0;
  /// Looks, without waiting for a server, whether others still see who has come in here, and comes in anew where a
  /// connection broke. False: somebody has taken the set for himself meanwhile. Throws DbError when it cannot be known.
  virtual bool stay() = 0;
  /// Those who have come to work, without oneself.
  virtual std::vector<Station> others() = 0;
  /// Gets the set for oneself, for `work` (above 0). False while others are there, or somebody else has it: nothing is
  /// changed then. Nobody comes in until it is given back.
  virtual bool takeAlone(int work) = 0;
  virtual void giveBack() = 0;
  /// What somebody else has the set for himself for, and who; nothing when nobody has.
  struct Alone {
    int work = 0;
    Station by;
  };
  virtual std::optional<Alone> aloneBy() = 0;
};

/// That of this program at the set behind `database`, which need not live as long. Null where nobody else can be: in
/// memory and in a trial. Throws DbError.
std::unique_ptr<Presence> openPresence(Database& database);
/// Which set a connection leads to: its file, or the address of its server; empty in memory and in a trial.
QString placeOf(Database& database);

}  // namespace jxc
