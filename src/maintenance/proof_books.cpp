#include "maintenance/proof_books.h"

#include "core/schema/schema.h"
#include "core/statements.h"
#include "core/text.h"
#include "maintenance/proof_days.h"
#include "stock/partial_movement.h"

#include <algorithm>
#include <cmath>
#include <functional>
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

/// The columns of a list that stand behind `id`, as far as the table has them: an empty name gets no place (-1).
class Columns {
 public:
  int add(std::string_view name) {
    if (name.empty()) return -1;
    if (count_++ > 0) list_ += ',';
    list_ += name;
    return count_;
  }
  const std::string& list() const { return list_; }

 private:
  std::string list_;
  int count_ = 0;
};

std::uint32_t hashOf(std::string_view text) {
  return static_cast<std::uint32_t>(std::hash<std::string_view>()(text));
}

}  // namespace proof_books_detail

bool leavesCost(const DocumentFamily& family) {
  const LedgerFlag* const flag = findLedgerFlag(family.flag);
  return flag && !flag->setsCost();
}

// ---- names -------------------------------------------------------------------------------------------------------

int Names::found(int index) {
  lastText_ = text(index);
  return last_ = index;
}

int Names::addOther(std::string_view text) {
  // What stands one below the other in one table mostly does so in the others.
  if (last_ + 1 < size() && this->text(last_ + 1) == text) return found(last_ + 1);
  const std::uint32_t hash = proof_books_detail::hashOf(text);
  std::size_t slot = slotOf(text, hash);
  if (slots_[slot].index >= 0) return found(slots_[slot].index);
  if (texts_.size() * 2 >= slots_.size()) {
    makeRoom();
    slot = slotOf(text, hash);
  }
  texts_.emplace_back(text);
  slots_[slot] = {hash, size() - 1};
  return found(size() - 1);
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

std::optional<Books::Ends> Books::endsOf(std::string_view table) {
  // Asked one by one each is found at an end of the table; asked together SQLite reads all rows.
  const RowSet first = select("select min(id) from " + std::string(table));
  if (first.isEmpty() || first.isNull(0, 0)) return {};
  return Ends{first.integer(0, 0), select("select max(id) from " + std::string(table)).integer(0, 0)};
}

void Books::eachRow(std::string_view table, std::string_view columns, const TakeRow& take) {
  using proof_books_detail::chunkRows;
  const auto ends = endsOf(table);
  if (!ends) return;
  const std::string sql =
      proof_books_detail::joined({"select id,", columns, " from ", table, " where id>=? and id<? order by id"});
  for (std::int64_t from = ends->first; from <= ends->last; from += chunkRows) {
    walkRows(db, sql, std::array<Value, 2>{Value(from), Value(from + chunkRows)}, take);
    // Here nobody reads: whoever is told may ask the database himself.
    if (progress_ && !progress_(percent_, doing_)) throw Stopped{};
  }
}

Books::Way Books::wayThrough(std::string_view table, int percentBehind) {
  const auto ends = endsOf(table);
  return {.from = percent_, .behind = percentBehind, .rows = ends ? ends->last - ends->first + 1 : 1};
}

void Books::tell(const Way& way) {
  step(way.from + static_cast<int>((way.behind - way.from) * way.done / way.rows), doing_);
}

int Books::pairOf(int goodsIndex, int warehouse) {
  if (const int found = findPair(goodsIndex, warehouse); found >= 0) return found;
  const auto at = static_cast<std::size_t>(goodsIndex);
  if (pairsOfGoods_.size() <= at) pairsOfGoods_.resize(at + 1);
  pairsOfGoods_[at].push_back(static_cast<int>(pairs.size()));
  pairs.push_back({.goods = goodsIndex, .warehouse = warehouse});
  return pairsOfGoods_[at].back();
}

int Books::findPair(int goodsIndex, int warehouse) const {
  const auto at = static_cast<std::size_t>(goodsIndex);
  if (goodsIndex < 0 || at >= pairsOfGoods_.size()) return -1;
  for (const int each : pairsOfGoods_[at])
    if (pairs[static_cast<std::size_t>(each)].warehouse == warehouse) return each;
  return -1;
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
  const auto ends = endsOf("jxc_goodslist");
  if (!ends) return;
  const std::int64_t span = std::max<std::int64_t>(1, ends->last - ends->first);
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
    Source
  };
  const LedgerFlag* lastFlag = nullptr;
  std::string lastFlagText;
  eachRow("jxc_goodslist",
          "gl_flag,gl_djh,gl_kdrq,g_sn,ck_sn,gl_sl,gl_je,gl_dj,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje,"
          "gl_zje,gl_fdmc",
          [&](const WalkedRow& row) {
            const std::string_view flagText = row.utf8(Flag);
            if (flagText != lastFlagText) {
              lastFlagText = flagText;
              lastFlag = findLedgerFlag(flagText);
            }
            const std::string_view numberText = row.utf8(Number);
            const std::int64_t id = row.integer(Id);
            const std::string_view code = row.utf8(Goods);
            const double quantity = row.number(Quantity);
            const bool balancing = code == proof_books_detail::balancingGoods;
            if (++ledgerRows % 4096 == 0) percent_ = 1 + static_cast<int>(49 * (id - ends->first) / span);
            int number = -1;
            if (!numberText.empty()) {
              Document& under = document(numberText);
              number = under.number;
              if (++under.ledgerRows == 1) under.firstLedgerRow = id;
              under.ledgerTotal += row.number(Total);
              under.ledgerPieces += quantity;
              if (row.utf8(Source) == "99")
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
                return Place{u"流水 "_qs + QString::number(id) + u" 单据 "_qs + row.text(Number), row.text(Flag), {}};
              });
            if (balancing) return;
            const int pairIndex = pairOf(goods.add(code), warehouses.add(row.utf8(Where)));
            pairs[static_cast<std::size_t>(pairIndex)].rows.push_back({.id = id,
                                                                       .date = dates.add(row.utf8(Date)),
                                                                       .number = number,
                                                                       .flag = lastFlag,
                                                                       .quantity = quantity,
                                                                       .net = row.number(Net),
                                                                       .price = row.number(Price),
                                                                       .stockBefore = row.number(Before),
                                                                       .valueBefore = row.number(ValueBefore),
                                                                       .average = row.number(Average),
                                                                       .stock = row.number(Stock),
                                                                       .value = row.number(Value)});
          });
}

