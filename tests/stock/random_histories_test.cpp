// Random histories of the stock ledger beside a second replay that knows nothing of the program: it keeps its rows in
// memory and walks them one by one, as a bookkeeper would with the rules in front of him.
// JXC_HISTORIES=10000 runs as many instead of the few that the suite takes.
#include "stock/shop.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <random>
#include <set>

namespace jxc::random_histories_test {

using Text = std::string;

/// What the ledger stores behind a row, and what it was made from.
struct PaperRow {
  std::int64_t id;
  Text flag, date;
  double quantity, amount, price;
  double openQuantity = 0, openValue = 0, average = 0, stock = 0, value = 0;
};

class Paper {
 public:
  int quantityDigits, moneyDigits, totalDigits;
  double masterAverage;
  bool fixedCost;
  std::map<Text, std::vector<PaperRow>> books;  // by warehouse, in the order of entry
  std::map<Text, double> costPrice;

  void replay(const Text& warehouse, std::int64_t anchorId, bool skip) {
    std::vector<PaperRow>& book = books[warehouse];
    const auto anchor = std::find_if(book.begin(), book.end(), [&](const PaperRow& r) { return r.id == anchorId; });
    const Text day = anchor->date, anchorFlag = anchor->flag;
    std::vector<PaperRow*> order;
    for (PaperRow& row : book)
      order.push_back(&row);
    std::sort(order.begin(), order.end(),
              [](const PaperRow* a, const PaperRow* b) { return std::tie(a->date, a->id) < std::tie(b->date, b->id); });

    double q = 0, p = masterAverage, a = 0;
    for (const PaperRow* row : order)
      if (row->date < day) {
        q = row->stock;
        p = row->average;
        a = row->value;
      }
    for (PaperRow* row : order) {
      if (row->date < day || (skip && row->id == anchorId)) continue;
      row->openQuantity = q;
      row->openValue = a;
      step(*row, q, p, a);
      row->average = p;
      row->stock = q;
      row->value = a;
    }
    static const std::set<Text> setsCost{"cj", "ct", "jg", "sc", "st", "qc", "db", "bh", "cf", "kb", "ws", "pd"};
    if (!fixedCost && setsCost.contains(anchorFlag)) costPrice[warehouse] = p;
  }

 private:
  /// Half away from zero, a billionth added first. Far from zero a double cannot hold the billionth: what misses a half
  /// by its last bit only then counts as one.
  static double rounded(double value, int digits) {
    const long double scale = std::pow(10.0L, digits);
    const long double scaled = static_cast<long double>(value + 1e-9) * scale;
    return static_cast<double>(std::round(scaled + scaled * 2.3e-16L) / scale);
  }
  void step(const PaperRow& row, double& q, double& p, double& a) const {
    static const std::set<Text> in{"qc", "cj", "ct", "db", "cf", "kb", "pd", "bs", "by", "hh",
                                   "sc", "st", "jg", "ws", "bh", "pl", "wp", "wt", "bf"};
    static const std::set<Text> out{"xs", "xt", "jh", "dh", "ly", "lt"};
    static const std::set<Text> always{"cj", "ct", "jg", "sc", "st", "qc", "kb", "ws", "pd"};
    static const std::set<Text> whenIn{"db", "bh", "cf"};
    const double s = row.quantity;
    double q1 = 0, a1 = 0;
    if (in.contains(row.flag)) {
      double poolQ = q, poolA = a, t = s, u = row.amount;
      if ((s > 0 && q < 0) || (s < 0 && q > 0)) {
        poolQ = std::fabs(poolQ);
        poolA = std::fabs(poolA);
        t = std::fabs(t);
        u = std::fabs(u);
      }
      q += s;
      q1 = poolQ + t;
      a1 = poolA + u;
    }
    if (out.contains(row.flag)) q -= s;
    const bool moves = always.contains(row.flag) || (whenIn.contains(row.flag) && s > 0);
    if (moves && q != 0 && q1 != 0) {
      q = rounded(q, quantityDigits);
      if (q != 0) p = std::fabs(a1 / q1);
    }
    if (moves && row.flag != "qc" && q == 0 && q1 != 0) p = row.price;
    p = rounded(p, moneyDigits);
    q = rounded(q, quantityDigits);
    a = q == 0 ? 0 : rounded(p * q, totalDigits);
  }
};

class RandomHistories : public test::ShopTest {
 protected:
  RandomHistories() : random_(20210503) {
    addGoods("A", 0);
    execSql("insert into jxc_ckxx (ck_sn,ck_name) values ('100002','分店')");
  }
  int upTo(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }
  /// Small whole numbers above all, so that stock meets zero and its own sign often.
  double quantity() {
    switch (upTo(8)) {
      case 0:
        return 0;
      case 1:
        return (upTo(4000) - 2000) / 1000.0;
      case 2:
        return upTo(3000) / 7.0;
      case 3:
      case 4:
        return -1 - upTo(5);
      default:
        return 1 + upTo(5);
    }
  }
  double money() { return upTo(10) == 0 ? 0 : upTo(4) == 0 ? upTo(10000) / 100.0 : upTo(200000) / 1000.0; }
  Text date() {
    const Text day = "2021-05-" + std::to_string(10 + upTo(12));
    return upTo(5) ? day : day + " 1" + std::to_string(upTo(10)) + ":30:00";
  }

