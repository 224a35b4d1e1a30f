// The lock of the books: what is refused on a locked day, what goes on, and what the day after it takes over.
#include "core/period_lock.h"

#include "accounts/cash_accounts.h"
#include "accounts/cash_lines.h"
#include "accounts/expenses.h"
#include "accounts/invoices.h"
#include "accounts/partner_documents.h"
#include "accounts/settling.h"
#include "core/data_module.h"
#include "core/schema/schema.h"
#include "harness/whole_books.h"
#include "inventory/opening_stock.h"
#include "maintenance/locked_commands.h"
#include "maintenance/period_locking.h"
#include "maintenance/prove.h"
#include "masterdata/gifts.h"
#include "masterdata/goods.h"
#include "masterdata/goods_change.h"
#include "masterdata/partners.h"
#include "sales/loan_return.h"
#include "sales/loan_sale.h"
#include "server/test_engine.h"
#include "stock/average_change.h"
#include "stock/document_rules.h"
#include "stock/partial_rest.h"
#include "stock/repair.h"
#include "stock/shop.h"
#include "stock/stock_sync.h"

#include <QTemporaryDir>

#include <algorithm>

namespace jxc::period_lock_test {

using namespace families;
using partner_books::Kind;

const QString locked = u"2021-05-04"_qs, day = u"2021-05-03"_qs, openDay = u"2021-05-06"_qs;

struct Command {
  std::string name, of;
  std::function<bool(Prompt&)> run;
};

/// Says yes to everything, with what happens while a first question stands; what a command throws is told like a
/// refusal.
class Agreeing final : public Prompt {
 public:
  void notice(const QString& text) override { told << text; }
  bool ask(const QString&) override {
    if (meanwhile) std::exchange(meanwhile, nullptr)();
    return true;
  }
  Answer askOrCancel(const QString& text) override { return ask(text) ? Answer::Yes : Answer::No; }
  std::function<void()> meanwhile;
  bool does(const Command& command) {
    told.clear();
    try {
      return command.run(*this);
    } catch (const std::runtime_error& failure) {
      notice(QString::fromUtf8(failure.what()));
      return false;
    }
  }
  QStringList told;
};

class PeriodLockTest : public test::ShopTest {
 protected:
  PeriodLockTest() { begin(); }
  void begin() {
    setClock(u"2021-05-10"_qs);
    setParameter("cs_kp", 1);
    for (const char* goods : {"A", "B", "P"})
      addGoods(goods, 5);
    execSql("insert into jxc_ckxx (ck_sn,ck_name) values ('100002','分店')");
    receive(u"2021-05-01"_qs, {{"A", 1000, 5}, {"B", 1000, 5}, {"P", 15, 5}});
  }
  static void lock(const QString& upTo) {
    Transaction transaction(accountDb());
    setPeriodLock(upTo);
    transaction.commit();
  }

  QString waiting(const DocumentFamily& f, const QString& date) {
    if (f.partial) {
      const bool buys = f.partial == &partial::putaway;
      const char* const later = buys ? "cs_sprk" : "cs_spck";
      setParameter(later, 1);
      const QString source = buys ? receive(day, {{"A", 3, 5}}) : sell(day, {{"A", 3, 9}});
      const QString number = test::waitingPart(*f.partial, date, source);
      setParameter(later, 0);
      return number;
    }
    std::vector<Field> head;
    if (&f == &transfer) head = {{"ck_in", u"100002"}};
    if (&f == &split) head = {{"g_sn", u"B"}, {"cf_sl", 1.0}, {"cf_cbj", 5.0}};
    if (&f == &bundle) head = {{"g_sn", u"B"}, {"kb_sl", 1.0}, {"kb_cbj", 5.0}};
    return test::waitingDocument(f, date, head, {{f.isCount() ? "P" : "A", f.isCount() ? 15.0 : 1.0, 5}});
  }
  static std::int64_t lineOf(const DocumentFamily& f, const QString& number) {
    return lookupValue(compose("select top 1 id from {} where {}=?", {f.lines, f.number}), number).toLongLong();
  }
  /// An audited loan of two pieces, the number and its line.
  std::pair<QString, std::int64_t> lent() {
    const QString number = audited(test::waitingDocument(loan, u"2021-05-02"_qs, {}, {{"A", 2, 5}}));
    return {number, lineOf(loan, number)};
  }

