#include "stock/opening_row.h"

#include "core/clock.h"
#include "core/defaults.h"
#include "core/posting.h"
#include "core/session.h"
#include "stock/internal_documents.h"
#include "stock/ledger.h"
#include "stock/ledger_rows.h"

namespace jxc {

OpeningPlace::OpeningPlace(const QString& code, const QString& day)
    : warehouse(code),
      date(day),
      warehouseName(lookupValue("select ck_name from jxc_ckxx where ck_sn=?", code)),
      employee(defaultEmployeeName()) {}

void postOpeningRow(const OpeningPlace& place, const Row& goods, double quantity, double cost, double value) {
  postLedgerRow({{"gl_flag", "qc"},
                 {"gl_djh", ""},
                 {"gl_kdrq", place.date},
                 {"g_sn", goods.text("g_sn")},
                 {"g_name", goods.text("g_name")},
                 {"g_jm", goods.text("g_jm")},
                 {"dw_name", goods.text("dw_name")},
                 {"gl_dj", cost},
                 {"gl_sl", quantity},
                 {"gl_zje", value},
                 {"gl_checker", session().a_name},
                 {"gl_chkrq", clock::today()},
                 {"gl_pjjj", cost},
                 {"gl_kc", quantity},
                 {"gl_kczje", value},
                 {"gl_note", goods.text("g_bz")},
                 {"u_name", place.employee},
                 {"a_name", session().a_name},
                 {"ck_sn", place.warehouse},
                 {"ck_name", place.warehouseName},
                 {"ghs_name", QStringView(openingName).toString()},
                 {"gg_name", goods.text("gg_name")},
                 {"color_name", goods.text("color_name")},
                 {"gl_sysl", quantity}});
}

void beginStock(const OpeningPlace& place, const Row& goods, double quantity, double cost, double value) {
  postSql("insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,g_sn,ck_sn,kc_zsl) values (?,?,0,?,?,?)", quantity, cost,
          goods.text("g_sn"), place.warehouse, quantity);
  postOpeningRow(place, goods, quantity, cost, value);
}

void addToMonth(const QString& warehouse, double quantity, double value) {
  const QString month = clock::month();
  ensureStockRows(month);
  internal_documents::addToMonth(warehouse, month, quantity, value);
}

}  // namespace jxc
