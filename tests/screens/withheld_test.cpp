// Who may not see what goods cost or are sold for is told nothing that follows from it. The same shop is walked through
// twice, the second time with other costs or prices in its books: every screen, what its commands and menus open, every
// list, chart, file, paper and copy has to say the same both times. So it does for each ready-made role, whose
// operators go where its rights let them.
#include "core/data_module.h"
#include "core/roles.h"
#include "core/screens/command_runner.h"
#include "core/screens/main_form.h"
#include "engine/snapshot.h"
#include "maintenance/demo_shop.h"
#include "output/screens/print_outlet.h"
#include "output/templates.h"
#include "screens/harness/ready_made_roles.h"
#include "screens/harness/screen_test.h"
#include "server/test_engine.h"
#include "stock/document_family.h"
#include "ui/chart.h"
#include "ui/commands.h"
#include "ui/display.h"
#include "ui/enquiry_screen.h"
#include "ui/file_dialogs.h"
#include "ui/grid_output.h"
#include "ui/grid_paper.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>

#include <map>
#include <set>
#include <sstream>

namespace jxc::test::withheld_test {

/// Where the books hold such figures. What a document comes to in the ledgers of partners, cash and invoices is told by
/// the rights to those.
struct Figures {
  const char *table, *columns, *only = "";
};
constexpr Figures kCosts[] = {
    {"jxc_goods", "g_jj g_scjj g_pjjj g_cbj"},
    {"jxc_kcsp", "kc_cbj"},
    {"jxc_kcjs", "js_zje js_cgje js_xscb js_xslr"},
    {"jxc_goodslist", "gl_cbj gl_zcb gl_lr gl_pjjj gl_kczje"},
    {"jxc_goodslist", "gl_dj gl_je gl_taxdj gl_taxje gl_zje", " where gl_flag<>'xs' and gl_flag<>'xt'"},
    {"jxc_jhd", "j_yfje j_sfje j_yhje j_hkje"},
    {"jxc_jhsp", "jh_dj jh_je jh_taxdj jh_taxje jh_zje"},
    {"jxc_thd", "th_yfje th_sfje th_hkje"},
    {"jxc_thsp", "th_dj th_je th_taxdj th_taxje th_zje"},
    {"jxc_lsxsd", "ls_lr"},
    {"jxc_lsxssp", "ls_cbj ls_zcb ls_cbj2"},
    {"jxc_xsthd", "th_lr"},
    {"jxc_xsthsp", "th_cbj th_zcb"},
    {"jxc_bssp", "bs_dj bs_zje"},
    {"jxc_bysp", "by_dj by_zje"},
    {"jxc_dbsp", "db_dj"},
    {"jxc_kcpdsp", "pd_dj pd_zje"},
    {"jxc_cfd", "cf_cbj"},
    {"jxc_cfsp", "cf_dj cf_zje"},
    {"jxc_kbd", "kb_cbj"},
    {"jxc_kbsp", "kb_dj kb_zje"},
    {"jxc_khjhsp", "jh_dj jh_zje"},
    {"jxc_ghsbj", "gb_bj"},
    {"jxc_yyfy", "fy_je", " where fy_note like '%成本差额' and not gl_djh like 'FY%' and not gl_djh like 'SR%'"}};
constexpr Figures kPrices[] = {
    {"jxc_goods", "g_sj g_sj1 g_sj2 g_sj3 g_sj4 g_sj5 g_lsj"},
    {"jxc_kcjs", "js_xsje"},
    {"jxc_goodslist", "gl_dj gl_je gl_taxdj gl_taxje gl_zje gl_lsj", " where gl_flag='xs' or gl_flag='xt'"},
    {"jxc_dbsp", "db_sj"},
    {"jxc_lsxsd", "ls_yfje ls_sfje ls_yhje ls_hkje"},
    {"jxc_lsxssp", "ls_dj ls_je ls_taxdj ls_taxje ls_zje ls_lsj"},
    {"jxc_xsthd", "th_yfje th_sfje th_hkje"},
    {"jxc_xsthsp", "th_dj th_je th_taxdj th_taxje th_zje th_lsj"},
    {"jxc_khbj", "kb_bj"}};

/// What follows from both: who may see one of them could work the other one out.
constexpr Figures kProfits[] = {{"jxc_kcjs", "js_xslr"},
                                {"jxc_goodslist", "gl_lr"},
                                {"jxc_lsxsd", "ls_lr"},
                                {"jxc_xsthd", "th_lr"},
                                {"jxc_dbsp", "db_zje"}};

/// Not walked: what waits for a password or closes by itself, and the camera of the machine.
constexpr std::string_view kLeftOut[] = {"F_Xtsd", "F_Loading", "F_Login", "F_Spxxgl_Cam"};
constexpr int kRows = 25;   // of each list
constexpr int kPaper = 60;  // rows that a paper is made of
/// Who makes a document or pays it has to know what is due: its head and the list of what waits tell it, its goods and
/// everything else do not.
constexpr std::string_view kTellDue[] = {"F_Cgjh",     "F_Cgth",     "F_Spxs",      "F_Xsth",
                                         "F_Yfkgl_Fk", "F_Yskgl_Sk", "F_Spxs_Check"};

/// Lists of the books beside trade and of stock that have rows here: of an empty one nothing can be told.
constexpr std::string_view kFilled[] = {
    "F_Bjgl gridGhs",       "F_Bjgl gridKh",    "F_Bsby gridWaiting", "F_Cfkb gridWaiting", "F_Cgth gridWaiting",
    "F_Cwbb gridJy",        "F_Cwbb gridLrMx",  "F_Cwbb gridZc",      "F_Fpcg gridMx",      "F_Fpxs gridMx",
    "F_Fyjsr fyjsr",        "F_Fyjsr fyjsrhz",  "F_Fyjsr fyjsrtj",    "F_Gdzc gridZc",      "F_Htgl gridHt1",
    "F_Htgl gridHt2",       "F_Kcdb gridLines", "F_Kcdb gridWaiting", "F_Kcpd gridWaiting", "F_Khjhgl_Djcx gridMx",
    "F_Khjhgl gridWaiting", "F_Xjyh xjyh",      "F_Xsth gridWaiting"};

/// What was told, by screen and step.
using Told = std::map<QString, QStringList>;

class Withheld : public ScreenTest {
 protected:
  Withheld() {
    printOutlet().preview = printOutlet().printAsking = [this](const report::Pages& pages, QWidget*) { tell(pages); };
    printOutlet().print = [this](const report::Pages& pages) { tell(pages); };
    ui::setFileAnswer([](const QString&, const QString&) { return QString(); });
  }

