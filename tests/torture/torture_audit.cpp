// Works an account set without pause, to be killed at any moment or to meet a second one of itself: see kill_test.py
// and two_stations_test.py beside it.
//   torture_audit FILE prepare N          makes N waiting receipts in an account set of jxcctl, of today's date
//   torture_audit FILE prepare-all N      makes N waiting documents of each of ten families
//   torture_audit FILE prepare-parts N    makes N waiting putaways and issues each, of sources some of which are short
//   torture_audit FILE prepare-loans N    makes N audited loans, which come back or are kept and are taken back again
//   torture_audit FILE prepare-expenses N makes N waiting expenses and incomes of three accounts, some not booked
//   torture_audit FILE prepare-invoices N makes N waiting invoices by hand of a customer and a supplier
//   torture_audit FILE prepare-counts N   makes a waiting count of N goods in each of two warehouses
//   torture_audit FILE work SEED [STATION STATIONS]
//       audits and cancels them at random for ever; each commit is told on one line. Of several stations at work each
//       has documents of its own (every STATIONS-th), which share goods, partners and cash with those of the others.
//   torture_audit FILE share SEED SECONDS
//       the same for a while, over all documents beside other stations that may be faster at any of them
#include "accounts/expenses.h"
#include "accounts/invoices.h"
#include "core/account_place.h"
#include "core/clock.h"
#include "core/data_module.h"
#include "core/login.h"
#include "core/numbers.h"
#include "core/prompt.h"
#include "core/session.h"
#include "core/text.h"
#include "engine/server.h"
#include "harness/counter.h"
#include "harness/waiting_document.h"
#include "purchasing/receipt.h"
#include "sales/loan_return.h"
#include "sales/loan_sale.h"
#include "stock/cancelling.h"
#include "stock/document.h"
#include "stock/loans.h"
#include "stock/partial_rest.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <random>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace jxc::torture_audit {

constexpr int goodsCount = 12;

/// Says yes to everything; a notice means that a command was refused, which has no place here.
class YesPrompt : public Prompt {
 public:
  void notice(const QString& text) override { throw std::runtime_error("refused: " + text.toStdString()); }
  bool ask(const QString&) override { return true; }
  Answer askOrCancel(const QString&) override { return Answer::Yes; }
};

/// The same where another station may take stock away while a question stands, or move goods that were counted: then
/// the command is refused.
class SharingPrompt : public YesPrompt {
 public:
  void notice(const QString& text) override {
    for (const char16_t* each : {u"库存不足", u"盘点商品已发生业务", u"不能重复", u"至少有一种商品做了取消", u"没有待",
                                 u"已有入库信息", u"已有出库信息"})
      if (text.contains(QStringView(each))) return;
    YesPrompt::notice(text);
  }
};

/// The same for documents of all: another station may have audited or cancelled it first.
class LatePrompt : public SharingPrompt {
 public:
  void notice(const QString& text) override {
    // A source that was cancelled has nothing to move any more; a loan is brought back, kept or taken back by others.
    for (const char16_t* each : {u"已被其他电脑保存、审核、取消或删除", u"已取消审核，或不是", u"已经还货结束",
                                 u"还货数量不能超过", u"押金不能大于", u"已经有还货", u"由借货转销售产生"})
      if (text.contains(QStringView(each))) return;
    SharingPrompt::notice(text);
  }
};

using test::addGoods;
using test::goodsCode;
using test::waitingDocument;

void prepare(int count, Prompt& prompt);

