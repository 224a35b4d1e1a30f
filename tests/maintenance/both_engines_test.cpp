// One life of a shop on a server and on a file: every table ends the same, cell by cell. JXC_WALK=2000 lets it live so
// many commands instead of the few that the suite takes; JXC_SEED another life.
#include "core/data_module.h"
#include "harness/whole_books.h"
#include "maintenance/prove.h"
#include "maintenance/shop_walk.h"
#include "server/test_engine.h"

#include <cstdlib>

namespace jxc::both_engines_test {

using namespace families;
using test::Books;

int asked(const char* name, int usual) {
  const char* const words = std::getenv(name);
  return words ? std::atoi(words) : usual;
}

class BothEngines : public test::ShopWalk {
 protected:
  /// What happens to documents before they are audited, between the commands of the shop.
  void step() override {
    switch (upTo(15)) {
      case 0: {  // begun, given another date, and thrown away or saved
        const QString date = day();
        receipt::ReceiptDraft draft =
            draftReceipt(date, {{anyGoods(), 1.0 + upTo(4), price()}, {anyGoods(), 2, price()}});
        draft.date = day();
        draft.number = redateDraft(purchaseReceipt, draft.number, draft.date);
        ++done["redated"];
        if (upTo(2) == 0) {
          discardDraft(purchaseReceipt, draft.number);
          ++done["discarded"];
        } else {
          save(draft);
        }
        break;
      }
      case 1: {  // a document that waits gets another date or partner
        const DocumentFamily& family = upTo(1) ? sale : purchaseReceipt;
        const QString number = anyWaiting(family);
        if (number.isEmpty()) return;
        HeadEdit edit;
        edit.date = day();
        if (upTo(1)) edit.partner = family.prefix == u"XS" ? customer() : QStringLiteral("100001");
        edit.freight = upTo(3);
        edit.wePayFreight = true;
        YesPrompt yes;
        done["changed"] += !changeWaitingHead(family, number, edit, yes).isEmpty();
        break;
      }
      case 2: {
        const DocumentFamily& family = upTo(1) ? sale : purchaseReceipt;
        const QString number = anyWaiting(family);
        if (number.isEmpty()) return;
        YesPrompt yes;
        if (upTo(1)) {
          done["deleted"] += deleteWaitingDocument(family, number, yes);
        } else {
          const QString line =
              lookupValue(compose("select max(id) from {} where {}=?", {family.lines, family.number}), number);
          deleteWaitingLine(family, number, line.toLongLong(), yes);
          ++done["line deleted"];
        }
        break;
      }
      case 3: {
        const DocumentFamily& family = upTo(1) ? sale : purchaseReceipt;
        if (const QString number = anyWaiting(family); !number.isEmpty())
          done["audited later"] += auditAgreeing(number) == AuditOutcome::Audited;
        break;
      }
      default:
        ShopWalk::step();
    }
  }

  Books booksAfterLife() {
    done.clear();
    live(static_cast<unsigned>(asked("JXC_SEED", 1)), asked("JXC_WALK", 200));
    return test::readBooks(test::Reading::ToTheLetter);
  }

  std::map<std::string, int> done;
};

TEST_F(BothEngines, TheSameLifeEndsInTheSameTables) {
  if (!test::onServer()) GTEST_SKIP() << "runs on a server, among pg.*";
  const Books onServer = booksAfterLife();
  const std::map<std::string, int> doneThere = done;
  const proof::Proof proof = proof::prove(accountDb());
  EXPECT_TRUE(proof.isClean()) << proof.summary().toStdString();

  dataModule().installAccountDb(test::openFreshFile());
  settle();
  const Books onFile = booksAfterLife();
  EXPECT_EQ(done, doneThere);
  for (const char* command : {"redated", "discarded", "changed", "deleted", "line deleted", "audited later"})
    EXPECT_GT(done[command], 0) << command;
  EXPECT_GT(onFile.size(), 100U);
  for (const auto& [row, text] : onFile) {
    const auto there = onServer.find(row);
    EXPECT_EQ(text, there == onServer.end() ? QStringLiteral("no such row") : there->second) << row.toStdString();
    if (HasFailure()) break;  // what follows from it would fill pages
  }
  const std::set<QString> differences = test::differences(onFile, onServer);
  EXPECT_EQ(QStringList(differences.begin(), differences.end()), QStringList());
}

}  // namespace jxc::both_engines_test
