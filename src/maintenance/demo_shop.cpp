#include "maintenance/demo_shop.h"

#include "core/clock.h"
#include "core/data_module.h"
#include "core/log.h"
#include "core/login.h"
#include "core/schema/schema.h"
#include "core/statements.h"
#include "engine/sqlite/sqlite_database.h"
#include "maintenance/demo_offers.h"
#include "maintenance/demo_people.h"
#include "maintenance/demo_trade.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace jxc {
namespace demo_shop_detail {

using namespace demo;  // NOLINT(google-build-using-namespace): inside this file's own namespace

/// Sales of a month against the average one, percent: school holidays are the season of spectacles.
constexpr std::array kSeasons{88, 96, 92, 90, 98, 112, 134, 138, 108, 106, 82, 84};
/// How much the sun is thought of, percent.
constexpr std::array kSunshine{2, 4, 12, 30, 60, 90, 100, 92, 50, 20, 6, 2};

/// Invoices are kept for so long.
constexpr int kDaysOfInvoices = 13;

template <class List>
int ofMonth(const List& list, const QDate& day) {
  return list[static_cast<std::size_t>(day.month() - 1)];
}

/// Documents of a day against the average one, percent.
int rush(const QDate& day) {
  const bool weekend = day.dayOfWeek() >= 6;
  const bool goldenWeek = day.month() == 10 && day.day() <= 7;
  return ofMonth(kSeasons, day) * (goldenWeek ? 130 : weekend ? 124 : 90) / 100;
}

class Year {
 public:
  Year(const DemoPlan& plan, Trade& trade, const Staff& staff, Random& random, QDate first, QDate last)
      : plan_(plan), trade_(trade), staff_(staff), random_(random), first_(first), last_(last) {}

  void run(const DemoProgress& progress) {
    setTime(first_, QTime(8, 0));
    trade_.beginDay(first_);
    trade_.stockUp();
    const auto days = first_.daysTo(last_) + 1;
    for (QDate day = first_; day <= last_; day = day.addDays(1)) {
      if (progress) progress(static_cast<int>(first_.daysTo(day) * 100 / days), day.toString(Qt::ISODate));
      makeDay(day);
    }
    setTime(last_, QTime(21, 30));
    trade_.writeInvoices();
    if (plan_.putaway) {
      trade_.followInParts();
      trade_.lend();
    }
    trade_.leaveDrafts();
    trade_.workAs(staff_.administrator);
  }

 private:
  enum class Act : char {
    Sell,
    SellMany,
    TakeBack,
    SendBack,
    Receive,
    Transfer,
    Damage,
    Deliver,
    Collect,
    Pay,
    PettyCash
  };

  static void setTime(const QDate& day, const QTime& time) { clock::setFixed(QDateTime(day, time)); }

  /// What is to be done on this day, in the order of the day.
  std::vector<Act> agenda(const QDate& day) {
    const int documents = std::max(1, plan_.documentsADay * rush(day) * random_.between(88, 112) / 10000);
    const auto share = [&](int perMille) {  // the fraction of a document happens on some days
      const int parts = documents * perMille;
      return parts / 1000 + (random_.chance(parts % 1000) ? 1 : 0);
    };
    std::vector<Act> acts;
    const auto add = [&](Act act, int times) { acts.insert(acts.end(), static_cast<std::size_t>(times), act); };
    add(Act::Sell, share(640));
    add(Act::SellMany, share(12));
    add(Act::TakeBack, share(24));
    add(Act::SendBack, share(7));
    add(Act::Receive, share(75));
    add(Act::Transfer, share(36));
    add(Act::Damage, share(4));
    add(Act::Deliver, share(200));
    add(Act::Collect, share(8));
    add(Act::Pay, share(22));
    add(Act::PettyCash, share(18));
    for (std::size_t i = acts.size(); i > 1; --i)
      std::swap(acts[i - 1], acts[static_cast<std::size_t>(random_.below(static_cast<int>(i)))]);
    return acts;
  }

  void make(Act act, const QDate& day) {
    switch (act) {
      case Act::Sell:
        trade_.sell(ofMonth(kSunshine, day));
        break;
      case Act::SellMany:
        trade_.sellToInstitution();
        break;
      case Act::TakeBack:
        trade_.takeBack();
        break;
      case Act::SendBack:
        trade_.sendBackToSupplier();
        break;
      case Act::Receive: {
        const int back = random_.chance(60) ? random_.between(2, 14) : 0;
        trade_.receive(std::min<int>(back, static_cast<int>(first_.daysTo(day))));
        break;
      }
      case Act::Transfer:
        trade_.transfer();
        break;
      case Act::Damage:
        trade_.writeOffDamage();
        break;
      case Act::Deliver:
        trade_.collectOnDelivery();
        break;
      case Act::Collect:
        trade_.collectFromInstitution();
        break;
      case Act::Pay:
        trade_.paySupplier();
        break;
      case Act::PettyCash:
        pettyCash();
        break;
    }
  }