/// Documents of all families but counts (which later movement may block) and loan returns (which are not kept).
void prepareAll(int count, Prompt& prompt) {
  using namespace families;
  prepare(count, prompt);
  execSql("insert into jxc_ckxx (ck_sn,ck_name) values ('100002','分店')");
  execSql("update jxc_xtcs set cs_kc=1,cs_kp=1");
  const QString today = clock::today();
  const Field place{"ck_sn", u"100001"}, other{"ck_sn", u"100002"};
  for (int i = 0; i < count; ++i) {
    const QString a = goodsCode(i % goodsCount), b = goodsCode((i + 5) % goodsCount);
    const double q = 1 + i % 4, price = 9 + i % 7;
    waitingDocument(families::sale, today, {{"ls_sfje", 5.0}, {"ls_yf", 1.5}, {"ls_yffs", u"我方付运费"}},
                    {{a, q, price}, {b, q, price}});
    for (const DocumentFamily* back : {&purchaseReturn, &saleReturn})
      waitingDocument(*back, today, {{"th_sfje", -2.0}}, {{a, q, price}});
    waitingDocument(families::transfer, today, {{"ck_in", other.second}}, {{a, q, price}});
    waitingDocument(loss, today, {}, {{a, q, price}});
    waitingDocument(overflow, today, {other}, {{b, q, price}});
    waitingDocument(split, today, {{"g_sn", a}, {"cf_sl", q}, {"cf_cbj", price}}, {{b, 2 * q, 4, {other}}});
    waitingDocument(bundle, today, {other, {"g_sn", a}, {"kb_sl", q}, {"kb_cbj", price}}, {{b, 2 * q, 4, {place}}});
    waitingDocument(loan, today, {}, {{b, q, price}});
  }
}

/// A waiting count of so many goods in each of two warehouses, each of which finds something of everything.
void prepareCounts(int goods) {
  execSql("insert into jxc_ckxx (ck_sn,ck_name) values ('100002','分店')");
  Transaction transaction(accountDb());
  for (int i = 0; i < goods; ++i)
    addGoods(i, 10.0 + i % 20);
  for (const QString& warehouse : {u"100001"_qs, u"100002"_qs}) {
    std::vector<test::Pieces> found;
    for (int i = 0; i < goods; ++i)
      found.push_back({goodsCode(i), 1.0 + i % 5, 10.0 + i % 20});
    waitingDocument(families::stocktake, clock::today(), {{"ck_sn", warehouse}}, found);
  }
  transaction.commit();
}

/// Putaways and issues that share their sources: of three that want four pieces each of a line of ten one comes too
/// late, or all that a return of the rest has left.
void prepareParts(int count) {
  for (int i = 0; i < goodsCount; ++i)
    addGoods(i, 10.0 + i);
  execSql("update jxc_xtcs set cs_sprk=1,cs_spck=1,cs_kc=1,cs_kp=1");
  loadSession();
  constexpr int kParts = 3;
  for (const PartialMovement* m : {&partial::putaway, &partial::issue})
    for (int made = 0; made < count; made += kParts) {
      const QString a = goodsCode(made % goodsCount), b = goodsCode((made + 5) % goodsCount);
      const QString source = waitingDocument(*m->source, clock::today(), {}, {{a, 10, 12}, {b, 10, 9}});
      Transaction transaction(accountDb());
      auditInside(*m->source, source);
      transaction.commit();
      for (int part = 0; part < kParts && made + part < count; ++part)
        test::waitingPart(*m, clock::today(), source, {4, 4});
    }
}

/// Rent and wages of the same few days: the cash lines of each account stand among those of the others.
void prepareExpenses(int count, Prompt& prompt) {
  constexpr std::array accounts{u"现金", u"工行帐号", u"建行帐号", expenses::kNotBooked};
  for (int i = 0; i < count; ++i) {
    expenses::Draft draft = expenses::newDraft(i % 3 == 0 ? expenses::Side::Income : expenses::Side::Expense);
    draft.type = expenses::wordOf(draft.side);
    draft.amount = 10.5 + i;
    draft.employee = draft.department = QStringLiteral("100001");
    draft.account = words(accounts[static_cast<std::size_t>(i) % accounts.size()]);
    if (!expenses::save(draft, prompt)) throw std::runtime_error("not saved");
  }
}