  /// The shop with other figures, not all by one factor: orders tell of them as well.
  void openShop(std::initializer_list<std::span<const Figures>> others = {}) {
    static const std::vector<std::byte> books = [] {
      dataModule().installAccountDb(openSqlite(QStringLiteral(":memory:")));
      buildDemoShop(
          {.months = 1, .seed = 3, .goods = 40, .documentsADay = 4, .putaway = true, .lastDay = QDate(2021, 8, 31)});
      return snapshot(accountDb());
    }();
    ui::dropScreens();
    dataModule().installAccountDb(openSqliteSnapshot(books));
    setClock(QStringLiteral("2021-08-31 20:00:00"));
    bringTemplates();
    leaveSomethingToDo();
    for (const std::span<const Figures> figures : others)
      for (const Figures& each : figures) {
        std::string set;
        std::istringstream columns(each.columns);
        for (std::string column; columns >> column;)
          set += (set.empty() ? "" : ",") + column + "=" + column + "*(2+id mod 3)";
        execSql("update " + std::string(each.table) + " set " + set + each.only);
      }
    execSql("update jxc_lsxssp set a_name='店员' where a_name='admin'");
    execSql("update jxc_jhsp set a_name='店员' where a_name='孙磊'");
    setAllRights(QStringLiteral("100077"), QString(60, u'1'));
  }
  /// Of each kind of document one waits, where there are two the other is a draft of this operator; an expense and a
  /// line of cash wait.
  static void leaveSomethingToDo() {
    for (const DocumentFamily& family : documentFamilies()) {
      if (family.sharesTables) continue;
      const RowSet last =
          openSelect(compose("select top 2 id,{} as djh from {} where {}=1 and {} like ? order by id desc",
                             {family.number, family.head, family.status, family.number}),
                     QStringView(family.prefix).toString() + u'%');
      const int count = last.rowCount();
      if (count == 0) continue;
      execSql(compose("update {} set {}=0,{}='' where id=?", {family.head, family.status, family.checker}),
              last.integer(count - 1, 0));
      if (count == 1) continue;
      execSql(compose("delete from {} where id=?", {family.head}), last.integer(0, 0));
      execSql(compose("update {} set a_name='店员' where {}=?", {family.lines, family.number}), last.text(0, 1));
    }
    execSql("update jxc_yyfy set fy_chk='0' where id=?",
            lookupValue("select max(id) from jxc_yyfy where gl_djh like 'FY%'"));
    execSql("update jxc_xjyh set xj_chk='0' where id=?",
            lookupValue("select max(id) from jxc_xjyh where gl_djh like 'XC%'"));
  }
  void beWithout(std::initializer_list<Right> rights) {
    for (const Right& each : rights)
      takeRight(QStringLiteral("100077"), each.group, each.position);
    becomeOperator(QStringLiteral("店员"), QStringLiteral("100099"), QStringLiteral("100077"));
  }

