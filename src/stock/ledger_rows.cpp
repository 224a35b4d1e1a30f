#include "stock/ledger_rows.h"

#include "core/posting.h"

#include <QVarLengthArray>

#include <algorithm>
#include <span>
#include <stdexcept>

namespace jxc {
namespace ledger_rows_detail {

/// Every column that is posted; batch, production and expiry are reserved. What is usual is an expression, or another
/// column that it repeats; empty: it has to be given.
struct Usual {
  std::string_view name, expression;
  std::string_view as = {};
};

constexpr Usual columns[] = {
    {"gl_flag", ""},
    {"gl_djh", "a.gl_djh"},
    {"gl_kdrq", ""},
    {"g_sn", "c.g_sn"},
    {"g_name", "c.g_name"},
    {"g_jm", "c.g_jm"},
    {"dw_name", "c.dw_name"},
    {"gl_dj", ""},
    {"gl_cbj", "0"},
    {"gl_zcb", "0"},
    {"gl_sl", ""},
    {"gl_dzl", "1"},
    {"gl_zje", ""},
    {"gl_je", "", "gl_zje"},
    {"gl_tax", "0"},
    {"gl_taxdj", "", "gl_dj"},
    {"gl_taxje", "0"},
    {"gl_lsj", "0"},
    {"gl_lr", "0"},
    {"gl_qxsl", "0"},
    {"gl_checker", "?"},
    {"gl_chkrq", "?"},
    {"gl_sqsl", "0"},
    {"gl_sqje", "0"},
    {"gl_pjjj", "c.g_pjjj"},
    {"gl_kc", "0"},
    {"gl_kczje", "0"},
    {"gl_note", "''"},
    {"gl_bz", "''"},
    {"u_name", "d.u_name"},
    {"a_name", "b.a_name"},
    {"ck_sn", "e.ck_sn"},
    {"ck_name", "e.ck_name"},
    {"ghs_sn", "''"},
    {"ghs_name", ""},
    {"gg_name", "c.gg_name"},
    {"color_name", "c.color_name"},
    {"gl_sysl", ""},
    {"id2", "0"},
    {"gl_djh2", "''"},
    {"gl_fdmc", "''"},
    {"gl_dqkc", "0"},
};

constexpr bool isConstant(std::string_view expression) {
  return expression == "''" || expression == "0" || expression == "1";
}

[[noreturn]] void missing(const Usual& column) {
  throw std::logic_error("a ledger row without " + std::string(column.name));
}

/// "insert into jxc_goodslist (…) " with all columns.
const std::string& insertColumns() {
  static const std::string text = [] {
    std::string all = "insert into jxc_goodslist ";
    char separator = '(';
    for (const Usual& column : columns)
      (all += separator) += column.name, separator = ',';
    return all + ") ";
  }();
  return text;
}

std::string_view expressionOf(const Usual& column, std::span<const LedgerColumn> different) {
  const auto given = std::ranges::find(different, column.name, &LedgerColumn::name);
  if (given != different.end()) return given->expression;
  if (!column.as.empty()) return expressionOf(*std::ranges::find(columns, column.as, &Usual::name), different);
  if (column.expression.empty()) missing(column);
  return column.expression;
}

std::string insertSelect(std::span<const LedgerColumn> different, std::string_view from) {
  for (const LedgerColumn& given : different)
    if (std::ranges::find(columns, given.name, &Usual::name) == std::end(columns))
      throw std::logic_error("the stock ledger has no column " + std::string(given.name));
  std::string sql = insertColumns() + "select ";
  for (const Usual& column : columns)
    (sql += expressionOf(column, different)) += ',';
  sql.pop_back();
  return (sql += ' ') += from;
}

}  // namespace ledger_rows_detail

std::string ledgerInsert(std::initializer_list<LedgerColumn> different, std::string_view from) {
  return ledger_rows_detail::insertSelect(different, from);
}

std::string ledgerInsert(const LedgerSource& source) {
  const DocumentFamily& family = *source.family;
  const std::string number(family.number);
  std::string from = "from " + std::string(family.head) + " a,";
  std::string where = " where a.u_sn=d.u_sn and a." + number + "=?";
  const auto add = [&where](std::string_view left, std::string_view right) {
    ((where += " and ") += left) += '=';
    where += right;
  };
  if (!source.fromHead) {
    (from += family.lines) += " b,";
    add("a." + number, "b." + number);
  }
  from += "jxc_goods c,jxc_user d,jxc_ckxx e";
  add(source.goods, "c.g_sn");
  add(source.warehouse, "e.ck_sn");

  std::vector<LedgerColumn> different = source.different;
  const std::string document = "a." + number, date = "a." + std::string(family.date);
  different.insert(different.end(), {{"gl_djh", document}, {"gl_kdrq", date}});
  std::string partnerNumber, partnerName;
  if (source.partner) {
    (from += ',') += std::string(source.partner->table) + " f";
    partnerNumber = "f." + std::string(source.partner->number);
    partnerName = "f." + std::string(source.partner->name);
    add("a." + std::string(source.partner->number), partnerNumber);
    different.insert(different.end(), {{"ghs_sn", partnerNumber}, {"ghs_name", partnerName}});
  }
  if (source.fromHead) different.push_back({"a_name", "a.a_name"});
  if (!source.only.empty()) (where += " and ") += source.only;
  return ledger_rows_detail::insertSelect(different,
                                          from + where + (source.fromHead ? " order by a.id" : " order by b.id"));
}

void postLedgerRow(std::initializer_list<Field> fields) {
  using namespace ledger_rows_detail;
  auto next = fields.begin();
  const auto find = [&](std::string_view name) {
    return next != fields.end() && next->first == name ? next : std::ranges::find(fields, name, &Field::first);
  };
  std::string sql = insertColumns() + "values (";
  QVarLengthArray<Value, std::size(columns)> values;
  std::size_t used = 0;
  for (const Usual& column : columns) {
    auto given = find(column.name);
    if (given != fields.end()) {
      ++used;
      next = given + 1;
    } else if (!column.as.empty()) {
      given = find(column.as);
    }
    if (given != fields.end()) {
      sql += "?,";
      values.push_back(given->second);
    } else if (isConstant(column.expression)) {
      (sql += column.expression) += ',';
    } else {
      missing(column);
    }
  }
  if (used != fields.size()) throw std::logic_error("the stock ledger has no such column, or it is given twice");
  sql.back() = ')';
  postStatement(accountDb(), sql, std::span<const Value>(values.data(), static_cast<std::size_t>(values.size())));
}

}  // namespace jxc