/// Invoices of the same day, black and red: their balances run along those of the others.
void prepareInvoices(int count, Prompt& prompt) {
  execSql("update jxc_xtcs set cs_kp=1");
  for (int i = 0; i < count; ++i) {
    const PartnerSide& side = i % 2 == 0 ? customerSide : supplierSide;
    const QString partner = lookupValue(compose("select top 1 {} from {} order by id", {side.sn, side.table}));
    const double yuan = (i % 3 == 0 ? -1 : 1) * (10.5 + i);
    if (!invoices::saveInvoice(
            side, {.partner = partner, .date = clock::today(), .amount = yuan, .employee = QStringLiteral("100001")},
            prompt))
      throw std::runtime_error("not saved");
  }
}

/// Of an invoice by hand; null: the number is another document's.
const PartnerSide* invoicedSide(const QString& number) {
  for (const PartnerSide* side : {&customerSide, &supplierSide})
    if (number.startsWith(invoices::handPrefix(*side))) return side;
  return nullptr;
}

constexpr char16_t kRoundTrip[] = u"往返";

/// Loans that are out; the note tells them from those that are audited and cancelled like other documents.
void prepareLoans(int count) {
  execSql("update jxc_xtcs set cs_kc=1,cs_kp=1");
  loadSession();
  for (int i = 0; i < goodsCount; ++i)
    addGoods(i, 10.0 + i);
  Transaction transaction(accountDb());
  for (int i = 0; i < count; ++i) {
    const test::Pieces lent{goodsCode(i % goodsCount), 2, 10, {{"jh_yj", 50.0}, {"jh_zj", 3.0}, {"jh_kmmc", u"现金"}}};
    auditInside(families::loan, waitingDocument(families::loan, clock::today(), {{"jh_note", kRoundTrip}}, {lent}));
  }
  transaction.commit();
}

bool isRoundTrip(const QString& number) {
  return number.startsWith(u"JH") &&
         lookupValue("select jh_note from jxc_khjh where gl_djh=?", number) == QStringView(kRoundTrip);
}

/// All documents that were prepared, audited or not.
std::vector<QString> documents() {
  std::vector<QString> numbers;
  for (const DocumentFamily& family : documentFamilies()) {
    if (family.sharesTables) continue;
    const RowSet rows = openSelect(compose("select {} from {} order by id", {family.number, family.head}));
    const bool closes = &family == partial::putaway.back || &family == partial::issue.back;
    for (int row = 0; row < rows.rowCount(); ++row)
      // Returns that close a rest come and go: counted, stations would have each other's documents from time to time.
      // So do returns of loans and the sales of what was kept.
      if (const QString number = rows.text(row, 0); !number.startsWith(u"HH") &&
                                                    loans::conversionOf(number).isEmpty() &&
                                                    (!closes || !partial::closesRest(family, number)))
        numbers.push_back(number);
  }
  for (const char* lines : {"select gl_djh from jxc_yyfy where gl_djh like 'FY%' or gl_djh like 'SR%' order by id",
                            "select gl_djh from jxc_fpdjb where gl_djh like 'XP%' or gl_djh like 'CP%' order by id"})
    for (const RowSet rows = openSelect(lines); const Row line : rows)
      numbers.push_back(line.text("gl_djh"));
  return numbers;
}

/// Receipts that share goods and supplier, so that each audit touches the running figures of the others.
void prepare(int count, Prompt& prompt) {
  const bool again = !lookupValue("select g_sn from jxc_goods where g_sn=?", goodsCode(0)).isEmpty();
  for (int i = 0; i < goodsCount && !again; ++i)
    addGoods(i, 10.0 + i);
  for (int i = 0; i < count; ++i) {
    receipt::ReceiptDraft draft = receipt::newReceipt();
    for (int line = 0; line < 5; ++line) {
      receipt::LineDraft entry = receipt::newLine(goodsCode((i + line * 5) % goodsCount));
      entry.amounts.setQuantity(1 + (i + line) % 7);
      entry.amounts.setPrice(8.5 + line + 0.25 * (i % 9));
      if (!receipt::addLine(receipt::Lines::Draft, draft.number, draft.date, entry))
        throw std::runtime_error("no line");
    }
    draft.payable = receipt::payable(draft.number);
    draft.paid = 20;
    draft.settlement = receipt::Settlement::RestOnAccount;
    if (!receipt::saveReceipt(draft, prompt)) throw std::runtime_error("not saved");
  }
}