  void newHistory() {
    execSql("delete from jxc_goodslist");
    execSql("delete from jxc_kcsp");
    paper_ = Paper{};
    const auto pick = [this](const char* field, int value) {
      execSql(compose("update jxc_xtcs set {}=?", {field}), value);
    };
    pick("cs_cbjs", paper_.quantityDigits = upTo(7));
    pick("cs_xsws", paper_.moneyDigits = upTo(7));
    const bool apart = upTo(3) == 0;
    pick("cs_zjews", apart);
    paper_.totalDigits = paper_.moneyDigits;
    const int totals = upTo(7);
    pick("cs_jews", totals);
    if (apart) paper_.totalDigits = totals;
    pick("cs_cs009", paper_.fixedCost = upTo(8) == 0);
    loadSession();
    paper_.masterAverage = upTo(3) ? money() : 0;
    execSql("update jxc_goods set g_pjjj=? where g_sn='A'", paper_.masterAverage);
    for (const char* warehouse : {"100001", "100002"}) {
      execSql("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj) values ('A',?,0,0,0)", warehouse);
      paper_.costPrice[warehouse] = 0;
      paper_.books[warehouse];
    }
  }

  void audit(const Text& warehouse) {
    static const char* const flags[] = {"qc", "cj", "ct", "db", "cf", "kb", "pd", "bs", "by", "hh", "xs",
                                        "xt", "jh", "dh", "sc", "st", "jg", "ws", "bh", "pl", "wp", "wt",
                                        "bf", "ly", "lt", "cj", "cj", "cj", "xs", "xs", "xs", "ct", "zz"};
    PaperRow row{.id = 0,
                 .flag = flags[upTo(std::size(flags))],
                 .date = date(),
                 .quantity = quantity(),
                 .amount = 0,
                 .price = money()};
    row.quantity = std::round(row.quantity * 1e6) / 1e6;
    row.amount = std::round((upTo(4) ? row.quantity * row.price : money()) * 1e6) / 1e6;
    row.id = ledgerRow(QString::fromStdString(row.flag), QString::fromStdString(row.date), row.quantity, row.amount,
                       row.price, "A", QString::fromStdString(warehouse));
    // Rows of other programs may come without running figures.
    if (upTo(4) == 0)
      execSql("update jxc_goodslist set gl_sqsl=null,gl_sqje=null,gl_pjjj=null,gl_kc=null,gl_kczje=null where id=?",
              row.id);
    paper_.books[warehouse].push_back(row);
    paper_.replay(warehouse, row.id, false);
    replayLedger(row.id);
  }
  /// Now and then a document that held the goods several times: each of its rows is left out of one replay and seen by
  /// the others, and only then all go.
  void cancel(const Text& warehouse) {
    std::vector<PaperRow>& book = paper_.books[warehouse];
    std::vector<std::int64_t> document;
    const int lines = upTo(3) ? 1 : 2 + upTo(2);
    for (const PaperRow& row : book)
      if (static_cast<int>(document.size()) < lines && upTo(static_cast<int>(book.size())) < 2 * lines)
        document.push_back(row.id);
    for (const std::int64_t id : document) {
      paper_.replay(warehouse, id, true);
      replayLedger(id, AnchorRow::Skip);
    }
    for (const std::int64_t id : document) {
      execSql("delete from jxc_goodslist where id=?", id);
      std::erase_if(book, [id](const PaperRow& row) { return row.id == id; });
    }
  }

  /// First stored figure that differs; empty when all agree.
  std::string difference() {
    for (const auto& [warehouse, book] : paper_.books) {
      const RowSet rows =
          openSelect("select id,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje from jxc_goodslist where ck_sn=? order by id",
                     QString::fromStdString(warehouse));
      if (static_cast<std::size_t>(rows.rowCount()) != book.size()) return "rows lost";
      for (int i = 0; i < rows.rowCount(); ++i) {
        const PaperRow& row = book[static_cast<std::size_t>(i)];
        const double figures[] = {row.openQuantity, row.openValue, row.average, row.stock, row.value};
        for (int column = 1; column <= 5; ++column)
          if (rows.isNull(i, column) || !(std::fabs(rows.number(i, column) - figures[column - 1]) < 1e-6))
            return row.flag + " of " + row.date + ", column " + std::to_string(column) + ": stored " +
                   rows.text(i, column).toStdString() + ", on paper " + std::to_string(figures[column - 1]);
      }
      const double cost = lookupNumber("select kc_cbj from jxc_kcsp where ck_sn=?", QString::fromStdString(warehouse));
      if (!(std::fabs(cost - paper_.costPrice[warehouse]) < 1e-6)) return "cost price " + std::to_string(cost);
    }
    return {};
  }

  std::mt19937 random_;
  Paper paper_;
};

TEST_F(RandomHistories, StoreTheFiguresOfAReplayOnPaper) {
  const char* asked = std::getenv("JXC_HISTORIES");
  const int histories = asked ? std::atoi(asked) : 1000;
  int rows = 0, cancels = 0;
  for (int history = 0; history < histories; ++history) {
    Transaction transaction(accountDb());
    newHistory();
    const int length = 5 + upTo(56);
    for (int step = 0; step < length; ++step) {
      const Text warehouse = upTo(3) ? "100001" : "100002";
      const bool back = upTo(6) == 0;
      back ? cancel(warehouse) : audit(warehouse);
      (back ? cancels : rows) += 1;
      if (step % 4 == 3 || step == length - 1) {
        ASSERT_EQ(difference(), "") << "history " << history << ", step " << step;
      }
    }
  }
  RecordProperty("rows", rows);
  RecordProperty("cancels", cancels);
  if (asked) std::printf("%d histories, %d rows, %d cancels\n", histories, rows, cancels);
}

}  // namespace jxc::random_histories_test
