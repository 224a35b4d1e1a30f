// Two shops with one history: one is closed at a random day, and then both go on with the same 500 commands. Whatever
// looks at days behind the closing must not be able to tell them apart, and the archive of the closing proves like the
// shop that it was. JXC_TWIN=200 tries so many histories instead of the few that the suite takes; JXC_SEED=n begins
// with another one.
#include "accounts/cash_lines.h"
#include "accounts/partner_overview.h"
#include "core/archive_look.h"
#include "core/data_module.h"
#include "core/program_directory.h"
#include "engine/snapshot.h"
#include "harness/findings.h"
#include "harness/row_texts.h"
#include "maintenance/closing_command.h"
#include "maintenance/shop_walk.h"
#include "server/test_engine.h"
#include "statistics/business_day.h"
#include "statistics/commission.h"
#include "statistics/employee_totals.h"
#include "statistics/purchase_sale_stock.h"
#include "statistics/trade_totals.h"

#include <QTemporaryDir>

#include <cstdlib>

namespace jxc::closing_twin_test {

using test::foundWrong;

int asked(const char* name, int usual) {
  const char* const words = std::getenv(name);
  return words ? std::atoi(words) : usual;
}

/// What a shop shows, by name.
using Figures = std::map<std::string, QStringList>;

class ClosingTwin : public test::ShopWalk {
 protected:
  ClosingTwin() : before_(programDirectory()) { setProgramDirectory(home_.path()); }
  ~ClosingTwin() override { setProgramDirectory(before_); }

  /// Every column but the id, which may be another one where rows went before.
  static QStringList rowsBehind(const std::string& table, const std::string& date, const QString& day,
                                const std::string& order) {
    QStringList all;
    const RowSet rows = openSelect("select * from " + table + " where " + date + ">? order by " + order, day);
    for (int row = 0; row < rows.rowCount(); ++row) {
      QStringList cells;
      for (int column = 1; column < rows.columnCount(); ++column)
        if (rows.columns()[static_cast<std::size_t>(column)] != "id2") cells << rows.text(row, column);
      all << cells.join(u' ');
    }
    return all;
  }

  static Figures figures(const QString& day) {
    const QString until = day + u" 23:59:59"_qs,
                  next = QDate::fromString(day, Qt::ISODate).addDays(1).toString(Qt::ISODate);
    Figures all;
    const auto tell = [&all](const std::string& name, const RowSet& rows) { all[name] = test::textsOf(rows); };
    tell("stock", openSelect("select g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj,kc_xssl from jxc_kcsp order by g_sn,ck_sn"));
    tell("goods", openSelect("select g_sn,g_kc,g_pjjj from jxc_goods order by g_sn"));
    tell("customers", openSelect("select kh_sn,kh_lwje from jxc_khxx order by kh_sn"));
    tell("suppliers", openSelect("select ghs_sn,ghs_lwje from jxc_ghsxx order by ghs_sn"));
    for (const Row row : openSelect("select yh_name from jxc_yhzh order by id"))
      all["cash"] << row.text("yh_name") + QString::number(xjyhBalanceNow(row.text("yh_name")));
    for (const PartnerType type : {PartnerType::Customer, PartnerType::Supplier})
      all["invoices"] << QString::number(fpBalanceAt(QStringLiteral("100001"), type, allDates));
    for (const auto& [table, date] :
         std::initializer_list<std::pair<const char*, const char*>>{{"jxc_goodslist", "gl_kdrq"},
                                                                    {"jxc_ysyfk", "k_rq"},
                                                                    {"jxc_xjyh", "xj_rq"},
                                                                    {"jxc_fpdjb", "fp_rq"},
                                                                    {"jxc_yyfy", "fy_rq"},
                                                                    {"jxc_ysyfk_dj", "k_rq"},
                                                                    {"jxc_lsxsd", "ls_xsrq"},
                                                                    {"jxc_jhd", "j_jhrq"},
                                                                    {"jxc_rkd", "rk_rq"},
                                                                    {"jxc_khjh", "jh_rq"}})
      all[table] = rowsBehind(table, date, until, std::string(date) + ",id");
    tell("months", openSelect("select js_rq,ck_sn,js_sl,js_zje,js_xssl,js_cgsl from jxc_kcjs where js_rq>? order by "
                              "js_rq,ck_sn",
                              day.left(7)));
    for (const QString& from : {next, QDate::fromString(day, Qt::ISODate).addDays(9).toString(Qt::ISODate)}) {
      const Criteria period{.from = from, .to = QStringLiteral("2021-12-31")};
      const std::string since = " from " + from.toStdString();
      tell("operations" + since, answer(Source(businessFigures), period));
      tell("days" + since, answer(Source(businessDays), period));
      tell("summary" + since, answer(Source(stockSummary), period));
      all["movements" + since] =
          test::textsOf(answer(Source(stockMovements), period),
                        {"g_sn", "rkdj", "rksl", "rkje", "ckdj", "cksl", "ckje", "gl_kc", "gl_kczje", "dnote"});
      tell("bought" + since, answer(Source(tradeTotalsOf<PartnerType::Supplier, TradeBy::Goods>), period));
      tell("sold" + since, answer(Source(tradeTotalsOf<PartnerType::Customer, TradeBy::Goods>), period));
      tell("commission" + since, answer(Source(commissions), period));
      all["receipts" + since] = test::textsOf(openSelect(receiptsByEmployee(period)));
      for (const PartnerSide* side : {&customerSide, &supplierSide}) {
        Criteria everybody = period;
        everybody.boxes = partner_books::kWithIdle;
        all["partners" + since] +=
            test::textsOf(openSelect(partner_books::overviewSummary(partner_books::owedLedger, *side, everybody)));
        all["partner lines" + since] +=
            test::textsOf(openSelect(partner_books::overviewDetail(partner_books::owedLedger, *side, period)),
                          {"k_ghskh", "k_rq", "k_qcje", "k_yfje", "k_sfje", "k_ljje"});
      }
      tell("accounts" + since, openSelect(cash::accountTotals(period)));
    }
    return all;
  }