  void be(const ReadyMadeRole& role) {
    becomeOperator(u"新店员"_qs, QStringLiteral("100098"), roleOf(QString::fromUtf8(role.name)));
  }
  /// What the operator reaches by the commands of the main window.
  static std::vector<std::string> screensOfOperator() {
    std::vector<std::string> screens;
    for (const auto& command : ui::commands())
      if (isAllowed(command) && ui::isScreenRegistered(command.screen) &&
          std::ranges::find(screens, command.screen) == screens.end())
        screens.emplace_back(command.screen);
    return screens;
  }

  Told walk(std::span<const std::string> screens) {
    told_.clear();
    QApplication::clipboard()->clear();
    QTimer menus;  // a button may open one
    QObject::connect(&menus, &QTimer::timeout, [] {
      if (auto* menu = QApplication::activePopupWidget()) menu->close();
    });
    menus.start(10);
    for (const std::string& name : screens) {
      if (std::ranges::find(kLeftOut, name) != std::end(kLeftOut)) continue;
      SCOPED_TRACE(name);
      // A command may end its screen: it comes up again for the next one.
      std::size_t next = 0, count = 0;
      do {
        open(name, [&](ui::Screen& s) {
          // A dialog without what it is for is only looked at: the screens bring it up with that.
          count = isReachedByCommand(name) ? s.spec().commands.size() : 0;
          where_ = ui::qs(name);
          if (next == 0) {
            look(s);
            takeMenus(s);
          }
          while (next < count && s.isVisible()) {
            const ui::CommandSpec& command = s.spec().commands[next++];
            QPushButton& button = s.command(command.name);
            if (command.key == "Esc" || !button.isVisible() || !button.isEnabled() || button.menu()) continue;
            // Previews prove the books, and those with other figures contradict themselves.
            if (button.text().startsWith(u"预览"_qs)) continue;
            where_ = ui::qs(name) + u' ' + ui::qs(command.name);
            try {
              button.click();
              settle();
            } catch (const std::exception& failure) {  // told by the application otherwise
              add(QString::fromUtf8(failure.what()));
              EXPECT_FALSE(told_[where_].last().contains(u"没有字段"_qs)) << where_.toStdString();
            }
          }
        });
      } while (next < count);
    }
    TF_MainForm form;
    form.resize(1180, 680);
    form.formActivate();
    where_ = QStringLiteral("F_MainForm");
    tellWidgets(form);
    return std::move(told_);
  }

  /// What is told otherwise the second time.
  static QStringList differences(const Told& first, const Told& second) {
    QStringList all;
    for (const auto& [where, texts] : first) {
      const auto other = second.find(where);
      const QStringList there = other == second.end() ? QStringList() : other->second;
      for (qsizetype i = 0; i < std::max(texts.size(), there.size()); ++i)
        if (texts.value(i) != there.value(i)) {
          all << where + u": "_qs + texts.value(i) + u" | "_qs + there.value(i);
          break;
        }
    }
    return all;
  }