void tell(char what, const QString& number) {
  std::cout << what << ' ' << number.toStdString() << std::endl;
}

/// A loan comes back, or is kept; or that is taken back, of what was kept the sale first and the return at the next
/// step.
void goRound(const QString& loan, Prompt& prompt) {
  const std::int64_t line = firstIdOf("jxc_khjhsp", "gl_djh", loan);
  const QString back = lookupValue("select top 1 gl_djh from jxc_khjhsp where id2=? and id<>? order by id", line, line);
  if (!back.isEmpty()) {
    const bool isSold = loans::soldBy(back).has_value();
    if (cancelDocument(isSold ? loans::saleOf(back) : back, prompt, CancelMode::Batch) && !isSold) tell('C', loan);
  } else if (line % 2 == 0) {
    const auto opened = loan_return::open(loan, 0, prompt);
    if (opened && loan_return::save(*opened, prompt)) tell('A', loan);
  } else {
    const auto kept = loan_sale::open(line, prompt);
    if (kept && loan_sale::save(*kept, prompt)) tell('A', loan);
  }
}

/// One audit or one cancel of a document picked at random. Alone, the command must come through; beside others, it may
/// find that another station was faster.
void step(const QString& number, bool alone, Prompt& prompt) {
  if (isRoundTrip(number)) return goRound(number, prompt);
  if (expenses::isOwn(number)) {
    const bool audits = lookupValue("select fy_chk from jxc_yyfy where gl_djh=?", number) == u"0";
    const bool done =
        audits ? expenses::checkDj(number, prompt) : expenses::cancel(firstIdOf("jxc_yyfy", "gl_djh", number), prompt);
    if (done)
      tell(audits ? 'A' : 'C', number);
    else if (alone)
      throw std::runtime_error("not audited or cancelled");
    return;
  }
  if (const PartnerSide* const side = invoicedSide(number)) {
    const invoices::Line line{firstIdOf("jxc_fpdjb", "gl_djh", number), number};
    const bool audits = openSelect("select fp_check from jxc_fpdjb where id=?", line.id).number(0, 0) == 0;
    if (audits ? invoices::checkDj(*side, line.id) : invoices::exclude(*side, line, prompt))
      tell(audits ? 'A' : 'C', number);
    return;
  }
  const DocumentFamily& family = documentFamily(number);
  // A source whose parts are moved: its rest never comes, or is open again.
  if (const PartialMovement* m = partial::behind(family); m && m->isInUse()) {
    const QString back = partial::restReturnOf(*m, number);
    if (back.isEmpty()) {
      if (partial::closeRest(*m, number, prompt)) tell('A', number);
    } else if (cancelDocument(back, prompt, CancelMode::Batch)) {
      tell('C', number);  // not that of the return: it goes, and the next one of any station gets its number
    }
    return;
  }
  if (lookupNumber(compose("select {} from {} where {}=?", {family.status, family.head, family.number}), number) == 0) {
    if (checkDj(family, number, prompt) == AuditOutcome::Audited)
      tell('A', number);
    else if (alone)
      throw std::runtime_error("not audited");
  } else {
    if (cancelDocument(number, prompt, CancelMode::Batch))
      tell('C', number);
    else if (alone)
      throw std::runtime_error("not cancelled");
  }
}

[[noreturn]] void work(unsigned seed, int station, int stations, Prompt& prompt) {
  const std::vector<QString> all = documents();
  const std::size_t own = all.size() / static_cast<std::size_t>(stations);
  // With sales among them, another station may take the stock away that a question was about.
  const bool alone = std::ranges::all_of(all, [](const QString& each) { return each.startsWith(u"CJ"); });
  // What a station has put together for a return is its operator's.
  session().a_name = QStringLiteral("op%1").arg(station);
  std::mt19937 random(seed);
  std::cout << "ready" << std::endl;
  for (;;)
    try {
      step(all[random() % own * static_cast<std::size_t>(stations) + static_cast<std::size_t>(station)], alone, prompt);
    } catch (const DbError& failure) {
      // On a machine that is out of breath the other one holds the place longer than anybody waits: nothing was done.
      if (failure.kind() != DbError::Kind::Busy) throw;
    }
}

