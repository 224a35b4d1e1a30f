#include "maintenance/proof_books.h"

#include "core/schema/schema.h"
#include "core/statements.h"
#include "core/text.h"
#include "engine/waiting.h"
#include "stock/partial_movement.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <future>
#include <numeric>
#include <utility>

namespace jxc::proof {
namespace proof_books_detail {

constexpr std::string_view balancingGoods = "00000000";
constexpr std::int64_t chunkRows = 20000;

/// Put together from parts of this file and of the families, all of them identifiers.
std::string joined(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (const std::string_view part : parts)
    text += part;
  return text;
}

std::uint32_t hashOf(std::string_view text) {
  return static_cast<std::uint32_t>(std::hash<std::string_view>()(text));
}

}  // namespace proof_books_detail

bool leavesCost(const DocumentFamily& family) {
  const LedgerFlag* const flag = findLedgerFlag(family.flag);
  return flag && !flag->setsCost();
}

// ---- names -------------------------------------------------------------------------------------------------------

int Names::add(std::string_view text) {
  if (last_ >= 0 && texts_[static_cast<std::size_t>(last_)] == text) return last_;
  const std::uint32_t hash = proof_books_detail::hashOf(text);
  std::size_t slot = slotOf(text, hash);
  if (slots_[slot].index >= 0) return last_ = slots_[slot].index;
  if (texts_.size() * 2 >= slots_.size()) {
    makeRoom();
    slot = slotOf(text, hash);
  }
  last_ = static_cast<int>(texts_.size());
  texts_.emplace_back(text);
  slots_[slot] = {hash, last_};
  return last_;
}

int Names::find(std::string_view text) const {
  return slots_[slotOf(text, proof_books_detail::hashOf(text))].index;
}

std::size_t Names::slotOf(std::string_view text, std::uint32_t hash) const {
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
    const Slot& slot = slots_[at];
    if (slot.index < 0 || (slot.hash == hash && texts_[static_cast<std::size_t>(slot.index)] == text)) return at;
  }
}

void Names::makeRoom() {
  const std::vector<Slot> before = std::exchange(slots_, std::vector<Slot>(slots_.size() * 4));
  const std::size_t mask = slots_.size() - 1;
  for (const Slot& slot : before) {
    if (slot.index < 0) continue;
    std::size_t at = slot.hash & mask;
    while (slots_[at].index >= 0)
      at = (at + 1) & mask;
    slots_[at] = slot;
  }
}

bool sameAmount(double a, double b) {
  return std::fabs(a - b) < 1e-5 + 1e-12 * std::fabs(a);
}
bool sameFigure(double a, double b) {
  return std::fabs(a - b) < 5e-7 + 1e-14 * std::fabs(a);
}

bool addsUp(double sum, const std::vector<double>& amounts) {
  constexpr std::size_t most = 4096;  // sums that are looked at
  std::vector<double> sums{0};
  for (const double amount : amounts) {
    const std::size_t before = sums.size();
    for (std::size_t i = 0; i < before && sums.size() < most; ++i)
      sums.push_back(sums[i] + amount);
  }
  return std::ranges::any_of(sums, [sum](double each) { return sameAmount(each, sum); });
}

// ---- reading -----------------------------------------------------------------------------------------------------

Books::Books(Database& database, const Progress& progress) : db(database), progress_(progress) {}

void Books::step(int percent, const QString& doing) {
  percent_ = percent;
  doing_ = doing;
  if (progress_ && !progress_(percent, doing)) throw Stopped{};
}

void Books::eachChunk(std::string_view table, std::string_view columns,
                      const std::function<void(const RowSet&)>& take) {
  using proof_books_detail::chunkRows;
  const RowSet ends = select("select min(id),max(id) from " + std::string(table));
  if (ends.isEmpty() || ends.isNull(0, 0)) return;
  const std::string sql =
      proof_books_detail::joined({"select id,", columns, " from ", table, " where id>=? and id<? order by id"});
  const std::int64_t last = ends.integer(0, 1);
  std::int64_t from = ends.integer(0, 0);
  RowSet rows = select(sql, from, from + chunkRows);
  while (from <= last) {
    from += chunkRows;
    std::future<RowSet> next;
    if (from <= last)
      next = std::async(std::launch::async, [&] {
        const LongWork longWork;
        return select(sql, from, from + chunkRows);
      });
    take(rows);
    if (next.valid()) rows = next.get();
    // Here nobody reads: whoever is told may ask the database himself.
    if (progress_ && !progress_(percent_, doing_)) throw Stopped{};
  }
}

int Books::pairOf(int goodsIndex, int warehouse) {
  const std::int64_t key = static_cast<std::int64_t>(goodsIndex) << 32 | static_cast<std::uint32_t>(warehouse);
  const auto [found, isNew] = pairIndex_.try_emplace(key, static_cast<int>(pairs.size()));
  if (isNew) pairs.push_back({.goods = goodsIndex, .warehouse = warehouse});
  return found->second;
}