  bool hadRows(const QString& list) const { return filled_.contains(list); }
  bool meets(QDialog& dialog) override {
    if (auto* screen = dynamic_cast<ui::Screen*>(&dialog))
      look(*screen);
    else
      tellWidgets(dialog);
    dialog.done(QDialog::Rejected);
    return true;
  }

 private:
  static bool isReachedByCommand(std::string_view name) {
    const auto opens = [&](const auto& each) { return each.screen == name; };
    return std::ranges::any_of(ui::commands(), opens) ||
           std::ranges::any_of(ui::registeredEnquiries(), [&](const auto* each) { return each->name == name; });
  }

  void add(const QString& text) {
    if (!text.isEmpty()) told_[where_] << text;
  }
  void tell(const report::Pages& pages) {
    add(u"paper "_qs + pages.name());
    for (int page = 0; page < std::min(pages.count(), 3); ++page)
      told_[where_] << pages.lines(page);
  }

  void look(ui::Screen& s) {
    if (auto* enquiry = dynamic_cast<ui::EnquiryScreen*>(&s)) {
      for (const ui::EnquiryTab& tab : enquiry->enquiry().tabs)
        for (const ui::EnquiryView& view : tab.views) {
          enquiry->showView(view.grid.name);
          tellScreen(s);
          tellChart(*enquiry, view);
        }
      enquiry->showView(enquiry->enquiry().tabs.front().views.front().grid.name);
      return;
    }
    auto* tabs = s.findChild<QTabWidget*>();
    for (int tab = tabs ? tabs->count() - 1 : 0; tab >= 0; --tab) {
      if (tabs) tabs->setCurrentIndex(tab);
      tellScreen(s);
    }
  }
  void tellScreen(ui::Screen& s) {
    for (ui::Grid* list : s.grids()) {
      if (!list->isVisible()) continue;
      list->waitLoaded();
      if (!list->isEmpty()) filled_.insert(ui::qs(s.spec().name) + u' ' + ui::qs(list->spec().name));
      list->selectRow(0);
    }
    settle();
    tellWidgets(s);
    for (ui::Grid* list : s.grids()) {
      if (!list->isVisible() || list->isEmpty() || (tellsDue(s) && list->spec().name == "gridWaiting")) continue;
      list->waitLoaded();
      for (const std::string_view field : list->forbidden())
        EXPECT_LT(list->rows().columnIndex(field), 0) << list->spec().name << " asks for " << field;
      for (const ui::ColumnSpec& column : list->spec().columns)
        add(list->footerText(column.field));
      const Sheet file = ui::gridSheet(*list);
      std::vector<Value> cells(file.columns.size());
      file.rows.read(0, cells);
      for (std::size_t i = 0; i < cells.size(); ++i)
        add(file.columns[i].caption + u'=' + cells[i].text());
      if (list->rowCount() <= kPaper) tell(ui::gridReport(*list).prepare());
    }
  }
  /// What the menus of the lists in sight do, and what they leave on the clipboard.
  void takeMenus(ui::Screen& s) {
    for (ui::Grid* list : s.grids()) {
      if (!list->isVisible() || list->isEmpty()) continue;
      QMenu menu;
      list->fillMenu(menu);
      for (QAction* action : menu.actions()) {
        if (!s.isVisible()) return;
        if (action->menu() || action->isSeparator() || !action->isEnabled()) continue;
        where_ = ui::qs(s.spec().name) + u' ' + action->text();
        action->trigger();
        settle();
        add(QApplication::clipboard()->text());
        QApplication::clipboard()->clear();
      }
    }
  }
  void tellChart(ui::EnquiryScreen& s, const ui::EnquiryView& view) {
    ui::Grid& list = s.grid(view.grid.name);
    if (view.chart.label.empty() || list.isEmpty()) return;
    ui::Chart chart(list, view.chart);
    for (const ui::ColumnSpec& column : list.spec().columns) {
      chart.setMeasure(column.field);
      add(chart.measure() + chart.currentText());
    }
    if (list.rowCount() <= kPaper) tell(chart.paper().prepare());
  }
  void tellWidgets(QWidget& window) {
    for (auto* each : window.findChildren<QWidget*>()) {
      if (!each->isVisible()) continue;
      if (tellsDue(window) && (qobject_cast<QLineEdit*>(each) || isIn(*each, u"area_gridWaiting"_qs))) continue;
      add(each->accessibleName());
      if (auto* label = qobject_cast<QLabel*>(each)) add(label->text());
      if (auto* edit = qobject_cast<QLineEdit*>(each)) add(edit->text());
      if (auto* memo = qobject_cast<QPlainTextEdit*>(each)) add(memo->toPlainText());
      if (auto* button = qobject_cast<QAbstractButton*>(each)) add(button->text());
      if (auto* combo = qobject_cast<QComboBox*>(each)) add(combo->currentText());
      if (auto* view = qobject_cast<QAbstractItemView*>(each)) tellCells(*view->model());
    }
  }
  static bool tellsDue(const QWidget& window) {
    return std::ranges::find(kTellDue, window.objectName().toStdString()) != std::end(kTellDue);
  }
  static bool isIn(const QWidget& part, const QString& list) {
    for (const QWidget* each = &part; each; each = each->parentWidget())
      if (each->objectName() == list) return true;
    return false;
  }
  /// Of hidden columns too: who asks the list is told of them.
  void tellCells(const QAbstractItemModel& model) {
    for (int row = 0; row < std::min(model.rowCount(), kRows); ++row) {
      QStringList cells;
      for (int column = 0; column < model.columnCount(); ++column)
        for (const int role : {Qt::DisplayRole, Qt::EditRole, Qt::ToolTipRole, Qt::AccessibleTextRole})
          cells << model.index(row, column).data(role).toString();
      add(cells.join(u' '));
    }
  }

