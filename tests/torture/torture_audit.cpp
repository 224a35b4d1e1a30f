// Works an account set without pause, to be killed at any moment or to meet a second one of itself: see kill_test.py
// and two_stations_test.py beside it.
//   torture_audit FILE prepare N          makes N waiting receipts in an account set of jxcctl
//   torture_audit FILE work SEED [STATION STATIONS]
//       audits and cancels them at random for ever; each commit is told on one line. Of several stations at work each
//       has receipts of its own (every STATIONS-th), which share goods, supplier and cash with those of the others.
//   torture_audit FILE share SEED SECONDS
//       the same for a while, over all receipts beside other stations that may be faster at any of them
#include "core/data_module.h"
#include "core/login.h"
#include "core/prompt.h"
#include "core/statements.h"
#include "purchasing/receipt.h"
#include "stock/cancelling.h"
#include "stock/document.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <random>
#include <stdexcept>
#include <string_view>

namespace jxc::torture_audit {

constexpr int goodsCount = 12;

/// Says yes to everything; a notice means that a command was refused, which has no place here.
class YesPrompt : public Prompt {
 public:
  void notice(const QString& text) override { throw std::runtime_error("refused: " + text.toStdString()); }
  bool ask(const QString&) override { return true; }
  Answer askOrCancel(const QString&) override { return Answer::Yes; }
};

/// The same where another station may take stock away while a question stands: then the command is refused.
class SharingPrompt : public YesPrompt {
 public:
  void notice(const QString& text) override {
    if (!text.contains(QStringLiteral("库存不足"))) YesPrompt::notice(text);
  }
};

QString goodsCode(int index) {
  return QString::number(1000001 + index);
}

/// Receipts that share goods and supplier, so that each audit touches the running figures of the others.
void prepare(int count, Prompt& prompt) {
  for (int i = 0; i < goodsCount; ++i) {
    execSql("insert into jxc_goods (g_sn,g_name,g_jj,g_kc,g_pjjj,g_scjj,g_cgpl,g_xspl,g_jy) values (?,?,?,0,0,0,0,0,0)",
            goodsCode(i), QStringLiteral("镜架%1").arg(i), 10.0 + i);
  }
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

/// One audit or one cancel of a document picked at random. Alone, the command must come through; beside others, it may
/// find that another station was faster.
void step(const QString& number, bool alone, Prompt& prompt) {
  if (lookupNumber("select j_status from jxc_jhd where j_sn=?", number) == 0) {
    if (checkDj(families::purchaseReceipt, number, prompt) == AuditOutcome::Audited)
      tell('A', number);
    else if (alone)
      throw std::runtime_error("not audited");
  } else {
    if (cancelPurchase(number, prompt, CancelMode::Batch))
      tell('C', number);
    else if (alone)
      throw std::runtime_error("not cancelled");
  }
}

[[noreturn]] void work(unsigned seed, int station, int stations, Prompt& prompt) {
  const RowSet documents = openSelect("select j_sn from jxc_jhd order by id");
  const int own = documents.rowCount() / stations;
  std::mt19937 random(seed);
  std::cout << "ready" << std::endl;
  for (;;)
    step(documents.text(static_cast<int>(random() % own) * stations + station, 0), true, prompt);
}

void share(unsigned seed, int seconds, Prompt& prompt) {
  using Clock = std::chrono::steady_clock;
  const RowSet documents = openSelect("select j_sn from jxc_jhd order by id");
  std::mt19937 random(seed);
  std::cout << "ready" << std::endl;
  const auto end = Clock::now() + std::chrono::seconds(seconds);
  while (Clock::now() < end)
    step(documents.text(static_cast<int>(random() % documents.rowCount()), 0), false, prompt);
}

int run(int argc, char** argv) {
  const std::string_view what = argc > 3 ? argv[2] : "";
  const bool known = (what == "prepare" && argc == 4) || (what == "work" && (argc == 4 || argc == 6)) ||
                     (what == "share" && argc == 5);
  if (!known)
    throw std::runtime_error(
        "usage: torture_audit FILE prepare N | FILE work SEED [STATION STATIONS] | FILE share SEED SECONDS");
  dataModule().installAccountDb(openSqlite(QString::fromUtf8(argv[1])));
  YesPrompt yes;
  SharingPrompt sharing;
  if (!login(QStringLiteral("admin"), QString(), yes)) throw std::runtime_error("no login");
  const int number = std::atoi(argv[3]);
  const auto seed = static_cast<unsigned>(number);
  if (what == "prepare")
    prepare(number, yes);
  else if (what == "share")
    share(seed, std::atoi(argv[4]), sharing);
  else
    work(seed, argc == 6 ? std::atoi(argv[4]) : 0, argc == 6 ? std::atoi(argv[5]) : 1, yes);
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
