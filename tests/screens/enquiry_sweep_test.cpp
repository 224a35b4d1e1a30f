// What holds for every registered enquiry, over the demonstration shop.
#include "core/comparison.h"
#include "core/data_module.h"
#include "harness/report_samples.h"
#include "harness/row_texts.h"
#include "harness/sheets_by_python.h"
#include "maintenance/demo_shop.h"
#include "masterdata/screens/partner_picker.h"
#include "output/screens/print_outlet.h"
#include "output/templates.h"
#include "platform/sheet/sheet_writer.h"
#include "screens/harness/screen_test.h"
#include "server/test_engine.h"
#include "ui/chart.h"
#include "ui/display.h"
#include "ui/enquiry_screen.h"
#include "ui/grid_output.h"
#include "ui/grid_paper.h"

#include <QAction>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QMenu>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>

#include <thread>

namespace jxc::test {
namespace enquiry_sweep_test {

using ui::EnquirySpec;
using ui::EnquiryView;

/// Where the books hold a date, with the table.
struct DateColumn {
  const char *table, *column, *only = "";
};
constexpr DateColumn kDates[] = {{"jxc_goodslist", "gl_kdrq"},
                                 {"jxc_xjyh", "xj_rq"},
                                 {"jxc_ysyfk", "k_rq"},
                                 {"jxc_jhd", "j_jhrq"},
                                 {"jxc_thd", "th_thrq"},
                                 {"jxc_lsxsd", "ls_xsrq"},
                                 {"jxc_xsthd", "th_xsrq"},
                                 {"jxc_log", "log_time"},
                                 {"jxc_kcdbd", "db_dbrq"},
                                 {"jxc_bsd", "bs_bsrq"},
                                 {"jxc_byd", "by_byrq"},
                                 {"jxc_kcpd", "pd_rq"},
                                 {"jxc_cfd", "cf_cfrq"},
                                 {"jxc_kbd", "kb_kbrq"},
                                 {"jxc_khjh", "jh_rq"},
                                 {"jxc_yyfy", "fy_rq"},
                                 {"jxc_ysyfk", "k_rq", " where k_djlx='SK'"}};
constexpr const char *kFirstDay = "2021-08-01", *kLastDay = "2021-08-31";

class EnquirySweep : public ScreenTest {
 protected:
  EnquirySweep() {
    dataModule().installAccountDb(openEmpty(Story::Long));
    buildDemoShop(
        {.months = 1, .seed = 3, .goods = 40, .documentsADay = 4, .putaway = true, .lastDay = QDate(2021, 8, 31)});
    setClock(QStringLiteral("2021-08-31 20:00:00"));
    bringTemplates();
    printOutlet().preview = [this](const report::Pages& pages, QWidget*) { previewed_.push_back(pages); };
    // All happened in this month, the stock that the shop opened with too.
    execSql("update jxc_goodslist set gl_kdrq=? where gl_kdrq<?", kFirstDay, kFirstDay);
    // A receipt that came with freight.
    execSql("update jxc_jhd set j_yf=20,j_yffs='我方付运费' where id=(select min(id) from jxc_jhd where j_status=1)");
    // The first and the last second of the shop's time each have a row.
    for (const DateColumn& each : kDates)
      for (const auto& [pick, second] :
           {std::pair("min", "2021-08-01 00:00:00"), std::pair("max", "2021-08-31 23:59:59")})
        execSql("update " + std::string(each.table) + " set " + each.column + "=? where id=(select " + pick +
                    "(id) from " + each.table + each.only + ")",
                second);
    const RowSet warehouses = openSelect("select ck_sn,ck_name from jxc_ckxx order by id");
    own_ = warehouses[0].text("ck_sn");
    foreign_ = warehouses[1].text("ck_sn");
    foreignName_ = warehouses[1].text("ck_name");
    execSql("update jxc_ckxx set ck_asn=? where ck_sn=?", u"100099,", own_);
    execSql("update jxc_ckxx set ck_asn=? where ck_sn<>?", u"100001,", own_);
    setAllRights(QStringLiteral("100077"), QString(60, u'1'));
  }