int Books::findPair(int goodsIndex, int warehouse) const {
  const auto found =
      pairIndex_.find(static_cast<std::int64_t>(goodsIndex) << 32 | static_cast<std::uint32_t>(warehouse));
  return found == pairIndex_.end() ? -1 : found->second;
}

Document& Books::document(std::string_view number) {
  const int index = numbers.add(number);
  while (static_cast<int>(documents.size()) <= index)
    documents.push_back({.number = static_cast<int>(documents.size())});
  return documents[static_cast<std::size_t>(index)];
}

QString Books::nameOf(const Pair& pair) const {
  return u"商品 "_qs + goods.shown(pair.goods) + u" 仓库 "_qs + warehouses.shown(pair.warehouse);
}

void Books::load() {
  // A set of an older build has no such table.
  if (stands(db, "select da_ql from jxc_jsda")) {
    const QString day = select("select max(da_year) as day from jxc_jsda where da_ql=0").front().text("day");
    if (!day.isEmpty()) closedUntil = day.toStdString() + " 23:59:59";
  }
  loadLedger();
  loadBalances();
  loadHeads();
  loadLines();
  markCancelled();
  sortPairs();
}

void Books::loadLedger() {
  step(1, u"读取库存流水"_qs);
  const RowSet ends = select("select min(id),max(id) from jxc_goodslist");
  if (ends.isEmpty() || ends.isNull(0, 0)) return;
  const double first = ends.number(0, 0), span = std::max(1.0, ends.number(0, 1) - first);
  enum {
    Id,
    Flag,
    Number,
    Date,
    Goods,
    Where,
    Quantity,
    Net,
    Price,
    Before,
    ValueBefore,
    Average,
    Stock,
    Value,
    Total,
    Source,
    Linked
  };
  const LedgerFlag* lastFlag = nullptr;
  std::string lastFlagText;
  eachChunk("jxc_goodslist",
            "gl_flag,gl_djh,gl_kdrq,g_sn,ck_sn,gl_sl,gl_je,gl_dj,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje,"
            "gl_zje,gl_fdmc,gl_djh2",
            [&](const RowSet& set) {
              for (int row = 0; row < set.rowCount(); ++row) {
                const std::string_view flagText = set.utf8(row, Flag);
                if (flagText != lastFlagText) {
                  lastFlagText = flagText;
                  lastFlag = findLedgerFlag(flagText);
                }
                const std::string_view numberText = set.utf8(row, Number);
                const std::int64_t id = set.integer(row, Id);
                const bool balancing = set.utf8(row, Goods) == proof_books_detail::balancingGoods;
                ++ledgerRows;
                if (!numberText.empty()) {
                  Document& under = document(numberText);
                  if (++under.ledgerRows == 1) under.firstLedgerRow = id;
                  under.ledgerTotal += set.number(row, Total);
                  under.ledgerPieces += set.number(row, Quantity);
                  if (set.utf8(row, Source) == "99")
                    under.ledgerKind = '9';
                  else if (flagText == "dh")
                    under.ledgerKind = 'd';
                  else if (lastFlag && lastFlag->writer == LedgerWriter::Exchange)
                    under.ledgerKind = 'r';
                  else if (balancing && (numberText.starts_with("YS") || numberText.starts_with("YF")))
                    under.ledgerKind = 'o';
                }
                if (!lastFlag)
                  findings.add(Kind::UnknownFlag, [&] {
                    return Place{u"流水 "_qs + QString::number(id) + u" 单据 "_qs + set.text(row, Number),
                                 set.text(row, Flag),
                                 {}};
                  });
                if (balancing) continue;
                const int pairIndex = pairOf(goods.add(set.utf8(row, Goods)), warehouses.add(set.utf8(row, Where)));
                pairs[static_cast<std::size_t>(pairIndex)].rows.push_back(static_cast<std::uint32_t>(rows.size()));
                rows.push_back({.id = id,
                                .pair = pairIndex,
                                .date = dates.add(set.utf8(row, Date)),
                                .number = numberText.empty() ? -1 : numbers.add(numberText),
                                .flag = lastFlag,
                                .quantity = set.number(row, Quantity),
                                .net = set.number(row, Net),
                                .price = set.number(row, Price),
                                .stockBefore = set.number(row, Before),
                                .valueBefore = set.number(row, ValueBefore),
                                .average = set.number(row, Average),
                                .stock = set.number(row, Stock),
                                .value = set.number(row, Value)});
              }
              if (set.rowCount() > 0)
                percent_ = 1 + static_cast<int>(49 * (set.number(set.rowCount() - 1, Id) - first) / span);
            });
}

