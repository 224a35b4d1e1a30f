// 升级步骤: the dated ladder that brings an older database up to this build, as data.
#pragma once

#include "engine/database.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace jxc::schema {

/// A column that an older table gets, of the type of today's definition, and the value of its existing rows: an
/// expression of an update; empty leaves them null.
struct NewColumn {
  std::string_view name;
  std::string_view initial = {};
};

struct UpgradeAction {
  enum class Kind {
    Run,         // one statement
    Recreate,    // the table routine: whatever the table held is gone
    AddColumns,  // those that the table lacks
    Call         // a walk over rows that no statement can say
  };
  Kind kind;
  std::string_view text;  // statement or table
  std::vector<NewColumn> columns = {};
  void (*walk)(Database&) = nullptr;
};

struct UpgradeBlock {
  enum class When {
    Always,
    Missing,  // `test`, a select, names a table or column that is not there
    NoRow,    // `test` finds nothing
    Guarded   // always; the first failure ends the block and is swallowed
  };
  When when;
  std::string test;
  std::vector<UpgradeAction> actions;
};

/// A step runs when the stamp read at the start is less than `guard`, as text; it writes `stamp` before anything else,
/// or, where nobody can log in without it and it may run twice, when it is done.
struct UpgradeStep {
  std::string_view guard;
  std::string_view stamp;
  std::vector<UpgradeBlock> blocks;
  bool untilDone = false;
};

/// The steps in their order, which is not quite that of their dates.
std::span<const UpgradeStep> upgradeSteps();
/// The youngest stamp among them: what this build leaves in a set. A set with a younger one is of a newer program.
std::string newestStamp();

// Walks of single steps.
void bindFirstOperatorToWarehouses(Database& database);
void fillPartnersOfPutawayAndIssue(Database& database);
void reopenUnfinishedDocuments(Database& database);

}  // namespace jxc::schema
