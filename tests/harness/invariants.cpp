#include "harness/invariants.h"

#include <vector>

namespace jxc::test {

namespace invariants_detail {

std::vector<Invariant>& all() {
  static std::vector<Invariant> invariants;
  return invariants;
}

}  // namespace invariants_detail

bool addInvariant(Invariant invariant) {
  invariants_detail::all().push_back(std::move(invariant));
  return true;
}

QStringList brokenInvariants() {
  QStringList broken;
  for (const Invariant& invariant : invariants_detail::all()) {
    for (const QString& line : invariant.violations())
      broken << invariant.name + QStringLiteral(": ") + line;
  }
  return broken;
}

}  // namespace jxc::test
