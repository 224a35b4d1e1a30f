// 不变量: what must hold in an account set after any story.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace jxc::test {

/// One rule that never breaks: returns one line for each row that breaks it.
struct Invariant {
  QString name;
  std::function<QStringList()> violations;
};

/// Registers a rule (at namespace scope of the test file that knows the subsystem, or from the harness).
bool addInvariant(Invariant invariant);

/// All rules that are broken in the account set in use, one line each; empty when the books are right:
/// `EXPECT_EQ(brokenInvariants(), QStringList())`.
QStringList brokenInvariants();

}  // namespace jxc::test