void Books::loadBalances() {
  step(50, u"读取当前库存"_qs);
  eachChunk("jxc_kcsp", "g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj,kc_xssl", [&](const RowSet& set) {
    for (int row = 0; row < set.rowCount(); ++row) {
      Pair& at = pair(goods.add(set.utf8(row, 1)), warehouses.add(set.utf8(row, 2)));
      if (at.balance.id != 0) {
        findings.add(Kind::BalanceTwice, [&] {
          return Place{nameOf(at), u"库存 "_qs + set.text(row, 3), u"只有一条"_qs};
        });
        continue;
      }
      at.balance = {set.integer(row, 0), set.number(row, 3), set.number(row, 4), set.number(row, 5),
                    set.number(row, 6)};
    }
  });
}

void Books::loadHeads() {
  step(54, u"读取单据"_qs);
  for (const DocumentFamily& family : documentFamilies()) {
    if (family.sharesTables) continue;
    const bool whole = !family.whole.goods.empty();
    const bool moves = !family.into.empty();
    std::string columns = proof_books_detail::joined(
        {family.number, ",", family.status, ",", family.checker, ",", family.checkDate, ",", family.warehouse, ","});
    columns +=
        family.hasMoney() ? compose("{},{},{}", {family.due, family.paid, family.settlement}) : std::string("0,0,0");
    columns += whole ? compose(",{},{}", {family.whole.goods, family.whole.quantity}) : std::string(",null,0");
    columns += moves ? compose(",{}", {family.into}) : std::string(",null");
    columns += family.fromTill.empty() ? std::string(",0") : compose(",{}", {family.fromTill});
    columns += family.allMoved.empty() ? std::string(",null") : compose(",{}", {family.allMoved});
    columns += compose(",{}", {family.date});
    enum {
      Id,
      Number,
      Status,
      Checker,
      Date,
      Warehouse,
      Due,
      Paid,
      Settlement,
      Goods,
      Quantity,
      Into,
      Till,
      Moved,
      Day
    };
    eachChunk(family.head, columns, [&](const RowSet& set) {
      for (int row = 0; row < set.rowCount(); ++row) {
        Document& head = document(set.utf8(row, Number));
        const bool audited = set.integer(row, Status) == 1;
        ++head.heads;
        head.auditedHeads += audited;
        if (head.heads > 1 && !audited) continue;  // an audited head speaks for the number
        const DocumentFamily* const named = findFamily(set.utf8(row, Number));
        head.family = named && named->head == family.head ? named : &family;
        head.audited = audited;
        head.closed = audited && set.utf8(row, Day) <= closedUntil;
        head.signedOff = !set.utf8(row, Checker).empty() && !set.utf8(row, Date).empty();
        head.warehouse = warehouses.add(set.utf8(row, Warehouse));
        head.due = set.number(row, Due);
        head.paid = set.number(row, Paid);
        head.settlement = static_cast<int>(set.integer(row, Settlement));
        if (whole) head.goods = goods.add(set.utf8(row, Goods));
        head.headQuantity = set.number(row, Quantity);
        if (moves) head.warehouseIn = warehouses.add(set.utf8(row, Into));
        head.fromTill = set.integer(row, Till) != 0;
        if (!set.isNull(row, Moved)) head.moved = set.integer(row, Moved) != 0;
      }
    });
  }
}

void Books::loadLines() {
  step(58, u"读取单据明细"_qs);
  for (const DocumentFamily& family : documentFamilies()) {
    if (family.sharesTables) continue;
    // What was put away or issued and what never will be; of a count the stock that it found written.
    const LineTable& line = family.line;
    const bool count = family.isCount(), movesLater = partial::behind(family) != nullptr;
    const auto or0 = [](std::string_view column) { return column.empty() ? std::string_view("0") : column; };
    enum { Id, Number, Goods, Quantity, Total, Moved, Closed, Warehouse, Mark, Maker, Cost };
    eachChunk(
        family.lines,
        proof_books_detail::joined({family.number, ",g_sn,", line.columns->quantity, ",", or0(line.columns->total), ",",
                                    count ? line.countedShelf : or0(line.columns->moved), ",", or0(line.closed), ",",
                                    line.warehouse.empty() ? "null" : line.warehouse, ",", or0(line.link), ",a_name,",
                                    or0(line.columns->cost)}),
        [&](const RowSet& set) {
          for (int row = 0; row < set.rowCount(); ++row) {
            Document& under = document(set.utf8(row, Number));
            const double quantity = set.number(row, Quantity), moved = set.number(row, Moved);
            const bool balancing = set.utf8(row, Goods) == proof_books_detail::balancingGoods;
            if (++under.lines == 1) {
              under.firstLine = set.integer(row, Id);
              if (!under.family) under.maker = set.text(row, Maker);
            }
            under.total += set.number(row, Total);
            under.pieces += quantity;
            if (balancing)
              under.balancing += set.number(row, Total);
            else
              ++under.goodsLines;
            under.movingLines += !count || quantity != moved;
            if (!under.family || balancing) continue;
            if (under.audited && movesLater) {
              const double open = quantity - moved - set.number(row, Closed);
              if (std::fabs(open) < 1e-9) continue;
              // Lines below zero are what an exchange brings back.
              ++(open * quantity < 0 ? under.overLines : under.openLines);
              Pair& at = pair(goods.add(set.utf8(row, Goods)), under.warehouse);
              (family.comesIn ? at.waitingIn : at.waitingOut) += open;
            } else if (!under.audited && !family.partial) {
              waiting.push_back(
                  {.document = under.number,
                   .goods = goods.add(set.utf8(row, Goods)),
                   .warehouse = set.isNull(row, Warehouse) ? -1 : warehouses.add(set.utf8(row, Warehouse)),
                   .quantity = quantity,
                   .price = quantity == 0 ? 0 : std::fabs(set.number(row, Total) / quantity),
                   .cost = set.number(row, Cost),
                   .wasAudited = line.link.empty() || set.integer(row, Mark) != 0});
            }
          }
        });
  }
}