  void beAdmin() { becomeOperator(QStringLiteral("admin"), QStringLiteral("100001"), QStringLiteral("100001")); }
  void beBound() {
    execSql("update jxc_xtcs set cs_cgyh=1");
    becomeOperator(QStringLiteral("店员"), QStringLiteral("100099"), QStringLiteral("100077"));
  }
  void beWithoutPrices() {
    for (const auto& [group, position] : {std::pair("qtcz", 7), std::pair("qtcz", 9), std::pair("kcgl", 16)})
      takeRight(QStringLiteral("100077"), group, position);
    becomeOperator(QStringLiteral("店员"), QStringLiteral("100099"), QStringLiteral("100077"));
  }

  /// Every source of an enquiry with its list; `visit` gets criteria that the source answers with rows, if any do.
  template <class Visit>
  void everySource(const EnquirySpec& enquiry, Visit visit) {
    Criteria all;
    if (enquiry.side) {
      visit(enquiry.side->grid, enquiry.side->source, all);
      const RowSet rows = jxc::answer(enquiry.side->source, all);
      if (!rows.isEmpty()) enquiry.side->narrow(all, rows.front());
    }
    for (const ui::EnquiryTab& tab : enquiry.tabs)
      for (const EnquiryView& view : tab.views) {
        const bool months = std::ranges::any_of(tab.criteria, [](const ui::Criterion& each) { return each.months; });
        asksPeriod_ = std::ranges::any_of(tab.criteria, [](const ui::Criterion& each) {
          return each.asks == ui::Asks::From || each.asks == ui::Asks::To || each.asks == ui::Asks::Day;
        });
        inMonths_ = months ? &view.source : nullptr;
        ofPage_ = view.page ? &view.source : nullptr;
        visit(view.grid, view.source, all);
        for (const ui::RowsBelow* lower = view.below; lower; lower = lower->next) {
          Criteria below = all;
          for (const Row row : jxc::answer(view.source, all)) {
            if (lower->has && !lower->has(row)) continue;
            lower->narrow(below, row);
            break;
          }
          visit(lower->grid, lower->source, below);
        }
      }
  }

  /// Every list of every enquiry, in sight on its screen and loaded.
  template <class Visit>
  void everyList(Visit visit) {
    for (const EnquirySpec* enquiry : ui::registeredEnquiries())
      open(enquiry->name, [&](ui::Screen& screen) {
        auto& s = dynamic_cast<ui::EnquiryScreen&>(screen);
        // Of a desk, that of somebody who has done something; of partners all.
        if (enquiry->name == "F_Ywygl") s.grid(enquiry->side->grid.name).selectRow(1);
        for (const ui::EnquiryTab& tab : enquiry->tabs) {
          // Who stayed away in a month stayed away for days.
          for (const ui::Criterion& each : tab.criteria)
            if (each.asks == ui::Asks::Amount) s.field(each.name).setText(u"3"_qs);
          for (const EnquiryView& view : tab.views) {
            SCOPED_TRACE(::testing::Message() << enquiry->name << ' ' << view.grid.name);
            s.showView(view.grid.name);
            ui::Grid& list = s.grid(view.grid.name);
            list.waitLoaded();
            visit(s, tab, view, list);
          }
        }
      });
  }

  static Criteria ofWarehouse(Criteria criteria, const QString& warehouse) {
    criteria.warehouse = warehouse;
    return criteria;
  }
  /// Whether the statement has anything to do with the period. A computation has where one is asked for.
  bool restrictsPeriod(const Source& source, Criteria criteria) const {
    const Question before = source.ask(criteria);
    criteria.from = QStringLiteral("2021-08-02");
    const Question after = source.ask(criteria);
    const Sql* statement = std::get_if<Sql>(&before);
    return statement ? !(*statement == std::get<Sql>(after)) : asksPeriod_;
  }

  /// But for the other end of a document: an own transfer says where its goods went.
  static bool holds(const RowSet& rows, const QString& text) {
    for (int row = 0; row < rows.rowCount(); ++row)
      for (int column = 0; column < rows.columnCount(); ++column)
        if (rows.text(row, column) == text && column != rows.columnIndex("ck_in")) return true;
    return false;
  }