void share(unsigned seed, int seconds, Prompt& prompt) {
  using Clock = std::chrono::steady_clock;
  const std::vector<QString> all = documents();
  std::mt19937 random(seed);
  std::cout << "ready" << std::endl;
  const auto end = Clock::now() + std::chrono::seconds(seconds);
  while (Clock::now() < end)
    step(all[random() % all.size()], false, prompt);
}

/// A command that the connection broke is done again or not, as the operator likes; what it said is told, and in the
/// end how long each one took, in microseconds.
void post(unsigned seed, int seconds, int station) {
  using Clock = std::chrono::steady_clock;
  std::vector<std::int64_t> took;
  session().a_name = QStringLiteral("op%1").arg(station);
  SharingPrompt sharing;
  LatePrompt late;
  test::Counter counter(seed + static_cast<unsigned>(station), {sharing, late, tell});
  std::cout << "ready" << std::endl;
  const auto end = Clock::now() + std::chrono::seconds(seconds);
  while (Clock::now() < end) {
    const auto begin = Clock::now();
    try {
      counter.step();
    } catch (const ConnectionLost& failure) {
      tell(failure.isUnknown() ? 'U' : 'L', QStringLiteral("-"));
    }
    took.push_back(std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - begin).count());
  }
  for (const std::int64_t each : took)
    std::cout << "T " << each << '\n';
}

int run(int argc, char** argv) {
  const std::string_view what = argc > 3 ? argv[2] : "";
  const bool known = (what.starts_with("prepare") && argc == 4) || (what == "work" && (argc == 4 || argc == 6)) ||
                     (what == "share" && argc == 5) || (what == "post" && (argc == 4 || argc == 6));
  if (!known)
    throw std::runtime_error(
        "usage: torture_audit FILE prepare N | FILE prepare-all N | FILE prepare-parts N | FILE prepare-loans N | FILE "
        "prepare-expenses N | FILE prepare-invoices N | FILE prepare-counts N | "
        "FILE work SEED [STATION "
        "STATIONS] | FILE share "
        "SEED SECONDS | FILE post 0 | FILE post SEED SECONDS STATION");
  dataModule().installAccountDb(openAccountPlace(QString::fromUtf8(argv[1])));
  YesPrompt yes;
  LatePrompt sharing;
  if (!login(QStringLiteral("admin"), QString(), yes)) throw std::runtime_error("no login");
  const int number = std::atoi(argv[3]);
  const auto seed = static_cast<unsigned>(number);
  if (what == "prepare")
    prepare(number, yes);
  else if (what == "prepare-all")
    prepareAll(number, yes);
  else if (what == "prepare-parts")
    prepareParts(number);
  else if (what == "prepare-loans")
    prepareLoans(number);
  else if (what == "prepare-expenses")
    prepareExpenses(number, yes);
  else if (what == "prepare-invoices")
    prepareInvoices(number, yes);
  else if (what == "prepare-counts")
    prepareCounts(number);
  else if (what == "post" && argc == 4)
    test::openShop(yes);
  else if (what == "post")
    post(seed, std::atoi(argv[4]), std::atoi(argv[5]));
  else if (what == "share")
    share(seed, std::atoi(argv[4]), sharing);
  else
    work(seed, argc == 6 ? std::atoi(argv[4]) : 0, argc == 6 ? std::atoi(argv[5]) : 1, sharing);
  return 0;
}

}  // namespace jxc::torture_audit

int main(int argc, char** argv) {
  try {
    return jxc::torture_audit::run(argc, argv);
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << std::endl;
    return 1;
  }
}