  Told told_;
  std::set<QString> filled_;  // lists that had rows
  QString where_;
};

TEST_F(Withheld, NothingFollowsFromCostsOrPricesForWhoMayNotSeeThem) {
  if (onServer()) GTEST_SKIP() << "what a screen withholds does not depend on the engine";
  const std::vector<std::string> screens = ui::registeredScreens();
  openShop();
  beWithout({kSeesCost, kSeesStockCost});
  const Told prices = walk(screens);
  openShop({kCosts});
  beWithout({kSeesCost, kSeesStockCost});
  EXPECT_EQ(differences(prices, walk(screens)), QStringList()) << "costs are told";

  openShop();
  beWithout({kSeesCost, kSeesPrice, kSeesStockCost});
  const Told quantities = walk(screens);
  openShop({kCosts, kPrices});
  beWithout({kSeesCost, kSeesPrice, kSeesStockCost});
  EXPECT_EQ(differences(quantities, walk(screens)), QStringList()) << "prices are told";

  for (const std::string_view list : kFilled)
    EXPECT_TRUE(hadRows(ui::qs(list))) << list << " has nothing to tell";
  // Who may see them is told: the walk looks where they are.
  const std::vector<std::string> some{"F_Cgjh",   "F_Jxctj",  "F_Kccx",   "F_Khjhgl_Djcx",
                                      "F_Spxstj", "F_Spxxgl", "F_Xsdjcx", "F_Yyfx"};
  openShop();
  beWithout({});
  const Told all = walk(some);
  openShop({kCosts});
  beWithout({});
  const QStringList told = differences(all, walk(some));
  for (const std::string& name : some)
    EXPECT_FALSE(told.filter(ui::qs(name)).isEmpty()) << name << " tells nothing of costs";
}

TEST_F(Withheld, AReadyMadeRoleIsToldWhatItsTableSaysAndNothingElse) {
  if (onServer()) GTEST_SKIP() << "what a screen withholds does not depend on the engine";
  for (const ReadyMadeRole& role : kReadyMadeRoles) {
    SCOPED_TRACE(role.name);
    openShop();
    be(role);
    EXPECT_EQ(session().canSeeCost, role.seesCost);
    const std::vector<std::string> screens = screensOfOperator();
    EXPECT_GE(screens.size(), 8U);
    if (role.seesCost && role.seesPrice) continue;
    const Told told = walk(screens);
    EXPECT_GT(told.size(), screens.size());
    if (role.seesCost)
      openShop({kPrices, kProfits});
    else
      openShop({kCosts});
    be(role);
    EXPECT_EQ(differences(told, walk(screens)), QStringList());
  }
}

}  // namespace jxc::test::withheld_test