  std::vector<Command> ofDocuments() {
    std::vector<Command> all;
    for (const DocumentFamily& f : documentFamilies()) {
      const auto add = [&](const char* name, std::function<bool(Prompt&)> run) {
        all.push_back({name, words(f.name).toStdString(), std::move(run)});
      };
      if (&f == &loanReturn) {  // audited from the first moment on
        const QString back = test::returnLoan(day, lent().second, 1, 0, 5);
        add("cancel", [=](Prompt& p) { return loanReturn.takeBack(back, p, CancelMode::Single); });
        continue;
      }
      const QString first = waiting(f, day), second = waiting(f, day), later = waiting(f, openDay);
      const QString done = audited(waiting(f, day));
      add("head",
          [=, &f](Prompt& p) { return !changeWaitingHead(f, first, {.salesperson = u"100001"_qs}, p).isEmpty(); });
      add("date", [=, &f](Prompt& p) { return !changeWaitingHead(f, later, {.date = day}, p).isEmpty(); });
      add("line", [=, &f](Prompt& p) { return deleteWaitingLine(f, second, lineOf(f, second), p); });
      add("audit", [=, &f](Prompt& p) { return checkDj(f, first, p) == AuditOutcome::Audited; });
      add("cancel", [=, &f](Prompt& p) { return f.takeBack(done, p, CancelMode::Single); });
    }
    // Drafts take their numbers behind all others of the day.
    for (const DocumentFamily& f : documentFamilies()) {
      if (&f == &purchaseReceipt || &f == &loanReturn) continue;
      const QString draft = newDocumentNumber(f, day);
      test::writeLine(f, draft, day, {"A", 1, 5});
      all.push_back({"save", words(f.name).toStdString(), [=, &f](Prompt& p) {
                       const auto head = [&](const QString& number) {
                         insertWaitingHead(f, {number, day, "100001", "100001"}, number);
                       };
                       return saveDocument(f, {.number = draft, .date = day, .writeHead = head}, p).saved;
                     }});
    }
    const auto draft = draftReceipt(day, {{"B", 1, 5}});
    all.push_back({"save", "by its rules", [=](Prompt& p) { return receipt::saveReceipt(draft, p).saved; }});
    const QString loanBack = lent().first;
    const std::int64_t loanKept = lent().second;
    all.push_back({"loan back", "", [=](Prompt& p) {
                     auto back = loan_return::open(loanBack, 0, p);
                     back->date = day;
                     return loan_return::save(*back, p).has_value();
                   }});
    all.push_back({"loan kept", "", [=](Prompt& p) {
                     auto kept = loan_sale::open(loanKept, p);
                     kept->setDate(day);
                     return loan_sale::save(*kept, p).has_value();
                   }});
    return all;
  }