  /// Closes with its backup, which is the twin from then on: the file that the archive tells.
  std::unique_ptr<Database> close(const QString& day) {
    YesPrompt yes;
    EXPECT_TRUE(closing::closePeriod({{day}}, yes)) << yes.notices.join(u'\n').toStdString();
    const QString archive = openSelect(closing::archives()).front().text("da_file");
    {
      const ArchiveLook looking(archive);
      EXPECT_EQ(foundWrong(), QStringList()) << "the archive";
      EXPECT_TRUE(exists("select id from jxc_goodslist where gl_kdrq<=? and gl_flag<>'qc'", day)) << "an empty archive";
    }
    return openSqliteSnapshot(snapshot(*openSqlite(archive, {.readOnly = true, .essential = false})));
  }

  /// One pair of shops; the days of the walk are 2021-04-03 to 05-03. `again`: closed a second time later on.
  void runTwins(unsigned seed, const QDate& day, bool again) {
    SCOPED_TRACE("seed " + std::to_string(seed) + ", closed " + day.toString(Qt::ISODate).toStdString());
    live(seed, kBefore);
    ASSERT_EQ(foundWrong(), QStringList());
    const QString closed = day.toString(Qt::ISODate);
    const QDate second(2021, 5, 25);
    const int behind = test::onServer() && asked("JXC_TWIN", 0) == 0 ? kBehind / 4 : kBehind;
    const auto liveOn = [&](bool closes) {
      goOn(QDate(2021, 5, 20), day.addDays(1));
      live(seed + 1000, again ? behind / 2 : behind);
      if (!again) return;
      goOn(QDate(2021, 6, 10), second.addDays(1));
      if (closes) close(second.toString(Qt::ISODate));
      EXPECT_EQ(foundWrong(), QStringList()) << "half way";
      live(seed + 2000, behind);
    };
    auto twin = close(closed);
    EXPECT_EQ(foundWrong(), QStringList()) << "just closed";
    liveOn(true);
    EXPECT_EQ(foundWrong(), QStringList()) << "closed, and lived on";
    const QString last = again ? second.toString(Qt::ISODate) : closed;
    const Figures ofClosed = figures(last);
    dataModule().installAccountDb(std::move(twin));
    liveOn(false);
    EXPECT_EQ(foundWrong(), QStringList()) << "never closed";
    const Figures ofTwin = figures(last);
    for (const auto& [name, rows] : ofTwin)
      EXPECT_EQ(ofClosed.at(name).join(u'\n'), rows.join(u'\n')) << name;
    EXPECT_GT(ofTwin.at("jxc_goodslist").size(), 20);
  }

  static constexpr int kBefore = 120, kBehind = 500;

 private:
  QString before_;
  QTemporaryDir home_;
};

/// A shop for each: its parameters are its own.
struct Kind {
  const char* name;
  QDate day;
  bool inParts = false, again = false, noDecimals = false;
};
constexpr auto nameOf = [](const auto& info) { return std::string(info.param.name); };

class EveryClosing : public ClosingTwin, public ::testing::WithParamInterface<Kind> {};

TEST_P(EveryClosing, IsSeenByNobodyWhoLooksBehindIt) {
  const Kind& kind = GetParam();
  const int histories = asked("JXC_TWIN", 1);
  for (int i = 0; i < histories && !HasFailure(); ++i) {
    dataModule().installAccountDb(test::openFresh(test::Story::Long));
    settle();
    goOn(QDate(2021, 5, 3), QDate(2000, 1, 1));
    followInParts(kind.inParts);
    setParameter("cs_zjews", kind.noDecimals);
    setParameter("cs_jews", kind.noDecimals ? 0 : 2);
    runTwins(static_cast<unsigned>(asked("JXC_SEED", 1) + i), kind.day.addDays(i == 0 ? 0 : i % 7 - 3), kind.again);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Days, EveryClosing,
    ::testing::Values(Kind{.name = "MonthEnd", .day = QDate(2021, 4, 30)},
                      Kind{.name = "MidMonth", .day = QDate(2021, 4, 19), .inParts = true},
                      Kind{.name = "Twice", .day = QDate(2021, 5, 1), .inParts = true, .again = true},
                      Kind{.name = "NoDecimals", .day = QDate(2021, 4, 30), .inParts = true, .noDecimals = true}),
    nameOf);

}  // namespace jxc::closing_twin_test