  QString onPaper(const report::Report& report) const {
    const QString file = EnquirySweep::file(u"paper.pdf"_qs);
    report.prepare().writePdf(file);
    return textOfPdf(file);
  }

  /// A list that was exported as both kinds of file: its captions, and the numbers of its first row.
  struct Exported {
    QString place;  // without the ending
    int rows = 0;
    QStringList head;
    std::vector<Value> first;  // null where none is
  };
  static void expectReadByOthers(const std::vector<Exported>& exported) {
    QStringList files;
    for (const Exported& each : exported)
      files << each.place + u".xlsx"_qs << each.place + u".xls"_qs;
    const QJsonObject read = readByPython(files);
    for (const Exported& each : exported)
      for (const char* ending : {".xlsx", ".xls"}) {
        SCOPED_TRACE(::testing::Message() << each.place.toStdString() << ending);
        const QJsonObject book = read[each.place + QLatin1String(ending)].toObject();
        ASSERT_FALSE(book.isEmpty());
        const QJsonArray rows = book.begin()->toObject()[u"rows"].toArray();
        ASSERT_GT(rows.size(), each.rows);
        EXPECT_EQ(QVariant(rows[0].toArray().toVariantList()).toStringList(), each.head);
        for (std::size_t i = 0; i < each.first.size(); ++i) {
          if (each.first[i].isNull()) continue;
          const QString cell = rows[1].toArray()[static_cast<qsizetype>(i)].toString();
          EXPECT_TRUE(cell.startsWith(u"n:")) << cell.toStdString();
          EXPECT_NEAR(cell.mid(2).toDouble(), each.first[i].number(), 1e-6);
        }
      }
  }

