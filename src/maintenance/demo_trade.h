// 演示账套的业务: the documents that the demonstration shop makes, each by the rule that a screen would call.
#pragma once

#include "accounts/expense_types.h"
#include "core/prompt.h"
#include "core/statements.h"
#include "maintenance/demo_goods.h"
#include "maintenance/demo_names.h"
#include "masterdata/partner_side.h"
#include "stock/conversion.h"
#include "stock/document_family.h"
#include "stock/partial_rules.h"
#include "stock/trading_rules.h"

#include <QDate>
#include <QString>

#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <initializer_list>
#include <map>
#include <vector>

namespace jxc::demo {

/// Figures of a draft must not carry the noise of a product.
double wholeFen(double amount);

struct Operator {
  QString name, key, role;  // a_name, a_sn, r_sn
};

/// Who and what the shop is, by the keys of the account set.
struct Staff {
  Operator administrator, manager, buyer, seller;
  std::array<QString, kWarehouses> warehouses;
  std::array<QString, kWarehouses> departments;  // de_sn of each shop
  std::vector<QString> employees;                // u_sn
  std::vector<QString> employeeNames;            // in step
  std::vector<QString> people;                   // kh_sn of customers by name
  std::vector<QString> institutions;             // in step with kInstitutions
  std::vector<QString> suppliers;                // in step with kSuppliers
  std::map<QString, QString> contracts;          // that a partner's documents have, by `ghs` or `kh` and partner
};

/// What makes a command of the shop impossible is a fault of the demonstration: a notice is no answer to pass over.
class ShopPrompt : public Prompt {
 public:
  void notice(const QString& text) override;
  bool ask(const QString&) override { return true; }
  Answer askOrCancel(const QString&) override { return Answer::Yes; }
};

/// Makes one document at a time. Documents wait until `auditDay`, which the manager does in the evening.
class Trade {
 public:
  Trade(Catalogue catalogue, Staff staff, Random& random);

  /// The operator at work from now on.
  void workAs(const Operator& who);
  void beginDay(const QDate& day) {
    day_ = day;
    if (!opened_.isValid()) opened_ = day;
  }

  // Each makes one document of this day, or none when there is nothing to do it with. True: it did.
  bool sell(int season);
  bool sellToInstitution();
  bool takeBack();
  bool sendBackToSupplier();
  bool receive(int daysBack);
  bool transfer();
  bool writeOffDamage();
  bool bookSurplus();
  /// Sets are bundled of what also sells alone, and split again when too many of them lie there.
  bool bundleSets();
  bool splitSets();
  /// The sundries of the first warehouse are counted, with the day's documents audited, and the count is audited.
  bool countSundries();
  /// The first goods of the shop: every article below its mark is ordered at once, and half of it brought over.
  int stockUp();

  // Money.
  bool collectOnDelivery();  // the rest of a sale whose glasses are fetched today
  bool collectFromInstitution();
  bool paySupplier();
  /// What is owed beside goods: a service that an institution is billed for, or something a supplier bills.
  void bill(const PartnerSide& side);
  bool bankTakings();
  bool payOwner();  // what the bank account holds beyond what the shop needs
  void payOut(const QString& account, double yuan, Word note, Word employee);
  /// Rent, wages, interest: an expense or income of one of the shops.
  void book(expenses::Side side, Word type, Word account, double yuan, Word note, std::size_t employee = 0,
            std::size_t shop = 0);

  /// The manager audits what waits, but for the last `leave` documents of each family. How many were audited.
  int auditDay(int leave);
  /// An audited sale is cancelled, looked at and audited again.
  bool correctSale();
  /// From now on what is sold and bought stands in the invoices too …
  void keepInvoices();
  /// … which are registered, excluded and entered by hand, or not yet.
  void writeInvoices();
  /// Lines that were begun and not saved.
  void leaveDrafts();
  /// From now on goods are put away and issued by documents of their own: some are on the way, some came in part, some
  /// of the documents wait, and some of what is open was cancelled.
  void followInParts();
  /// Goods out on loan, some back, one kept, one that waits.
  void lend();

  int documents() const { return documents_; }

 private:
  struct Pick {
    int article = 0, quantity = 0;
    double price = 0, discount = 1;
    bool gift = false;
  };
  struct Sold {
    QString number, customer;
    int warehouse = 0;
    std::vector<Pick> lines;
  };
  struct Fetch {
    QDate day;
    QString number;
    double rest = 0;
  };

  Article& article(int index) { return catalogue_.articles[static_cast<std::size_t>(index)]; }
  QString today() const { return day_.toString(Qt::ISODate); }
  QString account();
  int taxOf(const QString& supplier) const;
  const QString& salesperson(int warehouse);
  const QString& customerByName();
  int inStock(const Weighted& choice, int warehouse, int quantity);
  void addPick(std::vector<Pick>& lines, int index, int quantity, int discount);
  std::vector<Pick> glasses(int warehouse);
  std::vector<Pick> basket(int warehouse, int season);
  bool saveSale(int warehouse, const QString& customer, const std::vector<Pick>& lines, bool institution);
  void addLines(const TradingRules& rules, TradingDraft& draft, const std::vector<Pick>& lines);
  QString save(const TradingRules& rules, TradingDraft draft);
  bool receiveFrom(int supplier, int warehouse, const std::vector<int>& wanted, int daysBack);
  using LineWriter = std::function<void(std::int64_t id, const Pick& pick, double cost)>;
  QString saveWithin(const DocumentFamily& family, const std::vector<Pick>& lines, const LineWriter& writeLine,
                     std::initializer_list<Field> head);
  void takeAway(const std::vector<Pick>& lines);
  bool saveTransfer(const std::vector<Pick>& lines);
  ConversionDraft beginConversion(const ConversionRules& rules, int sets, Word note);
  void addParts(const ConversionRules& rules, const ConversionDraft& draft, int each);
  QString saveConversion(const ConversionRules& rules, const ConversionDraft& draft);
  void wantMore(int index, int warehouse);
  void arrive(const QString& number);
  void auditNewer(const DocumentFamily& family, double than);
  void moveParts(const partial::PartialRules& rules);
  QString lendOne(const QString& customer, int daysBack, const std::vector<QString>& goods);
  int auditFamily(const DocumentFamily& family, int leave);
  int auditMoney(int leave);

  Catalogue catalogue_;
  const Staff staff_;
  Random& random_;
  ShopPrompt prompt_;
  QDate day_, opened_;
  int documents_ = 0;
  /// Articles to order, by supplier and warehouse, in the order in which they ran low.
  std::map<std::pair<int, int>, std::vector<int>> wanted_;
  std::vector<int> wantedInBranch_;
  std::deque<Sold> sold_;       // the last few hundred
  std::vector<Fetch> fetches_;  // deposits whose rest is open
  /// Goods that come in with the audit of a document: (article, warehouse, pieces).
  std::map<QString, std::vector<std::array<int, 3>>> arrivals_;
};

}  // namespace jxc::demo
