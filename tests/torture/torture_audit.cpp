// Works an account set without pause, to be killed at any moment: see kill_test.py beside it.
//   torture_audit FILE prepare N    makes N waiting receipts in an account set of jxcctl
//   torture_audit FILE work SEED [STATION STATIONS]
//       audits and cancels them at random for ever; each commit is told on one line. Of several stations at work each
//       has receipts of its own (every STATIONS-th), which share goods, supplier and cash with those of the others.
#include "core/data_module.h"
#include "core/login.h"
#include "core/prompt.h"
#include "core/statements.h"
#include "purchasing/receipt.h"
#include "stock/cancelling.h"
#include "stock/document.h"

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

[[noreturn]] void work(unsigned seed, int station, int stations, Prompt& prompt) {
  const RowSet documents = openSelect("select j_sn from jxc_jhd order by id");
  const int own = documents.rowCount() / stations;
  std::mt19937 random(seed);
  std::cout << "ready" << std::endl;
  for (;;) {
    const QString number = documents.text(static_cast<int>(random() % own) * stations + station, 0);
    if (lookupNumber("select j_status from jxc_jhd where j_sn=?", number) == 0) {
      const auto outcome = checkDj(families::purchaseReceipt, number, prompt);
      if (outcome != AuditOutcome::Audited) throw std::runtime_error("not audited");
      tell('A', number);
    } else {
      if (!cancelPurchase(number, prompt, CancelMode::Batch)) throw std::runtime_error("not cancelled");
      tell('C', number);
    }
  }
}

int run(int argc, char** argv) {
  if (argc != 4 && argc != 6) {
    throw std::runtime_error("usage: torture_audit FILE prepare N | FILE work SEED [STATION STATIONS]");
  }
  dataModule().installAccountDb(openSqlite(QString::fromUtf8(argv[1])));
  YesPrompt prompt;
  if (!login(QStringLiteral("admin"), QString(), prompt)) throw std::runtime_error("no login");
  const int number = std::atoi(argv[3]);
  if (std::string_view(argv[2]) == "prepare") {
    prepare(number, prompt);
  } else {
    work(static_cast<unsigned>(number), argc == 6 ? std::atoi(argv[4]) : 0, argc == 6 ? std::atoi(argv[5]) : 1, prompt);
  }
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
