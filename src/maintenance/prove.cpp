#include "maintenance/prove.h"

#include "core/statements.h"
#include "maintenance/proof_books.h"

#include <algorithm>
#include <optional>

namespace jxc::proof {

Proof prove(Database& books, const Progress& progress) {
  // A reader of its own sees one moment, whatever others post meanwhile. In memory there are no others.
  const std::unique_ptr<Database> reader = books.inTransaction() ? nullptr : books.openReader();
  std::optional<Transaction> moment;
  if (reader) moment.emplace(*reader);

  Proof proof;
  Books all(reader ? *reader : books, progress);
  try {
    all.load();
    proveStock(all);
    proveBalances(all);
    proveMonths(all);
    proveMoney(all);
    proveDocuments(all);
    proveLog(all);
    proof.finished = true;
  } catch (const Stopped&) {
    // What was found until then is told.
  }
  proof.findings = all.findings.all();
  proof.ledgerRows = all.ledgerRows;
  proof.documents = std::ranges::count_if(all.documents, [](const Document& each) { return each.heads > 0; });
  return proof;
}

Proof proveAccount(const Progress& progress) {
  return prove(accountDb(), progress);
}

}  // namespace jxc::proof