  void pettyCash() {
    constexpr Word notes[] = {u"快递费", u"办公用品", u"清洁用品", u"饮用水", u"加工耗材", u"宣传单印刷"};
    const int yuan = random_.between(2, 40) * 5;
    trade_.book(expenses::Side::Expense, u"日常费用", u"现金", yuan, random_.oneOf(notes), 1);
  }

  /// What comes with the calendar.
  void makeStandingOrders(const QDate& day) {
    using enum expenses::Side;
    constexpr Word bank = u"工商银行";
    if (day.day() == 1) {
      trade_.book(Expense, u"房租", bank, 7600, u"总店房租");
      trade_.book(Expense, u"房租", bank, 5200, u"分店房租", 0, 1);
    }
    if (day.day() == 10) {
      constexpr Word wages = u"应付工资";
      trade_.book(Expense, wages, bank, 9200, u"上月工资：周敏");
      trade_.book(Expense, wages, bank, 6300, u"上月工资：林小雨", 1);
      trade_.book(Expense, wages, bank, 6100, u"上月工资：孙磊", 2);
      trade_.book(Expense, wages, bank, 17400, u"上月工资：赵强、陈静、刘洋", 0, 1);
    }
    if (day.day() == 15) trade_.book(Expense, u"水电费", bank, random_.between(120, 260) * 10, u"两店水电费");
    if (day.day() == 21) trade_.book(Income, u"利息收入", bank, random_.between(60, 190), u"存款利息");
    if (day.day() == 26) trade_.book(Income, u"其他收入", u"现金", 86.5, u"旧柜台和包装变卖", 1);
    if (day.day() == 28) trade_.payOwner();
    if (day.day() == 8) trade_.bill(customerSide);
    if (day.day() == 16) trade_.bill(supplierSide);
    if (day.dayOfWeek() == 5) trade_.bankTakings();
    if (day.day() == 18) trade_.correctSale();
    if (day.day() == 6 || day.day() == 20) trade_.bundleSets();
    if (day.day() == 24) trade_.splitSets();
    if (day.day() == 12) trade_.bookSurplus();
  }

  void makeDay(const QDate& day) {
    trade_.beginDay(day);
    if (day == std::max(first_, last_.addDays(-kDaysOfInvoices))) trade_.keepInvoices();
    setTime(day, QTime(9, 0));
    makeStandingOrders(day);
    const std::vector<Act> acts = agenda(day);
    int done = 0;
    for (const Act act : acts) {
      setTime(day, QTime(9, 10).addSecs(done++ * 11 * 3600 / static_cast<int>(acts.size())));
      make(act, day);
    }
    setTime(day, QTime(21, 0));
    trade_.auditDay(day == last_ ? 2 : 0);  // some documents of the last day wait for the visitor
    if (day.day() == 25 && day != last_) trade_.countSundries();
  }

  const DemoPlan& plan_;
  Trade& trade_;
  const Staff& staff_;
  Random& random_;
  const QDate first_, last_;
};

}  // namespace demo_shop_detail

DemoOutcome buildDemoShop(const DemoPlan& plan, const DemoProgress& progress) {
  using namespace demo_shop_detail;
  const QDate last = plan.lastDay.isValid() ? plan.lastDay : clock::now().date();
  const QDate first = last.addMonths(-plan.months).addDays(1);
  clock::setFixed(QDateTime(first, QTime(7, 0)));
  createAllTables(accountDb());
  ShopPrompt prompt;
  if (!login(QStringLiteral("admin"), {}, prompt)) throw std::logic_error("demonstration: no login");
  if (progress) progress(0, QStringLiteral("基础资料"));
  Random random(plan.seed);
  Staff staff = makeStaff(random, prompt);
  signContracts(staff, first, prompt);
  Catalogue catalogue = makeCatalogue(plan.goods, staff.warehouses[0], random, prompt);
  const int goods = static_cast<int>(catalogue.articles.size());
  Trade trade(std::move(catalogue), staff, random);
  Year(plan, trade, staff, random, first, last).run(progress);
  makeOffers(staff, prompt);
  makeBelongings(staff, first, last, prompt);
  if (progress) progress(100, QStringLiteral("完成"));
  return {.documents = trade.documents(),
          .goods = goods,
          .ledger = static_cast<std::int64_t>(lookupNumber("select count(*) from jxc_goodslist"))};
}

DemoOutcome makeDemoFile(const QString& file, const DemoPlan& plan, const DemoProgress& progress) {
  struct Closing {
    ~Closing() {
      dataModule().closeAccountDb();
      clock::setFixed(std::nullopt);
    }
  } const closing;
  SqliteOptions options;
  options.create = true;
  dataModule().installAccountDb(openSqlite(file, options));
  sqlite::doNotWaitForDisk(accountDb());  // a crash half-way leaves a file that nobody uses
  const DemoOutcome outcome = buildDemoShop(plan, progress);
  if (plan.files) {
    demo::ShopPrompt prompt;
    demo::attachContractFiles(prompt);
  }
  dataModule().closeAccountDb();
  // A last word with its disk sync brings everything before it to the disk as well.
  dataModule().installAccountDb(openSqlite(file));
  writeLog(QStringLiteral("演示帐套建立完成，共%1张单据").arg(outcome.documents));
  return outcome;
}

}  // namespace jxc
