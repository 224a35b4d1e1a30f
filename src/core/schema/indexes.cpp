// 索引: the list, and how it is brought into a database.
#include "core/schema/indexes.h"

#include "core/statements.h"
#include "engine/error.h"
#include "engine/transaction.h"

#include <algorithm>
#include <string>

namespace jxc::schema {
namespace indexes_detail {

/// Statistics of a period, and what a period closing folds together. Purchase, sale and stock of a year are summed from
/// the index alone; what it holds no replay writes.
constexpr IndexDefinition linesByDate = {"jxc_goodslist", "gl_kdrq,id", "g_sn,ck_sn,gl_flag,gl_sl,gl_je,gl_zcb"};

/// Receipts that wait for putaway and sales that wait for issue: few among all that there ever were.
constexpr IndexDefinition waitingReceipts = {"jxc_jhd", "j_crk,j_status,j_jhrq"};
constexpr IndexDefinition waitingSales = {"jxc_lsxsd", "ls_crk,ls_status,ls_xsrq"};
constexpr IndexDefinition linesOfSale = {"jxc_lsxssp", "gl_djh,id"};

constexpr IndexDefinition list[] = {
    // Replay and costing: rows of one goods in one warehouse from a date on, and the last one before it.
    {"jxc_goodslist", "g_sn,ck_sn,gl_kdrq,id"},
    // Rows of one document, at audit and cancel.
    {"jxc_goodslist", "gl_djh"},
    linesByDate,
    // Everything sold to or bought from one partner; a change of his name.
    {"jxc_goodslist", "ghs_sn,gl_kdrq"},

    // Stock of one goods, in one or in all warehouses.
    {"jxc_kcsp", "g_sn,ck_sn"},
    // Stock of one warehouse: pick lists.
    {"jxc_kcsp", "ck_sn,g_sn"},
    // Quantity and value of a whole warehouse after each audit, summed from the index alone. Cost first: by quantity it
    // would offer itself to "this goods, if so much is there", and give all of which so much is there.
    {"jxc_kcsp", "ck_sn,kc_cbj,kc_sl"},
    // The row of a month that each posting changes.
    {"jxc_kcjs", "js_rq,ck_sn"},

    // Running balance of one partner from a date on.
    {"jxc_ysyfk", "k_ghskh,k_type,k_rq,id"},
    // Lines of one document, and those that settle it, at cancel.
    {"jxc_ysyfk", "gl_djh"},
    {"jxc_ysyfk", "gl_djh2"},
    {"jxc_ysyfk_dj", "gl_djh"},
    {"jxc_ysyfk_dj", "gl_djh2"},
    {"jxc_ysyfk_dj", "k_ghskh,k_type"},
    // Running balance of one account from a date on.
    {"jxc_xjyh", "xj_kmmc,xj_rq,id"},
    {"jxc_xjyh", "gl_djh"},
    // Cash lines of a period, over all accounts.
    {"jxc_xjyh", "xj_rq"},
    // Running balance of invoices of one partner.
    {"jxc_fpdjb", "fp_ghskh,fp_type,fp_rq,id"},
    {"jxc_fpdjb", "gl_djh"},
    // Expenses of a document at cancel, and of a period.
    {"jxc_yyfy", "gl_djh"},
    {"jxc_yyfy", "fy_rq"},

    // Documents: by number and state, waiting or audited by date, audited by the day of the audit, by partner. A number
    // is one document, a state is nearly all of them: without the state the planner, who keeps no statistics, may take
    // the other index for "this number, if it is audited".
    {"jxc_jhd", "j_sn,j_status"},
    {"jxc_jhd", "j_status,j_jhrq"},
    {"jxc_jhd", "j_status,j_chkrq"},
    {"jxc_jhd", "ghs_sn"},
    waitingReceipts,
    {"jxc_thd", "gl_djh,th_status"},
    {"jxc_thd", "th_status,th_thrq"},
    {"jxc_thd", "th_status,th_chkrq"},
    {"jxc_lsxsd", "gl_djh,ls_status"},
    {"jxc_lsxsd", "ls_status,ls_xsrq"},
    {"jxc_lsxsd", "ls_status,ls_chkrq"},
    {"jxc_lsxsd", "kh_sn"},
    waitingSales,
    {"jxc_xsthd", "gl_djh,th_status"},
    {"jxc_xsthd", "th_status,th_xsrq"},
    {"jxc_xsthd", "th_status,th_chkrq"},
    {"jxc_rkd", "gl_djh,rk_status"},
    {"jxc_rkd", "rk_status,rk_rq"},
    {"jxc_ckd", "gl_djh,ck_status"},
    {"jxc_ckd", "ck_status,ck_rq"},
    {"jxc_kcdbd", "gl_djh,db_status"},
    {"jxc_kcdbd", "db_status,db_dbrq"},
    {"jxc_kcdbd", "db_status,db_chkrq"},
    {"jxc_kcpd", "gl_djh,pd_status"},
    {"jxc_kcpd", "pd_status,pd_rq"},
    {"jxc_kcpd", "pd_status,pd_chkrq"},
    {"jxc_bsd", "gl_djh,bs_status"},
    {"jxc_bsd", "bs_status,bs_bsrq"},
    {"jxc_bsd", "bs_status,bs_chkrq"},
    {"jxc_byd", "gl_djh,by_status"},
    {"jxc_byd", "by_status,by_byrq"},
    {"jxc_byd", "by_status,by_chkrq"},
    {"jxc_cfd", "gl_djh,cf_status"},
    {"jxc_cfd", "cf_status,cf_cfrq"},
    {"jxc_cfd", "cf_status,cf_chkrq"},
    {"jxc_kbd", "gl_djh,kb_status"},
    {"jxc_kbd", "kb_status,kb_kbrq"},
    {"jxc_kbd", "kb_status,kb_chkrq"},
    {"jxc_khjh", "gl_djh,jh_status"},
    {"jxc_khjh", "jh_status,jh_rq"},
    {"jxc_khjh", "jh_status,jh_chkrq"},
    {"jxc_dhd", "gl_djh"},

    // Lines of a document.
    {"jxc_thsp", "gl_djh"},
    {"jxc_xsthsp", "gl_djh"},
    {"jxc_rksp", "gl_djh"},
    {"jxc_cksp", "gl_djh"},
    {"jxc_dbsp", "gl_djh"},
    {"jxc_kcpdsp", "gl_djh"},
    {"jxc_bssp", "gl_djh"},
    {"jxc_bysp", "gl_djh"},
    {"jxc_cfsp", "gl_djh"},
    {"jxc_kbsp", "gl_djh"},
    {"jxc_khjhsp", "gl_djh"},
    {"jxc_dhzp", "gl_djh"},
    // Lines of one goods: last price, history in the line dialog, whether a goods is in use.
    {"jxc_jhsp", "g_sn"},
    {"jxc_lsxssp", "g_sn"},
    // The line that a ledger row, a putaway, an issue or a return belongs to.
    {"jxc_jhsp", "id2"},
    {"jxc_lsxssp", "id2"},
    {"jxc_thsp", "id2"},
    {"jxc_xsthsp", "id2"},
    {"jxc_rksp", "id2"},
    {"jxc_cksp", "id2"},
    {"jxc_khjhsp", "id2"},
    // Lines of a receipt or a sale, in their order. Last: of two indexes that fit equally the newest is taken, and
    // a goods has more lines than a document.
    {"jxc_jhsp", "j_sn,id"},
    linesOfSale,
    // Whether a receipt was put away, a sale issued.
    {"jxc_rksp", "j_sn"},
    {"jxc_cksp", "gl_djh2"},

    // Goods by number, class, barcode and name.
    {"jxc_goods", "g_sn"},
    {"jxc_goods", "gc_sn"},
    {"jxc_goods", "g_sptm"},
    {"jxc_goods", "g_name"},
    // The articles of a lens product, as a sheet of its powers; the products themselves, counted from the index alone.
    {"jxc_goods", "g_qc,g_isjp,g_jy"},
    {"jxc_goodsclass", "gc_sn"},
    // Last quotation to or from a partner.
    {"jxc_khbj", "g_sn,kh_sn,id"},
    {"jxc_ghsbj", "g_sn,ghs_sn,id"},
    // Partners, joined to their documents.
    {"jxc_khxx", "kh_sn"},
    {"jxc_ghsxx", "ghs_sn"},

    // Members by number and card, with their stored value and points.
    {"jxc_hyxx", "hy_sn"},
    {"jxc_hyxx", "hy_bh"},
    {"jxc_hyxf", "hy_sn,xf_rq"},
    {"jxc_hyxf", "gl_djh"},
    {"jxc_jfdh", "hy_sn"},
    // What the till wrote: by number, period, member.
    {"jxc_posxsd", "gl_djh"},
    {"jxc_posxsd", "pos_xsrq"},
    {"jxc_posxsd", "hy_sn"},
    {"jxc_posxssp", "gl_djh"},
    {"jxc_posthd", "gl_djh"},
    {"jxc_posthsp", "gl_djh"},
    {"jxc_lsxssptemp", "gl_djh"},

    // Working rows of one operator.
    {"jxc_tempspxf", "a_name"},
    {"jxc_jxchz", "a_name"},
    {"jxc_tempyyfx", "a_name"},
    // The log by time.
    {"jxc_log", "log_time"},
};

/// The one that came last to the list.
constexpr IndexDefinition newest = linesOfSale;

/// Those that another one took the place of.
constexpr IndexDefinition replaced[] = {{"jxc_goodslist", "gl_kdrq"}, {"jxc_kcsp", "ck_sn,kc_sl,kc_cbj"},
                                        {"jxc_jhd", "j_sn"},          {"jxc_thd", "gl_djh"},
                                        {"jxc_lsxsd", "gl_djh"},      {"jxc_xsthd", "gl_djh"},
                                        {"jxc_rkd", "gl_djh"},        {"jxc_ckd", "gl_djh"},
                                        {"jxc_kcdbd", "gl_djh"},      {"jxc_kcpd", "gl_djh"},
                                        {"jxc_bsd", "gl_djh"},        {"jxc_byd", "gl_djh"},
                                        {"jxc_cfd", "gl_djh"},        {"jxc_kbd", "gl_djh"},
                                        {"jxc_khjh", "gl_djh"},       {"jxc_jhsp", "j_sn"},
                                        {"jxc_lsxssp", "gl_djh"}};

std::string indexName(const IndexDefinition& index, std::string_view suffix) {
  std::string name = "ix_" + std::string(index.table.substr(index.table.find('_') + 1)).append(suffix);
  name += '_';
  for (const char c : index.columns)
    name += c == ',' ? '_' : c;
  return name;
}

void create(Database& database, const IndexDefinition& index, std::string_view suffix) {
  const std::string table = std::string(index.table).append(suffix);
  const std::string covered = index.covers.empty() ? std::string() : "," + std::string(index.covers);
  database.execute("create index [" + indexName(index, suffix) + "] on [" + table + "] (" + std::string(index.columns) +
                   covered + ")");
}

/// False: it could not be done, so an index is there already, or gone already.
template <class Work>
bool attempt(Database& database, Work work) {
  Transaction one(database);  // inside another one a savepoint: a failed statement leaves that usable
  try {
    work();
  } catch (const DbError&) {
    return false;
  }
  one.commit();
  return true;
}

bool createMissing(Database& database, const IndexDefinition& index) {
  return attempt(database, [&] { create(database, index, {}); });
}

void dropReplaced(Database& database) {
  for (const IndexDefinition& index : replaced)
    attempt(database, [&] { database.execute("drop index [" + indexName(index, {}) + "]"); });
}

}  // namespace indexes_detail

std::span<const IndexDefinition> indexes() {
  return indexes_detail::list;
}

bool isOwnIndex(std::string_view name) {
  using namespace indexes_detail;
  const auto isOf = [name](const IndexDefinition& index) { return indexName(index, {}) == name; };
  return std::ranges::any_of(list, isOf) || std::ranges::any_of(replaced, isOf);
}

void createIndexes(Database& database, std::string_view table, std::string_view suffix) {
  for (const IndexDefinition& index : indexes_detail::list) {
    if (index.table == table) indexes_detail::create(database, index, suffix);
  }
}

void createMissingIndexes(Database& database) {
  Transaction all(database);
  for (const IndexDefinition& index : indexes_detail::list)
    indexes_detail::createMissing(database, index);
  indexes_detail::dropReplaced(database);
  all.commit();
}

void createNewIndexes(Database& database) {
  if (indexes_detail::createMissing(database, indexes_detail::newest)) createMissingIndexes(database);
}

}  // namespace jxc::schema
