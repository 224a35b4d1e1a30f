// 核对所见: what the proof finds in the books, a line each, for the tests of commands that have to leave them clean.
#pragma once

#include "core/statements.h"
#include "maintenance/prove.h"

#include <QStringList>

namespace jxc::test {

/// "code place: stored, not due" of findings of a weight.
inline QStringList found(const proof::Proof& proof, proof::Weight weight = proof::Weight::Wrong) {
  QStringList list;
  for (const proof::Finding& each : proof.findings)
    if (each.weight == weight)
      list << QString::fromStdString(each.code) + u' ' + each.place + QStringLiteral(": ") + each.stored +
                  QStringLiteral(", not ") + each.due;
  return list;
}
/// What is wrong in the account set in use.
inline QStringList foundWrong() {
  return found(proof::prove(accountDb()));
}

}  // namespace jxc::test
