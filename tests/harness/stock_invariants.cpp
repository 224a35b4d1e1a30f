// What must hold between stock ledger, balances, goods master and documents after any story.
#include "core/rounding.h"
#include "core/statements.h"
#include "harness/invariants.h"
#include "stock/document_family.h"

#include <cmath>
#include <map>

namespace jxc::test::stock_invariants {

bool same(double a, double b) {
  return std::fabs(a - b) < 1e-6;
}

/// Every goods and warehouse of the ledger replayed row by row, written from the rules of the shop and not from the
/// program: in lists of flags, one statement a thought.
QStringList replayedAnew() {
  static const QStringList in{"qc", "cj", "ct", "db", "cf", "kb", "pd", "bs", "by", "hh"};
  static const QStringList always{"qc", "cj", "ct", "kb", "pd"};
  static const QStringList inflowOnly{"db", "cf"};
  QStringList wrong;
  struct State {
    double q = 0, p = 0, a = 0;
    bool started = false;
  };
  std::map<QString, State> states;
  for (const Row row :
       openSelect("select * from jxc_goodslist where g_sn<>'00000000' order by g_sn,ck_sn,gl_kdrq,id")) {
    State& s = states[row.text("g_sn") + u'@' + row.text("ck_sn")];
    const QString flag = row.text("gl_flag");
    const double quantity = row.number("gl_sl");
    const bool moves = always.contains(flag) || (inflowOnly.contains(flag) && quantity > 0);
    // The average that a goods began with is history; it is taken from its first row.
    if (!s.started && !moves) s.p = row.number("gl_pjjj");
    s.started = true;
    const QString where = row.text("gl_djh") + u' ' + row.text("g_sn") + u" row "_qs + row.text("id") + u": "_qs;
    if (!same(row.number("gl_sqsl"), s.q) || !same(row.number("gl_sqje"), s.a)) wrong << where + u"opening figures"_qs;
    if (in.contains(flag)) {
      double poolQ = s.q + quantity;
      double poolA = s.a + row.number("gl_je");
      if (s.q * quantity < 0) {
        poolQ = std::fabs(s.q) + std::fabs(quantity);
        poolA = std::fabs(s.a) + std::fabs(row.number("gl_je"));
      }
      s.q = roundEps(s.q + quantity, quantityDigits());
      if (moves && s.q != 0 && poolQ != 0) s.p = std::fabs(poolA / poolQ);
      if (moves && s.q == 0 && poolQ != 0 && flag != u"qc") s.p = row.number("gl_dj");
    } else {
      s.q = roundEps(s.q - quantity, quantityDigits());
    }
    s.p = roundEps(s.p, moneyDigits());
    s.a = s.q == 0 ? 0 : roundEps(s.p * s.q, totalDigits());
    if (!same(row.number("gl_kc"), s.q) || !same(row.number("gl_pjjj"), s.p) || !same(row.number("gl_kczje"), s.a))
      wrong << where + u"%1 %2 %3 instead of %4 %5 %6"_qs.arg(row.number("gl_kc"))
                           .arg(row.number("gl_pjjj"))
                           .arg(row.number("gl_kczje"))
                           .arg(s.q)
                           .arg(s.p)
                           .arg(s.a);
  }
  return wrong;
}

QStringList balanceIsLedgerSum() {
  QStringList wrong;
  const RowSet rows = openSelect(
      "select a.g_sn,a.ck_sn,a.kc_zsl,a.kc_xssl,b.gl from jxc_kcsp a left outer join "
      "(select g_sn,ck_sn,sum(iif(gl_flag='xs' or gl_flag='xt' or gl_flag='jh' or gl_flag='dh',-1*gl_sl,gl_sl)) as gl "
      "from jxc_goodslist group by g_sn,ck_sn) b on a.g_sn=b.g_sn and a.ck_sn=b.ck_sn where a.g_sn<>'00000000'");
  for (const Row row : rows)
    if (!same(row.number("kc_zsl"), row.number("gl")))
      wrong << row.text("g_sn") + u": balance "_qs + row.text("kc_zsl") + u", ledger "_qs + row.text("gl");
  return wrong;
}

QStringList goodsStockIsSumOfWarehouses() {
  QStringList wrong;
  for (const Row row : openSelect(
           "select a.g_sn,a.g_kc,b.sl from jxc_goods a left outer join "
           "(select g_sn,sum(kc_sl) as sl from jxc_kcsp group by g_sn) b on a.g_sn=b.g_sn where a.g_sn<>'00000000'"))
    if (!same(row.number("g_kc"), row.number("sl")))
      wrong << row.text("g_sn") + u": goods "_qs + row.text("g_kc") + u", warehouses "_qs + row.text("sl");
  return wrong;
}

/// No head without lines, no audited trading document without all its ledger rows, no waiting one with any.
QStringList documentsAreWhole() {
  QStringList wrong;
  for (const DocumentFamily& family : documentFamilies()) {
    if (family.sharesTables) continue;
    for (const Row head :
         openSelect(compose("select {} as djh,{} as status from {}", {family.number, family.status, family.head}))) {
      const QString number = head.text("djh");
      const double lines =
          lookupNumber(compose("select count(*) from {} where {}=?", {family.lines, family.number}), number);
      const double rows = lookupNumber("select count(*) from jxc_goodslist where gl_djh=?", number);
      if (lines == 0) wrong << number + u": no lines"_qs;
      if (head.integer("status") == 0 && rows != 0) wrong << number + u": waits and stands in the ledger"_qs;
      if (head.integer("status") == 1 && family.hasMoney() && rows != lines)
        wrong << number + u": %1 lines, %2 ledger rows"_qs.arg(lines).arg(rows);
    }
  }
  return wrong;
}

/// Said by hand, and not by what the program goes by: what was bought and what was sold, with the part that moved and
/// the part that never will.
struct Followed {
  const char *quantity, *moved, *cancelled, *head, *number, *status, *flag, *lines;
  int shelf;
};
constexpr Followed kFollowed[] = {
    {"jh_sl", "jh_rksl", "jh_qxsl", "jxc_jhd", "j_sn", "j_status", "j_crk", "jxc_jhsp", -1},
    {"ls_sl", "ls_cksl", "ls_qxsl", "jxc_lsxsd", "gl_djh", "ls_status", "ls_crk", "jxc_lsxssp", 1}};

/// The shelf holds what the books say, less what was received and not put away, and what was sold and not issued;
/// nothing moves twice, and a head says whether something is open.
QStringList partsAddUp() {
  QStringList wrong;
  std::map<QString, double> shelf;
  for (const Followed& f : kFollowed) {
    std::map<QString, bool> anyOpen;
    for (const Row row : openSelect(compose(
             "select b.g_sn,b.{} as sl,b.{} as moved,b.{} as cancelled,a.ck_sn,a.{} as djh,a.{} as done "
             "from {} a,{} b where a.{}=b.{} and a.{}=1 and b.g_sn<>'00000000'",
             {f.quantity, f.moved, f.cancelled, f.number, f.flag, f.head, f.lines, f.number, f.number, f.status}))) {
      const double open = row.number("sl") - row.number("moved") - row.number("cancelled");
      if (open < -1e-6) wrong << row.text("djh") + u": more moved than there is"_qs;
      shelf[row.text("g_sn") + u'@' + row.text("ck_sn")] += f.shelf * open;
      bool& isOpen = anyOpen.try_emplace(row.text("djh") + (row.flag("done") ? u"+"_qs : u"-"_qs), false).first->second;
      isOpen = isOpen || open > 1e-6;
    }
    for (const auto& [document, isOpen] : anyOpen)
      if (isOpen == document.endsWith(u'+')) wrong << document + u": what its head says of open lines"_qs;
  }
  for (const Row row : openSelect("select g_sn,ck_sn,kc_sl-kc_zsl as sl from jxc_kcsp where g_sn<>'00000000'"))
    if (const QString where = row.text("g_sn") + u'@' + row.text("ck_sn"); !same(row.number("sl"), shelf[where]))
      wrong << where + u": shelf less book %1, open %2"_qs.arg(row.number("sl")).arg(shelf[where]);
  return wrong;
}

/// What was lent is back, sold or open, and no yuan of a deposit goes back that the rent has used or that went before.
QStringList loansAddUp() {
  QStringList wrong;
  std::map<std::int64_t, double> back, sold, left;
  for (const Row row : openSelect("select a.* from jxc_khjhsp a,jxc_khjh b where a.gl_djh=b.gl_djh and b.jh_status=1 "
                                  "order by a.id")) {
    const std::int64_t line = row.integer("id2");
    const QString where = row.text("gl_djh") + u' ' + row.text("g_sn") + u": "_qs;
    if (row.text("jh_flag") == u"借货") {
      left[line] = row.number("jh_yj");
      if (row.number("jh_hhsl") + row.number("jh_xssl") > row.number("jh_sl") + 1e-6)
        wrong << where + u"too much back"_qs;
      continue;
    }
    back[line] += row.number("jh_hhsl");
    sold[line] += row.number("jh_xssl");
    left[line] -= row.number("jh_zzj");
    if (row.number("jh_thyj") > std::max(0.0, left[line]) + 1e-6) wrong << where + u"deposit paid back"_qs;
    left[line] -= row.number("jh_thyj");
  }
  for (const Row row : openSelect("select id,gl_djh,jh_hhsl,jh_xssl from jxc_khjhsp where jh_flag='借货'"))
    if (!same(row.number("jh_hhsl"), back[row.integer("id")]) || !same(row.number("jh_xssl"), sold[row.integer("id")]))
      wrong << row.text("gl_djh") + u": what came back of it"_qs;
  for (const Row row : openSelect("select gl_djh from jxc_yyfy where fy_note like '还货单%' and gl_djh not in (select "
                                  "gl_djh from jxc_khjh)"))
    wrong << row.text("gl_djh") + u": rent without its return"_qs;
  return wrong;
}

const bool registered = addInvariant({QStringLiteral("running stock figures"), replayedAnew}) &&
                        addInvariant({QStringLiteral("stock balance"), balanceIsLedgerSum}) &&
                        addInvariant({QStringLiteral("goods stock"), goodsStockIsSumOfWarehouses}) &&
                        addInvariant({QStringLiteral("documents"), documentsAreWhole}) &&
                        addInvariant({QStringLiteral("parts"), partsAddUp}) &&
                        addInvariant({QStringLiteral("loans"), loansAddUp});

}  // namespace jxc::test::stock_invariants