/// A draft that was never audited explains nothing. Where the log does not go back far enough, the mark that an audit
/// leaves in the lines is taken for it, and a family that has none is given the benefit of the doubt.
void Books::markCancelled() {
  for (WaitingLine& line : waiting)
    line.cancelled = log.cancelled(line.document) || (!log.mentions(line.document) && line.wasAudited);
}

// ---- the log -----------------------------------------------------------------------------------------------------

const std::string* DocumentLog::cancelled(int number) {
  read();
  const auto found = cancelled_.find(number);
  return found == cancelled_.end() ? nullptr : &found->second;
}

bool DocumentLog::mentions(int number) {
  read();
  return mentioned_.contains(number);
}

bool DocumentLog::hasDeleted() {
  read();
  return hasDeleted_;
}

void DocumentLog::read() {
  if (isRead_) return;
  isRead_ = true;
  constexpr std::string_view cancels = "取消审核", digits = "0123456789";
  books_.eachChunk("jxc_log", "log_time,log_note", [&](const RowSet& set) {
    for (int row = 0; row < set.rowCount(); ++row) {
      // "增加未审核销售单XS21050310001，共2种商品": two letters and digits.
      const std::string_view note = set.utf8(row, 2);
      const std::size_t first = note.find_first_of(digits);
      if (first == std::string_view::npos || first < 2) continue;
      const std::size_t end = std::min(note.find_first_not_of(digits, first), note.size());
      const std::string_view number = note.substr(first - 2, end - first + 2);
      const int known = books_.numbers.find(number);
      const bool cancel = note.starts_with(cancels);
      if (known >= 0) {
        mentioned_.insert(known);
        if (cancel) cancelled_[known] = set.utf8(row, 1);
      } else if (cancel) {
        const DocumentFamily* const family = findFamily(number);
        hasDeleted_ = hasDeleted_ || (family && leavesCost(*family));
      }
    }
  });
}

// ---- order -------------------------------------------------------------------------------------------------------

/// Dates take their rank, rows of each pair come into the order of the ledger.
void Books::sortPairs() {
  std::vector<int> byText(static_cast<std::size_t>(dates.size())), rank(byText.size());
  std::iota(byText.begin(), byText.end(), 0);
  std::ranges::sort(byText, [&](int a, int b) { return dates.text(a) < dates.text(b); });
  for (std::size_t i = 0; i < byText.size(); ++i)
    rank[static_cast<std::size_t>(byText[i])] = static_cast<int>(i);
  const auto rankOf = [&](std::uint32_t row) { return rank[static_cast<std::size_t>(rows[row].date)]; };
  for (Pair& each : pairs) {
    const auto earlier = [&](std::uint32_t a, std::uint32_t b) { return rankOf(a) < rankOf(b); };
    if (!std::ranges::is_sorted(each.rows, earlier)) std::ranges::stable_sort(each.rows, earlier);  // ids ascend
  }
  pairsInOrder.resize(pairs.size());
  std::iota(pairsInOrder.begin(), pairsInOrder.end(), 0);
  std::ranges::sort(pairsInOrder, [&](int a, int b) {
    const Pair &left = pairs[static_cast<std::size_t>(a)], &right = pairs[static_cast<std::size_t>(b)];
    if (left.goods != right.goods) return goods.text(left.goods) < goods.text(right.goods);
    return warehouses.text(left.warehouse) < warehouses.text(right.warehouse);
  });
}

}  // namespace jxc::proof