  std::vector<report::Pages> previewed_;
  QString own_, foreign_, foreignName_;
  bool asksPeriod_ = true;                                // the tab of the source that is visited
  const Source *inMonths_ = nullptr, *ofPage_ = nullptr;  // of the source that is visited, where it is so
};

}  // namespace enquiry_sweep_test

using enquiry_sweep_test::EnquirySweep;

TEST_F(EnquirySweep, AnswersKnowTheirColumnsTheirPeriodAndTheirWarehouse) {
  static_assert(!std::is_constructible_v<Source, Sql (*)(const Criteria&)>, "a source says what it is bound to");
  int restricted = 0;
  for (const ui::EnquirySpec* enquiry : ui::registeredEnquiries()) {
    SCOPED_TRACE(enquiry->name);
    everySource(*enquiry, [&](const ui::GridSpec& list, const Source& source, const Criteria& all) {
      SCOPED_TRACE(list.name);
      beAdmin();
      const RowSet rows = jxc::answer(source, all);
      for (const ui::ColumnSpec& column : list.columns)
        EXPECT_GE(rows.columnIndex(column.field), 0) << column.field;
      EXPECT_GE(rows.columnIndex(list.idField), 0) << list.idField;

      // Between the first and the last second stands all that there is, and without their days there is less.
      const auto between = [&](const QString& from, const QString& to) {
        Criteria period = all;
        period.from = from;
        period.to = to;
        return jxc::answer(source, period);
      };
      const QString first = QString::fromLatin1(enquiry_sweep_test::kFirstDay),
                    last = QString::fromLatin1(enquiry_sweep_test::kLastDay);
      const RowSet whole = between(first, last), anyTime = between(u"2000-01-01"_qs, u"9999-12-31"_qs);
      EXPECT_EQ(whole.rowCount(), anyTime.rowCount());
      const RowSet inside = between(u"2021-08-02"_qs, u"2021-08-30"_qs);
      const RowSet months = between(u"2021-08"_qs, u"2021-08"_qs);
      EXPECT_EQ(months.rowCount(), anyTime.rowCount());
      bool less = inside.rowCount() < whole.rowCount();
      for (const ui::ColumnSpec& column : list.columns) {
        if (!ui::isNumberKind(column.kind)) continue;
        const auto total = [&](const RowSet& set) { return sumOf(set, column.field); };
        if (column.use.sum) {
          EXPECT_NEAR(total(whole), total(anyTime), 0.005) << column.field;
        }
        less = less || std::abs(total(inside) - total(whole)) > 0.005;
      }
      // Where months are asked for, days within one change nothing.
      if (&source == inMonths_) less = less || between(u"2021-09"_qs, u"2021-09"_qs).rowCount() < whole.rowCount();
      if (restrictsPeriod(source, all) && !(between(first, first).isEmpty() && between(last, last).isEmpty())) {
        EXPECT_TRUE(less) << "the period restricts nothing";
      }

      // A bound operator: his own, never another branch's, whatever is asked for.
      const RowSet ownOfAll = jxc::answer(source, ofWarehouse(all, own_));
      beBound();
      EXPECT_EQ(jxc::answer(source, ofWarehouse(all, own_)).rowCount(), ownOfAll.rowCount());
      const RowSet his = jxc::answer(source, all);
      // What runs short in one warehouse need not be short in all of them.
      EXPECT_LE(his.rowCount(), std::max(rows.rowCount(), ownOfAll.rowCount()));
      if (source.reasonForNoWarehouse().empty()) {
        ++restricted;
        EXPECT_FALSE(holds(his, foreignName_)) << "another branch is told of";
        // A page of figures is one row whatever is asked.
        if (&source != ofPage_) {
          EXPECT_TRUE(jxc::answer(source, ofWarehouse(all, foreign_)).isEmpty()) << "asked for another branch";
        }
      } else {
        EXPECT_EQ(his.rowCount(), rows.rowCount());
      }
      execSql("update jxc_xtcs set cs_cgyh=0");

      // Whoever stops it has not to wait.
      QElapsedTimer clock;
      clock.start();
      EnquiryReader stopped(accountDb(), [](int) { return false; });
      EXPECT_THROW(jxc::answer(source.ask(all), stopped), EnquiryStopped);
      EXPECT_LT(clock.elapsed(), 200);
    });
  }
  EXPECT_GT(restricted, 3);
}

TEST_F(EnquirySweep, ListsSumPrintAndExportWhatTheirStatementsGive) {
  beAdmin();
  std::vector<Exported> exported;
  everyList([&](ui::EnquiryScreen& s, const ui::EnquiryTab&, const ui::EnquiryView& view, ui::Grid& list) {
    const RowSet rows = jxc::answer(view.source, s.criteria());
    ASSERT_EQ(list.rowCount(), rows.rowCount());
    for (const ui::ColumnSpec& column : view.grid.columns) {
      if (!column.use.sum) continue;
      double sum = 0;
      for (const Row row : rows)
        if (!view.counts || view.counts(row)) sum += row.number(column.field);
      EXPECT_EQ(list.footerText(column.field), ui::displaySum(column.kind, sum)) << column.field;
    }
    if (list.isEmpty()) return;

    Exported& file = exported.emplace_back();
    file.place = EnquirySweep::file(ui::qs(s.enquiry().name) + u'_' + ui::qs(view.grid.name));
    file.rows = list.rowCount();
    for (const ui::Grid::ExportColumn& column : list.exportColumns()) {
      file.head << u"s:"_qs + column.caption;
      file.first.push_back(ui::isNumberKind(column.kind) ? list.cellValue(0, column.column) : Value());
    }
    for (const char* ending : {".xlsx", ".xls"})
      ASSERT_TRUE(writeSheet(file.place + QLatin1String(ending), ui::gridSheet(list), {}));

    previewed_.clear();
    // Another program reads the sums on the paper of the list, and of its chart, which goes with it.
    const auto isRead = [&](const report::Report& paper) {
      const QString printed = onPaper(paper);
      for (const ui::ColumnSpec& column : view.grid.columns)
        if (column.use.sum && list.isColumnVisible(column.field)) {
          EXPECT_TRUE(printed.contains(list.footerText(column.field))) << column.field;
        }
    };
    if (!view.page) isRead(ui::gridReport(list));
    if (!view.chart.label.empty()) isRead(ui::Chart(list, view.chart).paper());
    if (view.paper.empty()) return;
    click(s, "btn_Prin");
    ASSERT_EQ(previewed_.size(), 1u) << "no paper " << view.paper;
    EXPECT_GT(previewed_[0].count(), 0);
    EXPECT_TRUE(previewed_[0].faults().empty());
  });
  EXPECT_GT(exported.size(), 100U) << "lists of a shop without business prove nothing";
  expectReadByOthers(exported);
}

TEST_F(EnquirySweep, TwoOperatorsAtOnceGetWhatEachGetsAlone) {
  if (!onServer()) {  // in memory there is no second connection
    accountDb().backupTo(file(u"jxc.mdb"_qs));
    dataModule().installAccountDb(openSqlite(file(u"jxc.mdb"_qs)));
  }
  const auto open = accountDb().readerOpener();
  const std::unique_ptr<Database> stations[]{open(), open()};
  const auto asked = [&](int station, const Question& question) {
    EnquiryReader reader(*stations[station]);
    return textsOf(jxc::answer(question, reader));
  };
  for (const ui::EnquirySpec* enquiry : ui::registeredEnquiries())
    everySource(*enquiry, [&](const ui::GridSpec& list, const Source& source, const Criteria& all) {
      SCOPED_TRACE(::testing::Message() << enquiry->name << ' ' << list.name);
      beBound();
      const Question ofBound = source.ask(all);
      beAdmin();
      const Question questions[]{source.ask(all), ofBound};
      const QStringList alone[]{asked(0, questions[0]), asked(1, questions[1])};
      QStringList together[2];
      std::thread other([&] { together[1] = asked(1, questions[1]); });
      together[0] = asked(0, questions[0]);
      other.join();
      for (const int station : {0, 1})
        EXPECT_EQ(together[station], alone[station]);
    });
}

TEST_F(EnquirySweep, WhatIsComparedAddsUpToTheEarlierPeriod) {
  beAdmin();
  int compared = 0;
  everyList([&](ui::EnquiryScreen& s, const ui::EnquiryTab& tab, const ui::EnquiryView& view, ui::Grid& list) {
    if (view.compares.empty()) return;
    const auto input = [&](ui::Asks asks) { return std::ranges::find(tab.criteria, asks, &ui::Criterion::asks)->name; };
    if (std::ranges::any_of(tab.criteria, &ui::Criterion::months)) return;  // the shop has one month
    type(s, input(ui::Asks::From), u"2021-08-16");
    type(s, input(ui::Asks::To), u"2021-08-31");
    choose(s, input(ui::Asks::Comparison), u"上期"_qs);
    list.waitLoaded();
    Criteria earlier = s.criteria();
    earlier.from = u"2021-07-31"_qs;
    earlier.to = u"2021-08-15"_qs;
    for (const std::string_view figure : view.compares) {
      const double sum = sumOf(jxc::answer(view.source, earlier), figure);
      EXPECT_NE(sum, 0) << figure;
      EXPECT_NEAR(list.sum(earlierField(figure)), sum, 0.005) << figure;
      ++compared;
    }
    choose(s, input(ui::Asks::Comparison), u"无"_qs);
  });
  EXPECT_GT(compared, 15);
}

TEST_F(EnquirySweep, WithoutTheRightNothingOfAColumnIsThere) {
  beWithoutPrices();
  int withheld = 0;
  everyList([&](ui::EnquiryScreen& s, const ui::EnquiryTab&, const ui::EnquiryView& view, ui::Grid& list) {
    ui::Chart chart(list, view.chart.label.empty() ? ui::ChartSpec{view.grid.columns[0].field} : view.chart);
    const QStringList copied = list.tabSeparated(false).section(u'\n', 0, 0).trimmed().split(u'\t');
    const auto* model = list.view()->model();
    QMenu menu;
    list.fillMenu(menu);
    for (std::size_t i = 0; i < list.spec().columns.size(); ++i) {
      const ui::ColumnSpec& column = list.spec().columns[i];
      if (!column.right.isGuarded()) continue;
      SCOPED_TRACE(column.field);
      ++withheld;
      const QString caption = ui::qs(column.caption);
      EXPECT_FALSE(list.isColumnVisible(column.field));
      EXPECT_EQ(list.rows().columnIndex(column.field), -1);
      EXPECT_EQ(list.sum(column.field), 0);
      EXPECT_EQ(list.footerText(column.field), QString());
      for (const auto& each : list.exportColumns())
        EXPECT_NE(each.caption, caption);
      EXPECT_FALSE(copied.contains(caption));
      for (const auto* action : menu.findChildren<QAction*>())
        EXPECT_NE(action->text(), caption);
      chart.setMeasure(column.field);
      EXPECT_NE(chart.measure(), ui::qs(column.field));
      for (int row = 0; row < list.rowCount(); ++row) {  // what a screen reader is told
        const QModelIndex cell = model->index(row, static_cast<int>(i));
        EXPECT_TRUE(model->data(cell).toString().isEmpty() && model->data(cell, Qt::EditRole).isNull());
      }
      if (list.isEmpty()) continue;
      EXPECT_FALSE(ui::gridReport(list).prepare().lines(0).join(u'\t').split(u'\t').contains(caption));
      if (view.paper.empty()) continue;
      previewed_.clear();
      click(s, "btn_Prin");
      ASSERT_EQ(previewed_.size(), 1u);
      EXPECT_TRUE(previewed_[0].faults().empty());
    }
  });
  EXPECT_GT(withheld, 5);
}

TEST_F(EnquirySweep, WhoIsAskedForIsChosenFromAListByKey) {
  beAdmin();
  int chosen = 0;
  for (const ui::EnquirySpec* enquiry : ui::registeredEnquiries())
    open(enquiry->name, [&](ui::Screen& s) {
      for (const ui::EnquiryTab& tab : enquiry->tabs)
        for (const ui::Criterion& asked : tab.criteria) {
          if (!asked.pick) continue;
          SCOPED_TRACE(::testing::Message() << enquiry->name << ' ' << asked.name);
          dynamic_cast<ui::EnquiryScreen&>(s).showView(tab.views.front().grid.name);
          ui::Field& input = s.field(asked.name);
          if (!input.isVisible()) continue;
          expectScreen(asked.pick == pickCustomer ? "F_Kh_Sele" : "F_Ghs_Sele",
                       [](ui::Screen& list) { press(list, "F5"); });
          pressIn(*input.widget(), "Alt+Down");
          EXPECT_FALSE(input.key().isEmpty());
          ++chosen;
        }
    });
  EXPECT_GT(chosen, 8);
}

TEST_F(EnquirySweep, EnterLeadsFromARowToItsDocumentAndEscComesBack) {
  static QString opened;
  const auto services = ui::enquiryServices();
  ui::enquiryServices().openDocument = [](const QString& number, ui::Screen&) { opened = number; };
  beAdmin();
  int led = 0;
  QStringList empty;
  everyList([&](ui::EnquiryScreen& s, const ui::EnquiryTab&, const ui::EnquiryView& view, ui::Grid& list) {
    if (view.leads.view.empty() && view.leads.document.empty()) return;
    if (list.isEmpty()) {
      empty << ui::qs(s.enquiry().name) + u' ' + ui::qs(view.grid.name);
      return;
    }
    opened.clear();
    const int rows = list.rowCount();
    for (int tried = 0; opened.isEmpty() && tried < std::min(rows, 12); ++tried) {
      list.selectRow(tried % 2 ? rows - 1 - tried / 2 : tried / 2);  // some have none: opening stock, a quiet day
      const QString key = list.currentKey();
      int steps = 0;
      for (; opened.isEmpty() && steps < 3 && s.shown().current(); ++steps) {
        pressIn(*s.shown().view(), "Return");
        s.shown().waitLoaded();
      }
      // The first rows of an account carry what was there before.
      for (int next = 1; opened.isEmpty() && &s.shown() != &list && next < std::min(s.shown().rowCount(), 12); ++next) {
        s.shown().selectRow(next);
        pressIn(*s.shown().view(), "Return");
      }
      while (&s.shown() != &list && steps-- > 0)
        press(s, "Esc");
      ASSERT_EQ(&s.shown(), &list);
      EXPECT_EQ(list.rowCount(), rows);
      EXPECT_EQ(list.currentKey(), key);
    }
    EXPECT_FALSE(opened.isEmpty()) << "no document behind it";
    ++led;
  });
  EXPECT_GT(led, 10);
  EXPECT_EQ(empty, QStringList());
  ui::enquiryServices() = services;
}

}  // namespace jxc::test
