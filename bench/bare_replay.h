// 对照基准: statements of a command by hand, and the replay of a goods' ledger as somebody would write it on bare
// SQLite.
#pragma once

#include "bare_shop.h"

#include <cmath>
#include <list>
#include <string>
#include <utility>
#include <vector>

namespace jxc::bench {

/// Statements of the bare interface, each prepared when it is met first.
class BareStatements {
 public:
  explicit BareStatements(sqlite3* db) : db_(db) {}

  Bare& sql(const char* text) {
    for (auto& [known, statement] : statements_)
      if (known == text) return statement;
    return statements_.emplace_back(text, Bare(db_, text)).second;
  }
  /// The first cell, 0 without a row.
  double one(Bare& statement) {
    const double value = statement.step() ? statement.number(0) : 0;
    statement.reset();
    return value;
  }
  int changed() const { return sqlite3_changes(db_); }

 private:
  sqlite3* db_;
  std::list<std::pair<const char*, Bare>> statements_;
};

/// Rewrites the running figures of the goods and warehouse of this ledger row from its day on. The average at the end,
/// in yuan a unit.
inline double replay(BareStatements& on, sqlite3_int64 row) {
  Bare& anchor = on.sql("select g_sn,gl_kdrq,ck_sn,gl_flag from jxc_goodslist where id=?") << row;
  anchor.step();
  const std::string sn = anchor.text(0), date = anchor.text(1), warehouse = anchor.text(2);
  anchor.reset();
  double q = 0, p = 0, a = 0;
  Bare& opening = on.sql(
                      "select gl_kc,gl_pjjj,gl_kczje from jxc_goodslist where g_sn=? and ck_sn=? and gl_kdrq<? "
                      "order by gl_kdrq desc,id desc limit 1")
                  << sn << warehouse << date;
  const bool found = opening.step();
  if (found) {
    q = opening.number(0);
    p = opening.number(1);
    a = opening.number(2);
  }
  opening.reset();
  if (!found) p = on.one(on.sql("select g_pjjj from jxc_goods where g_sn=?") << sn);
  struct Line {
    sqlite3_int64 id;
    bool sold, moves;
    double quantity, net, stored[5];
  };
  std::vector<Line> lines;
  Bare& rows = on.sql(
                   "select id,gl_flag,gl_sl,gl_je,gl_dj,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje from jxc_goodslist "
                   "where g_sn=? and ck_sn=? and gl_kdrq>=? order by gl_kdrq,id")
               << sn << warehouse << date;
  while (rows.step()) {
    const std::string flag = rows.text(1);
    const double quantity = rows.number(2);
    lines.push_back({rows.integer(0),
                     flag == "xs",
                     flag == "cj" || flag == "pd" || (flag == "db" && quantity > 0),
                     quantity,
                     rows.number(3),
                     {rows.number(5), rows.number(6), rows.number(7), rows.number(8), rows.number(9)}});
  }
  rows.reset();
  for (const Line& line : lines) {
    const double before[2] = {q, a};
    const bool against = line.quantity * q < 0;
    const double pool = against ? std::fabs(q) + std::fabs(line.quantity) : q + line.quantity;
    const double worth = against ? std::fabs(a) + std::fabs(line.net) : a + line.net;
    q = roundTo(line.sold ? q - line.quantity : q + line.quantity, 100);
    if (line.moves && pool != 0 && q != 0) p = roundTo(std::fabs(worth / pool), 100);
    a = roundTo(p * q, 100);
    const double now[5] = {before[0], before[1], p, q, a};
    bool same = true;
    for (int i = 0; i < 5; ++i)
      same = same && std::fabs(now[i] - line.stored[i]) < 5e-7;
    if (!same)
      (on.sql("update jxc_goodslist set gl_sqsl=?,gl_sqje=?,gl_pjjj=?,gl_kc=?,gl_kczje=? where id=?")
       << now[0] << now[1] << now[2] << now[3] << now[4] << line.id)
          .run();
  }
  return p;
}

}  // namespace jxc::bench
