#include "maintenance/closing_balances.h"

#include "core/text.h"
#include "engine/number_text.h"

#include <array>
#include <cmath>
#include <string>
#include <unordered_map>

namespace jxc::closing {
namespace closing_balances_detail {

enum Column { Key, Key2, Name, Stock, Cost, Worth };
constexpr std::array<Column, 3> figures{Stock, Cost, Worth};

struct Ledger {
  const char16_t* name;
  const char* last;  // the last row of each key up to a moment
};

/// The last rows of a ledger by their keys, in the order of the ledger: date, then entry.
constexpr std::array<Ledger, 4> ledgers{
    Ledger{u"库存",
           "select x.g_sn as k1,x.ck_sn as k2,x.g_name as mc,x.gl_kc as sl,x.gl_pjjj as cb,x.gl_kczje as je from "
           "jxc_goodslist x where x.g_sn<>'00000000' and x.id in (select max(a.id) from jxc_goodslist a,(select "
           "max(gl_kdrq) as rq,g_sn,ck_sn from jxc_goodslist where gl_kdrq<=? group by g_sn,ck_sn) b where "
           "a.g_sn=b.g_sn and a.ck_sn=b.ck_sn and a.gl_kdrq=b.rq group by a.g_sn,a.ck_sn) order by x.g_sn,x.ck_sn"},
    Ledger{u"往来",
           "select x.k_ghskh as k1,x.k_type as k2,'' as mc,0 as sl,0 as cb,x.k_ljje as je from jxc_ysyfk x where x.id "
           "in (select max(a.id) from jxc_ysyfk a,(select max(k_rq) as rq,k_type,k_ghskh from jxc_ysyfk where k_rq<=? "
           "group by k_type,k_ghskh) b where a.k_type=b.k_type and a.k_ghskh=b.k_ghskh and a.k_rq=b.rq group by "
           "a.k_type,a.k_ghskh) order by x.k_type,x.k_ghskh"},
    Ledger{u"现金银行",
           "select x.xj_kmmc as k1,'' as k2,'' as mc,0 as sl,0 as cb,x.xj_ljje as je from jxc_xjyh x where x.id in "
           "(select max(a.id) from jxc_xjyh a,(select max(xj_rq) as rq,xj_kmmc from jxc_xjyh where xj_chk='1' and "
           "xj_rq<=? group by xj_kmmc) b where a.xj_chk='1' and a.xj_kmmc=b.xj_kmmc and a.xj_rq=b.rq group by "
           "a.xj_kmmc) order by x.xj_kmmc"},
    Ledger{u"发票",
           "select x.fp_ghskh as k1,x.fp_type as k2,'' as mc,0 as sl,0 as cb,x.fp_ljje as je from jxc_fpdjb x where "
           "x.id in (select max(a.id) from jxc_fpdjb a,(select max(fp_rq) as rq,fp_type,fp_ghskh from jxc_fpdjb where "
           "fp_check<>0 and fp_rq<=? group by fp_type,fp_ghskh) b where a.fp_check<>0 and a.fp_type=b.fp_type and "
           "a.fp_ghskh=b.fp_ghskh and a.fp_rq=b.rq group by a.fp_type,a.fp_ghskh) order by x.fp_type,x.fp_ghskh"},
};

using RowOfKey = std::unordered_map<std::string, int>;

std::string keyOf(const RowSet& rows, int row) {
  return std::string(rows.utf8(row, Key)) + '\n' + std::string(rows.utf8(row, Key2));
}

RowOfKey index(const RowSet& rows) {
  RowOfKey all;
  all.reserve(static_cast<std::size_t>(rows.rowCount()));
  for (int row = 0; row < rows.rowCount(); ++row)
    all.emplace(keyOf(rows, row), row);
  return all;
}

double figure(const RowSet& rows, int row, Column column) {
  return row < 0 ? 0 : rows.number(row, column);
}

bool same(double a, double b) {
  return std::fabs(a - b) < 5e-7;
}

/// "库存 A 100001（镜架A）", "往来 客户 100002".
QString place(std::size_t ledger, const RowSet& rows, int row) {
  QString text = QString::fromUtf16(ledgers[ledger].name) + u' ';
  const QString second = rows.text(row, Key2);
  if (second == u"kh") return text + u"客户 "_qs + rows.text(row, Key);
  if (second == u"ghs") return text + u"供货商 "_qs + rows.text(row, Key);
  text += rows.text(row, Key);
  if (!second.isEmpty()) text += u" 仓库 "_qs + second;
  return text;
}

/// What the keys of the ledgers stand for: "kh\n100001" is a customer, "\n100001" a warehouse.
using Names = std::unordered_map<std::string, std::string>;

Names readNames() {
  Names names;
  for (const RowSet& rows : {openSelect("select 'kh' as k2,kh_sn as k1,kh_name as mc from jxc_khxx"),
                             openSelect("select 'ghs' as k2,ghs_sn as k1,ghs_name as mc from jxc_ghsxx"),
                             openSelect("select '' as k2,ck_sn as k1,ck_name as mc from jxc_ckxx")})
    for (int row = 0; row < rows.rowCount(); ++row)
      names.emplace(std::string(rows.utf8(row, 0)) + '\n' + std::string(rows.utf8(row, 1)), rows.utf8(row, 2));
  return names;
}

/// Whose balance it is: the warehouse, or the kind of partner.
std::string ownerOf(const Names& names, const std::string& second) {
  if (second == "kh") return "客户";
  if (second == "ghs") return "供货商";
  const auto warehouse = names.find('\n' + second);
  return warehouse == names.end() ? second : warehouse->second;
}

/// A row of these that has another figure, or none, among those; and the other way round.
std::optional<QString> firstDifference(std::size_t ledger, const RowSet& before, const RowSet& after) {
  const auto words = [&](const RowSet& rows, int row, double was, double is) {
    return place(ledger, rows, row) + u"：结算前 "_qs + numberText(was) + u"，结算后 "_qs + numberText(is);
  };
  RowOfKey left = index(after);
  for (int row = 0; row < before.rowCount(); ++row) {
    const auto found = left.find(keyOf(before, row));
    const int other = found == left.end() ? -1 : found->second;
    for (const Column column : figures)
      if (const double was = figure(before, row, column), is = figure(after, other, column); !same(was, is))
        return words(before, row, was, is);
    if (found != left.end()) left.erase(found);
  }
  for (const auto& [key, row] : left)
    for (const Column column : figures)
      if (!same(figure(after, row, column), 0)) return words(after, row, 0, figure(after, row, column));
  return {};
}

}  // namespace closing_balances_detail

Balances::Balances(const QString& until) {
  for (const auto& ledger : closing_balances_detail::ledgers) {
    closed_.push_back(openSelect(ledger.last, until));
    now_.push_back(openSelect(ledger.last, u"9999-12-31 23:59:59"_qs));
  }
}

std::optional<QString> Balances::differs(const Balances& after) const {
  using closing_balances_detail::firstDifference;
  for (std::size_t i = 0; i < closed_.size(); ++i) {
    if (auto words = firstDifference(i, closed_[i], after.closed_[i])) return words;
    if (auto words = firstDifference(i, now_[i], after.now_[i])) return words;
  }
  return {};
}

RowSet Balances::compared(const Balances& after) const {
  using namespace closing_balances_detail;
  RowSet sheet({"id", "lb", "bh", "mc", "ss", "sl1", "cb1", "je1", "sl2", "cb2", "je2"});
  const Names names = readNames();
  std::int64_t id = 0;
  for (std::size_t i = 0; i < now_.size(); ++i) {
    const RowOfKey others = index(after.now_[i]);
    const RowSet& rows = now_[i];
    for (int row = 0; row < rows.rowCount(); ++row) {
      const auto found = others.find(keyOf(rows, row));
      const int other = found == others.end() ? -1 : found->second;
      sheet.addInteger(++id);
      const std::string key(rows.utf8(row, Key)), second(rows.utf8(row, Key2)), name(rows.utf8(row, Name));
      const auto partner = names.find(second + '\n' + key);
      sheet.addText(QString::fromUtf16(ledgers[i].name).toStdString());
      sheet.addText(key);
      sheet.addText(name.empty() && !second.empty() && partner != names.end() ? partner->second : name);
      sheet.addText(ownerOf(names, second));
      for (const Column column : figures)
        sheet.addReal(figure(rows, row, column));
      for (const Column column : figures)
        sheet.addReal(figure(after.now_[i], other, column));
    }
  }
  return sheet;
}

}  // namespace jxc::closing