  std::vector<Command> ofMoney() {
    const cash::LineDraft in{
        .movement = cash::Movement::In, .date = day, .account = u"现金"_qs, .amount = 8, .employee = u"默认员工"_qs};
    cash::LineDraft later = in;
    later.date = openDay;
    const QString waits = *cash::saveLine(in, prompt), moves = *cash::saveLine(later, prompt);
    const QString booked = *cash::saveLine(in, prompt);
    cash::checkDj(booked);
    const auto cashId = [](const QString& number) {
      return lookupValue("select id from jxc_xjyh where gl_djh=?", number).toLongLong();
    };
    later.id = cashId(moves);
    later.date = day;
    setClock(day);
    cash::saveAccount({.name = u"支行"_qs, .type = u"支行"_qs, .opening = 5}, prompt);
    const auto account = lookupValue("select id from jxc_yhzh where yh_name='支行'").toLongLong();
    const QString owing = *savePartner(customerSide, {.name = u"李四"_qs, .opening = 70}, prompt);
    setClock(u"2021-05-10"_qs);
    auto partner = readPartner(customerSide, lookupValue("select id from jxc_khxx where kh_sn=?", owing).toLongLong());
    partner.opening = 80;
    std::vector<Command> all{
        {"cash save", "new", [=](Prompt& p) { return cash::saveLine(in, p).has_value(); }},
        {"cash save", "moved", [=](Prompt& p) { return cash::saveLine(later, p).has_value(); }},
        {"cash audit", "", [=](Prompt& p) { return cash::auditLine(waits, p); }},
        {"cash cancel", "", [=, id = cashId(booked)](Prompt& p) { return cash::cancelLine(id, p); }},
        {"account", "",
         [=](Prompt& p) {
           auto draft = cash::readAccount(account);
           draft.opening = 6;
           return cash::saveAccount(draft, p);
         }},
        {"account gone", "", [=](Prompt& p) { return cash::deleteAccount(account, p); }},
        {"partner", "", [=](Prompt& p) { return savePartner(customerSide, partner, p).has_value(); }},
        {"partner gone", "", [=](Prompt& p) { return deletePartner(customerSide, partner.id, p); }},
    };
    for (const PartnerSide* side : {&customerSide, &supplierSide})
      for (const Kind kind : {Kind::Due, Kind::Payment}) {
        const partner_books::Draft draft{
            .partner = u"100001"_qs, .date = day, .amount = 9, .account = u"现金"_qs, .employee = u"100001"_qs};
        const QString open = *partner_books::saveDocument(*side, kind, draft, prompt);
        const QString done = *partner_books::saveDocument(*side, kind, draft, prompt);
        partner_books::auditDocument(*side, kind, done);
        all.push_back({"partner save", open.toStdString(),
                       [=](Prompt& p) { return partner_books::saveDocument(*side, kind, draft, p).has_value(); }});
        all.push_back({"partner audit", open.toStdString(),
                       [=](Prompt& p) { return partner_books::auditOne(*side, kind, open, p); }});
        all.push_back({"partner cancel", open.toStdString(),
                       [=](Prompt& p) { return partner_books::unCheck(*side, kind, done, p); }});
      }
    const QString sold = sell(openDay, {{"A", 1, 9}});
    all.push_back({"settle", "", [=](Prompt& p) {
                     return partner_books::settleDocument(
                         customerSide,
                         {.number = sold, .date = day, .amount = 9, .account = u"现金"_qs, .employee = u"100001"_qs},
                         p);
                   }});
    return all;
  }

  std::vector<Command> ofExpenses() {
    const expenses::Draft rent{.date = day,
                               .type = u"费用"_qs,
                               .amount = 8,
                               .employee = u"100001"_qs,
                               .department = u"100001"_qs,
                               .account = u"现金"_qs};
    expenses::Draft later = rent;
    later.date = openDay;
    const auto idOf = [](const QString& number) {
      return lookupValue("select id from jxc_yyfy where gl_djh=?", number).toLongLong();
    };
    const QString waits = *expenses::save(rent, prompt), booked = *expenses::save(rent, prompt);
    later.id = idOf(*expenses::save(later, prompt));
    later.date = day;
    expenses::checkDj(booked, prompt);
    return {
        {"expense save", "new", [=](Prompt& p) { return expenses::save(rent, p).has_value(); }},
        {"expense save", "moved", [=](Prompt& p) { return expenses::save(later, p).has_value(); }},
        {"expense audit", "", [=](Prompt& p) { return expenses::auditOne(waits, p); }},
        {"expense cancel", "", [=, id = idOf(booked)](Prompt& p) { return expenses::cancel(id, p); }},
    };
  }

