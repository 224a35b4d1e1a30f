#include "two_years.h"

#include <QDate>

#include <string>
#include <vector>

namespace jxc::bench {
namespace two_years_detail {

constexpr int goodsCount = 2000;
constexpr int linesOfDocument = 5;

std::string goodsCode(int index) {
  return std::to_string(2000000 + index);
}

/// Two years of documents of five lines: receipts of twelve pieces, and between them sales of two, all of them with
/// their lines, cash, partner and stock ledger rows, as audits would have left them.
class Filler {
 public:
  explicit Filler(sqlite3* db) : db_(db) {}

  void fill(int rows) {
    const auto run = [this](const char* text) { Bare(db_, text).run(); };
    run("begin immediate");
    run("delete from jxc_kcjs");
    for (int i = 0; i < goodsCount; ++i) {
      (goods_ << goodsCode(i)).run();
      (stock_ << goodsCode(i)).run();
    }
    const QDate first = QDate::currentDate().addDays(-730);
    for (int document = 0; document * linesOfDocument < rows; ++document) {
      const int row = document * linesOfDocument;
      const bool in = row / goodsCount % 5 == 0;
      const QDate date = first.addDays(static_cast<qint64>(row) * 730 / rows);
      write(in, date.toString(Qt::ISODate).toStdString(), (in ? "CJ" : "XS") + std::to_string(100000000 + document),
            row);
    }
    Bare balance(db_, "update jxc_kcsp set kc_sl=?,kc_zsl=?,kc_xssl=? where g_sn=?");
    Bare master(db_, "update jxc_goods set g_kc=? where g_sn=?");
    for (int i = 0; i < goodsCount; ++i) {
      const Goods& each = state_[static_cast<std::size_t>(i)];
      (balance << each.stock << each.stock << each.sold << goodsCode(i)).run();
      (master << each.stock << goodsCode(i)).run();
    }
    (Bare(db_, "update jxc_khxx set kh_lwje=? where kh_sn='100001'") << owedByCustomer_).run();
    (Bare(db_, "update jxc_ghsxx set ghs_lwje=? where ghs_sn='100001'") << owedToSupplier_).run();
    run("commit");
  }

 private:
  struct Goods {
    double stock = 0, sold = 0;
  };
  void write(bool in, const std::string& date, const std::string& number, int row) {
    constexpr double price = 10;
    const double quantity = in ? 12 : 2, total = quantity * price * linesOfDocument;
    ((in ? receipt_ : sale_) << number << date << total << date).run();
    for (int i = 0; i < linesOfDocument; ++i) {
      const int which = (row + i) % goodsCount;
      Goods& at = state_[static_cast<std::size_t>(which)];
      const double before = at.stock;
      at.stock += in ? quantity : -quantity;
      if (!in) at.sold += quantity;
      const double amount = quantity * price;
      ((in ? receiptLine_ : saleLine_) << number << goodsCode(which) << quantity << amount << amount << quantity).run();
      (ledger_ << std::string(in ? "cj" : "xs") << number << date << goodsCode(which) << quantity << amount << amount
               << date << before << before * price << at.stock << at.stock * price << std::string("100001"))
          .run();
    }
    double& owed = in ? owedToSupplier_ : owedByCustomer_;
    owed += total;
    (partner_ << owed << total << std::string(in ? "ghs" : "kh") << std::string(in ? "CJ" : "XS") << date << number)
        .run();
    (cash_ << date << number << std::string(in ? "采购进货" : "商品销售")).run();
  }

  sqlite3* db_;
  std::vector<Goods> state_ = std::vector<Goods>(goodsCount);
  double owedByCustomer_ = 0, owedToSupplier_ = 0;
  Bare goods_{db_, "insert into jxc_goods (g_sn,g_name,g_pjjj,g_kc,g_jy,g_gdcbj) values (?,'镜架',10,0,0,0)"};
  Bare stock_{db_, "insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj,kc_xssl) values (?,'100001',0,0,10,0)"};
  Bare receipt_{db_,
                "insert into jxc_jhd (j_sn,j_jhrq,j_yfje,j_sfje,j_chkrq,j_checker,j_status,j_jsfs,ghs_sn,ck_sn,u_sn,"
                "j_note,a_name,j_crk) values (?,?,?,0,?,'admin',1,1,'100001','100001','100001','','admin',1)"};
  Bare sale_{
      db_,
      "insert into jxc_lsxsd (gl_djh,ls_xsrq,ls_yfje,ls_sfje,ls_chkrq,ls_checker,ls_status,ls_jsfs,kh_sn,ck_sn,"
      "u_sn,ls_note,a_name,ls_dhbz,ls_crk) values (?,?,?,0,?,'admin',1,1,'100001','100001','100001','','admin',0,"
      "1)"};
  Bare receiptLine_{db_,
                    "insert into jxc_jhsp (j_sn,g_sn,jh_sl,jh_je,jh_zje,jh_rksl,jh_dj,jh_qxsl,jh_dzl,a_name) values "
                    "(?,?,?,?,?,?,10,0,1,'admin')"};
  Bare saleLine_{db_,
                 "insert into jxc_lsxssp (gl_djh,g_sn,ls_sl,ls_je,ls_zje,ls_cksl,ls_dj,ls_qxsl,ls_dzl,a_name,t_zp) "
                 "values (?,?,?,?,?,?,10,0,1,'admin','')"};
  Bare ledger_{
      db_,
      "insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,gl_dj,gl_cbj,gl_zcb,gl_sl,gl_dzl,gl_zje,gl_je,"
      "gl_tax,gl_taxdj,gl_taxje,gl_lr,gl_qxsl,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje,gl_note,"
      "gl_bz,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gl_sysl,id2,gl_djh2,gl_fdmc,gl_dqkc) values "
      "(?,?,?,?,'镜架',10,0,0,?,1,?,?,0,10,0,0,0,'admin',?,?,?,10,?,?,'','','默认员工','admin','100001','主仓库',"
      "?,'往来单位',0,0,'','',0)"};
  Bare partner_{
      db_,
      "insert into jxc_ysyfk (k_ghskh,a_name,u_sn,k_fkfs,k_sfje,k_yhje,k_qcje,k_ljje,k_yfje,k_type,k_djlx,k_djtxt,"
      "k_note,k_flag,k_rq,gl_djh) values ('100001','admin','100001','现金',0,0,0,?,?,?,?,'','',1,?,?)"};
  Bare cash_{
      db_,
      "insert into jxc_xjyh (xj_rq,gl_djh,xj_dlx,xj_je,u_name,ghs_name,ghs_sn,ck_name,xj_kmmc,xj_note,a_name,xj_chk,"
      "xj_ljje) values (?,?,?,0,'默认员工','','100001','主仓库','现金','','admin','1',0)"};
};

}  // namespace two_years_detail

void fillTwoYears(Shop& shop, int rows) {
  two_years_detail::Filler(shop.native()).fill(rows);
}

}  // namespace jxc::bench