void Books::loadBalances() {
  step(50, u"读取当前库存"_qs);
  eachRow("jxc_kcsp", "g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj,kc_xssl", [&](const WalkedRow& row) {
    Pair& at = pair(goods.add(row.utf8(1)), warehouses.add(row.utf8(2)));
    if (at.balance.id != 0) {
      findings.add(Kind::BalanceTwice, [&] { return Place{nameOf(at), u"库存 "_qs + row.text(3), u"只有一条"_qs}; });
      return;
    }
    at.balance = {row.integer(0), row.number(3), row.number(4), row.number(5), row.number(6)};
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
    DaysInOrder days(findings);
    eachRow(family.head, columns, [&](const WalkedRow& row) {
      Document& head = document(row.utf8(Number));
      days.see(row.utf8(Number), row.utf8(Day), row.utf8(Date));
      const bool audited = row.integer(Status) == 1;
      ++head.heads;
      head.auditedHeads += audited;
      if (head.heads > 1 && !audited) return;  // an audited head speaks for the number
      const DocumentFamily* const named = findFamily(row.utf8(Number));
      head.family = named && named->head == family.head ? named : &family;
      head.audited = audited;
      head.closed = audited && !closedUntil.empty() && row.utf8(Day) <= closedUntil;
      head.signedOff = !row.utf8(Checker).empty() && !row.utf8(Date).empty();
      head.warehouse = warehouses.add(row.utf8(Warehouse));
      head.due = row.number(Due);
      head.paid = row.number(Paid);
      head.settlement = static_cast<int>(row.integer(Settlement));
      if (whole) head.goods = goods.add(row.utf8(Goods));
      head.headQuantity = row.number(Quantity);
      if (moves) head.warehouseIn = warehouses.add(row.utf8(Into));
      head.fromTill = row.integer(Till) != 0;
      if (!row.isNull(Moved)) head.moved = row.integer(Moved) != 0;
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
    proof_books_detail::Columns columns;
    const int number = columns.add(family.number), goodsCode = columns.add("g_sn");
    const int pieces = columns.add(line.columns->quantity), total = columns.add(line.columns->total);
    const int moved = columns.add(count ? line.countedShelf : movesLater ? line.columns->moved : "");
    const int closed = columns.add(movesLater ? line.closed : "");
    const int warehouse = columns.add(line.warehouse), mark = columns.add(line.link);
    const int cost = columns.add(line.columns->cost);
    eachRow(family.lines, columns.list(), [&](const WalkedRow& row) {
      const auto figure = [&row](int column) { return column < 0 ? 0 : row.number(column); };
      Document& under = document(row.utf8(number));
      const double quantity = figure(pieces), sum = figure(total);
      const bool balancing = row.utf8(goodsCode) == proof_books_detail::balancingGoods;
      if (++under.lines == 1) {
        under.firstLine = row.integer(0);
        under.lineTable = family.lines;
      }
      under.total += sum;
      under.pieces += quantity;
      if (balancing)
        under.balancing += sum;
      else
        ++under.goodsLines;
      under.movingLines += !count || quantity != figure(moved);
      if (!under.family || balancing) return;
      if (under.audited && movesLater) {
        const double open = quantity - figure(moved) - figure(closed);
        if (std::fabs(open) < 1e-9) return;
        // Lines below zero are what an exchange brings back.
        ++(open * quantity < 0 ? under.overLines : under.openLines);
        Pair& at = pair(goods.add(row.utf8(goodsCode)), under.warehouse);
        (family.comesIn ? at.waitingIn : at.waitingOut) += open;
      } else if (!under.audited && !family.partial) {
        const bool isElsewhere = warehouse >= 0 && !row.isNull(warehouse);
        waiting.push_back({.document = under.number,
                           .goods = goods.add(row.utf8(goodsCode)),
                           .warehouse = isElsewhere ? warehouses.add(row.utf8(warehouse)) : -1,
                           .quantity = quantity,
                           .price = quantity == 0 ? 0 : std::fabs(sum / quantity),
                           .cost = figure(cost),
                           .wasAudited = mark < 0 || row.integer(mark) != 0});
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
  books_.eachRow("jxc_log", "log_time,log_note", [&](const WalkedRow& row) {
    // "增加未审核销售单XS21050310001，共2种商品": two letters and digits.
    const std::string_view note = row.utf8(2);
    const std::size_t first = note.find_first_of(digits);
    if (first == std::string_view::npos || first < 2) return;
    const std::size_t end = std::min(note.find_first_not_of(digits, first), note.size());
    const std::string_view number = note.substr(first - 2, end - first + 2);
    const int known = books_.numbers.find(number);
    const bool cancel = note.starts_with(cancels);
    if (known >= 0) {
      mentioned_.insert(known);
      if (cancel) cancelled_[known] = row.utf8(1);
    } else if (cancel) {
      const DocumentFamily* const family = findFamily(number);
      hasDeleted_ = hasDeleted_ || (family && leavesCost(*family));
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
  const auto rankOf = [&](const LedgerRow& row) { return rank[static_cast<std::size_t>(row.date)]; };
  for (Pair& each : pairs) {
    const auto earlier = [&](const LedgerRow& a, const LedgerRow& b) { return rankOf(a) < rankOf(b); };
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