  std::vector<Command> ofInvoices() {
    const auto lineOf = [](const QString& number) {
      return invoices::Line{lookupValue("select id from jxc_fpdjb where gl_djh=?", number).toLongLong(), number};
    };
    std::vector<Command> all;
    for (const PartnerSide* side : {&customerSide, &supplierSide}) {
      const bool sells = side->isCustomer();
      const invoices::Draft typed{.partner = u"100001"_qs, .date = day, .amount = 9, .employee = u"100001"_qs};
      const auto byHand = [&] { return lineOf(*invoices::saveInvoice(*side, typed, prompt)); };
      const auto traded = [&] { return lineOf(sells ? sell(day, {{"A", 1, 9}}) : receive(day, {{"A", 1, 5}})); };
      const invoices::Line waits = byHand(), gone = byHand(), moved = byHand(), out = traded(), listed = traded();
      for (const invoices::Line& line : {gone, moved})
        invoices::checkDj(*side, line.id);
      const auto add = [&](const char* name, const char* of, std::function<bool(Prompt&)> run) {
        all.push_back({name, words(side->noun).toStdString() + of, std::move(run)});
      };
      add("invoice save", "new", [=](Prompt& p) { return invoices::saveInvoice(*side, typed, p).has_value(); });
      add("invoice save", "moved", [=](Prompt& p) {
        auto draft = *invoices::openInvoice(*side, moved, p);
        draft.date = openDay;
        draft.amount = 2'000'000;  // which is asked about, but not where the day refuses it
        return invoices::saveInvoice(*side, draft, p).has_value();
      });
      add("invoice gone", "", [=](Prompt& p) { return invoices::deleteInvoice(*side, gone, p); });
      add("invoice audit", "", [=](Prompt& p) { return invoices::auditOne(*side, waits, p); });
      add("excluded", "", [=](Prompt& p) { return invoices::exclude(*side, out, p); });
      add("registered", "", [=](Prompt& p) {
        auto typedOf = *invoices::openRegistration(*side, listed, p);
        typedOf.amount = 9;
        typedOf.date = day;
        return invoices::registerInvoice(*side, typedOf, p);
      });
    }
    return all;
  }

  std::vector<Command> ofStock() {
    const auto item = insertRow("jxc_zpxx", {{"zp_sn", u"Z1"}, {"zp_name", u"布"}, {"zp_sl", 0.0}});
    for (const char* goods : {"O", "Q", "R", "S"})
      addGoods(goods, 5);
    for (const char* goods : {"O", "Q", "R"})
      opening_stock::enter({.goods = goods, .warehouse = u"100001"_qs, .quantity = 3, .cost = 5}, prompt);
    receive(day, {{"S", 2, 5}});
    const auto gone = lookupValue("select id from jxc_goods where g_sn='R'").toLongLong();
    return {
        {"gift", "", [=](Prompt& p) { return gifts::receive(item, {.date = day, .quantity = 2, .note = {}}, p); }},
        {"opening", "",
         [](Prompt& p) {
           return opening_stock::change({.goods = u"O"_qs, .warehouse = u"100001"_qs, .quantity = 4, .cost = 5}, p);
         }},
        {"opening gone", "",
         [](Prompt& p) {
           const auto removed = opening_stock::remove(u"100001"_qs, {u"Q"_qs});
           for (const QString& refusal : removed->refusals)
             p.notice(refusal);
           return removed->goods == 1;
         }},
        {"goods gone", "", [=](Prompt& p) { return deleteGoods(gone, p); }},
        {"average", "", [](Prompt& p) { return changeAverage(u"S"_qs, {}, 5, p); }},
    };
  }

