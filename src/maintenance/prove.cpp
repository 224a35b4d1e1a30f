#include "maintenance/prove.h"

#include "core/clock.h"
#include "core/schema/indexes.h"
#include "core/schema/schema.h"
#include "core/statements.h"
#include "core/unusual.h"
#include "engine/bulk.h"
#include "engine/waiting.h"
#include "maintenance/proof_books.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace jxc::proof {
namespace prove_detail {

/// Of the whole time; a set in memory has no file to be read.
constexpr int percentOfFile = 25;

/// What the books lie on, before anything is read from it.
void proveStorage(Books& books, const Progress& progress) {
  const StorageCheck check = books.db.checkStorage([&progress](int percent) {
    return !progress || progress(percent * percentOfFile / 100, QStringLiteral("检查帐套文件"));
  });
  if (!check.finished) throw Stopped{};
  for (const QString& damage : check.damage)
    books.findings.add(Kind::Damage, [&] { return Place{check.file, damage, {}}; });
  for (const QString& advice : check.advice)
    books.findings.add(Kind::NoChecksums, [&] { return Place{{}, advice, {}}; });
}

/// What somebody else has put beside the tables of this program.
void proveObjects(Books& books) {
  constexpr std::array words{"数据表 ", "索引 ", "视图 ", "触发器 "};
  using ObjectKind = StoredObject::Kind;
  for (const StoredObject& object : bulkOf(books.db).storedObjects()) {
    const bool isTable = object.kind == ObjectKind::Table;
    if (isTable && schema::findDefinition(object.name) != nullptr) continue;
    if (object.kind == ObjectKind::Index && schema::isOwnIndex(object.name)) continue;
    const bool runs = object.kind == ObjectKind::View || object.kind == ObjectKind::Trigger;
    books.findings.add(runs ? Kind::ForeignCode : Kind::ForeignTable, [&] {
      QString place =
          QString::fromUtf8(words[static_cast<std::size_t>(object.kind)]) + QString::fromStdString(object.name);
      if (object.table != object.name) place += QStringLiteral("（%1）").arg(QString::fromStdString(object.table));
      return Place{place, {}, {}};
    });
  }
}

}  // namespace prove_detail

void proveUnusual(Books& books) {
  // A set of an older build has no such table.
  const RowSet lock = stands(books.db, "select sd_lsid from jxc_zmsd")
                          ? books.select("select top 1 sd_rq,sd_lsid from jxc_zmsd order by id desc")
                          : RowSet();
  const bool isAnyLocked = !lock.isEmpty() && !lock.text(0, 0).isEmpty();
  const std::int64_t lastThen = isAnyLocked ? lock.integer(0, 1) : 0;
  const std::string today = clock::today().toStdString() + '~';
  const std::string lockedUntil = isAnyLocked ? lock.text(0, 0).toStdString() + '~' : std::string();
  const std::vector<char> isFuture = books.whichDates([&](const std::string& day) { return day > today; });
  const std::vector<char> isLocked =
      books.whichDates([&](const std::string& day) { return isAnyLocked && day <= lockedUntil; });
  for (const int index : books.pairsInOrder) {
    const Pair& pair = books.pairs[static_cast<std::size_t>(index)];
    for (const LedgerRow& row : pair.rows) {
      const auto place = [&] {
        const QString number = row.number < 0 ? u"流水 "_qs + QString::number(row.id) : books.numbers.shown(row.number);
        return Place{number + u' ' + books.nameOf(pair),
                     QString::number(row.quantity) + u'，' + QString::fromStdString(books.dateOf(row)),
                     {}};
      };
      const auto date = static_cast<std::size_t>(row.date);
      if (std::max(std::fabs(row.quantity), std::fabs(row.net)) > mostUsual) books.findings.add(Kind::OddFigure, place);
      if (isFuture[date]) books.findings.add(Kind::FutureDay, place);
      if (isLocked[date] && row.id > lastThen) books.findings.add(Kind::LockedDay, place);
    }
  }
  const RowSet last = books.select(lastLogEntry);
  const QString day = last.isEmpty() || last.isNull(0, 0) ? QString() : last.text(0, 0).left(10);
  if (day > clock::today()) books.findings.add(Kind::ClockBehind, [&] { return Place{{}, clock::today(), day}; });
}

Proof prove(Database& books, const Progress& progress) {
  using namespace prove_detail;
  const LongWork longWork;
  // A reader of its own sees one moment, whatever others post meanwhile. In memory there are no others.
  const std::unique_ptr<Database> reader = books.inTransaction() ? nullptr : books.openReader();
  std::optional<Transaction> moment;
  if (reader) moment.emplace(*reader);

  Proof proof;
  Progress behindFile;
  if (progress)
    behindFile = [&progress](int percent, const QString& doing) {
      return progress(percentOfFile + percent * (100 - percentOfFile) / 100, doing);
    };
  Books all(reader ? *reader : books, behindFile);
  try {
    proveStorage(all, progress);
    // Figures from a damaged file prove nothing, and reading on may end in the middle.
    if (!all.findings.has(Kind::Damage)) {
      proveObjects(all);
      all.load();
      proveStock(all);
      proveBalances(all);
      proveMonths(all);
      proveMoney(all);
      proveDocuments(all);
      proveUnusual(all);
      proveLog(all);
      proof.finished = true;
    }
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