  std::vector<Command> all() {
    std::vector<Command> commands = ofMoney();
    for (const auto& each : {ofExpenses(), ofInvoices(), ofStock(), ofDocuments()})
      commands.insert(commands.end(), each.begin(), each.end());
    prompt.forget();
    return commands;
  }
};

/// What stands on locked days of the ledgers, to the letter.
QStringList behindTheLock() {
  QStringList all;
  for (const auto& [table, date] :
       {std::pair("jxc_goodslist", "gl_kdrq"), std::pair("jxc_xjyh", "xj_rq"), std::pair("jxc_ysyfk", "k_rq")})
    all << test::textsOf(openSelect(compose("select * from {} where {}<=? order by id", {table, date}), locked + u'~'));
  return all;
}

TEST_F(PeriodLockTest, NothingIsWrittenOnALockedDayAndOpenedAgainEverythingIs) {
  const std::vector<Command> commands = all();
  lock(locked);
  Agreeing asked;
  std::set<std::string_view> names{"rest", "sync"};  // of today alone: the test below
  for (const Command& each : commands) {
    names.insert(each.name);
    if (each.name == "invoice audit") continue;  // its amount counts from today on: the test below
    const test::Books before = test::readBooks();
    asked.meanwhile = [&] { EXPECT_NE(each.name, "invoice save") << each.of << " is refused before its question"; };
    EXPECT_FALSE(asked.does(each)) << each.name << ' ' << each.of;
    EXPECT_TRUE(asked.told.join(u' ').contains(u"账目已锁定到 2021-05-04"))
        << each.name << ' ' << each.of << ": " << asked.told.join(u' ').toStdString();
    auto changed = test::differences(before, test::readBooks());
    if (each.name == "loan back") changed.erase(u"jxc_khjhsptmp+"_qs);  // put together, not saved
    EXPECT_EQ(changed, std::set<QString>()) << each.name << ' ' << each.of;
  }
  EXPECT_EQ(names, std::set<std::string_view>(std::begin(test::kLockedCommands), std::end(test::kLockedCommands)));
  lock({});
  asked.meanwhile = nullptr;
  for (const Command& each : commands)
    EXPECT_TRUE(asked.does(each)) << each.name << ' ' << each.of << ": " << asked.told.join(u' ').toStdString();
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(PeriodLockTest, ALockOfAnotherStationIsSeenBehindTheQuestion) {
  QTemporaryDir folder;
  const QString file = folder.filePath(u"jxc.mdb"_qs);
  if (test::onServer()) {
    dataModule().installAccountDb(test::openFresh(test::Story::Long));
  } else {
    dataModule().installAccountDb(openSqlite(file, {.create = true}));
    createAllTables();
    upgradeSchema();
  }
  loadSession();
  begin();
  const std::vector<Command> commands = all();
  const std::unique_ptr<Database> station = test::onServer() ? test::openAgain() : openSqlite(file);
  Agreeing asked;
  int raced = 0;
  for (const Command& each : commands) {
    if (each.name == "opening gone") continue;  // asks nothing
    bool stood = false;
    asked.meanwhile = [&] {
      station->execute("insert into jxc_zmsd (sd_rq,sd_lsid) values ('2021-05-04',0)");
      stood = true;
    };
    const test::Books before = test::readBooks();
    const bool done = asked.does(each);
    raced += stood;
    if (stood) {
      EXPECT_FALSE(done) << each.name << ' ' << each.of;
      EXPECT_TRUE(asked.told.join(u' ').contains(u"账目已锁定到"_qs))
          << each.name << ' ' << each.of << asked.told.join(u' ').toStdString();
      auto changed = test::differences(before, test::readBooks());
      for (const QString& expected : {u"jxc_zmsd+"_qs, u"jxc_khjhsptmp+"_qs})
        changed.erase(expected);
      EXPECT_EQ(changed, std::set<QString>()) << each.name << ' ' << each.of;
      station->execute("delete from jxc_zmsd");
    }
  }
  EXPECT_GE(raced, 40);
}

TEST_F(PeriodLockTest, WhatRefersToALockedDayGoesOnTodayAndWhatWaitsThereMayLeave) {
  const QString today = u"2021-05-10"_qs;
  const QString putAway = waiting(putaway, today), issued = waiting(issue, today);
  setParameter("cs_sprk", 1);
  const QString rest = receive(day, {{"A", 3, 5}}), left = receive(day, {{"A", 3, 5}});
  setParameter("cs_sprk", 0);
  const auto byHand = [&] {
    const QString number = *invoices::saveInvoice(
        customerSide, {.partner = u"100001"_qs, .date = day, .amount = 9, .employee = u"100001"_qs}, prompt);
    return invoices::Line{lookupValue("select id from jxc_fpdjb where gl_djh=?", number).toLongLong(), number};
  };
  const invoices::Line waitedLong = byHand(), waitsOn = byHand();
  const QString sold = sell(day, {{"A", 2, 9}}), deleted = waiting(loss, day), moved = waiting(sale, day);
  const QString rent = *expenses::save({.date = day,
                                        .type = u"费用"_qs,
                                        .amount = 8,
                                        .employee = u"100001"_qs,
                                        .department = u"100001"_qs,
                                        .account = u"现金"_qs},
                                       prompt);
  const auto [loaned, line] = lent();
  const auto gone = insertRow("jxc_goodslist", {{"gl_flag", u"qc"},
                                                {"ghs_name", u"期初结转"},
                                                {"gl_kdrq", u"2021-01-01"},
                                                {"g_sn", u"B"},
                                                {"ck_sn", u"100002"}});
  const QStringList before = behindTheLock();
  lock(locked);

  for (const QString& number : {putAway, issued, waiting(saleReturn, today)})
    EXPECT_EQ(audit(number), AuditOutcome::Audited) << number.toStdString();
  prompt.willSayYes();
  EXPECT_TRUE(partial::closeRest(partial::putaway, rest, prompt));
  EXPECT_TRUE(partner_books::settleDocument(
      customerSide, {.number = sold, .date = today, .amount = 9, .account = u"现金"_qs, .employee = u"100001"_qs},
      prompt));
  prompt.willSayYes();
  EXPECT_TRUE(loan_return::save(*loan_return::open(loaned, 0, prompt), prompt));
  EXPECT_TRUE(invoices::auditOne(customerSide, waitedLong, prompt.willSayYes()));
  EXPECT_TRUE(deleteWaitingDocument(loss, deleted, prompt.willSayYes()));
  EXPECT_TRUE(
      expenses::remove(lookupValue("select id from jxc_yyfy where gl_djh=?", rent).toLongLong(), prompt.willSayYes()));
  EXPECT_FALSE(changeWaitingHead(sale, moved, {.date = openDay}, prompt).isEmpty());

  // What begins, and what is computed anew, begins on the day after.
  addGoods("N", 5);
  EXPECT_TRUE(opening_stock::enter({.goods = u"N"_qs, .warehouse = u"100001"_qs, .quantity = 3, .cost = 5}, prompt));
  EXPECT_EQ(lookupValue("select gl_kdrq from jxc_goodslist where g_sn='N'"), u"2021-05-05");
  EXPECT_TRUE(recomputeLedger(u"2021-01-01"_qs, {}));
  EXPECT_TRUE(syncOutgoingCost(u"2021-01-01"_qs, {}, true));
  EXPECT_TRUE(cash::recomputeAccounts({}, u"2021-01-01"_qs, prompt.willSayYes()));
  EXPECT_EQ(behindTheLock(), before);
  EXPECT_TRUE(exists("select id from jxc_goodslist where id=?", gone));

  // The till does not ask.
  ledgerRow(u"xs"_qs, day, 1, 9, 9);
  const auto findings = proof::prove(accountDb()).findings;
  EXPECT_EQ(std::ranges::count(findings, "locked-day", &proof::Finding::code), 1);

  lock(today);
  EXPECT_FALSE(partial::closeRest(partial::putaway, left, prompt));
  EXPECT_FALSE(invoices::auditOne(customerSide, waitsOn, prompt));
  execSql("update jxc_kcsp set kc_zsl=kc_zsl+1,kc_sl=kc_sl+1 where g_sn='B'");
  const RowSet astray = openSelect("select g_sn,ck_sn from jxc_kcsp where g_sn='B'");
  EXPECT_THROW(syncStock(astray, SyncWay::LedgerFollows), PeriodLocked);
}

TEST_F(PeriodLockTest, OnlyTheAdministratorLocksAndIsToldWhatWaits) {
  waiting(loss, day);
  EXPECT_EQ(prompt.refused(period_locking::lockUpTo(u"2021-05-11"_qs, prompt)), u"锁定日期不能晚于今天！");
  EXPECT_TRUE(period_locking::lockUpTo(locked, prompt.willSayYes()));
  EXPECT_TRUE(prompt.questions.last().contains(u"商品报损单　1 张"_qs)) << prompt.questions.last().toStdString();
  EXPECT_EQ(PeriodLock().day(), locked);
  EXPECT_EQ(lastLog(), u"账目锁定到 2021-05-04");
  EXPECT_TRUE(period_locking::open(prompt.willSayYes()));
  EXPECT_EQ(row("select sd_rq,a_name,sd_time from jxc_zmsd order by id desc"),
            u" admin 2021-05-10 14:30:00 2021-05-04 admin 2021-05-10 14:30:00");
  becomeOperator(u"小王"_qs, u"100002"_qs, u"100009"_qs);
  EXPECT_EQ(prompt.refused(period_locking::lockUpTo(locked, prompt)), u"只有系统管理员才能使用此功能！");
}

}  // namespace jxc::period_lock_test
