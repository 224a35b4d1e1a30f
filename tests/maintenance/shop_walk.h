// 随机店铺: a shop of two warehouses that lives a random life by the real commands, for tests that look at its books.
#pragma once

#include "accounts/cash_lines.h"
#include "accounts/partner_documents.h"
#include "masterdata/partner_side.h"
#include "sales/loan_return.h"
#include "sales/loan_sale.h"
#include "stock/partial_rest.h"
#include "stock/shop.h"

#include <QDate>

#include <cmath>
#include <random>

namespace jxc::test {

class ShopWalk : public ShopTest {
 protected:
  ShopWalk() { settle(); }

  /// The shop before its first day, in an account set without goods.
  void settle() {
    for (const QString& goods : goods_)
      addGoods(goods, 5);
    execSql("insert into jxc_ckxx (ck_sn,ck_name) values ('100002','分店')");
    setParameter("cs_kc", 1);
    setParameter("cs_kp", 1);
  }

  void live(unsigned seed, int steps, const std::function<void()>& afterEach = {}) {
    random_.seed(seed);
    for (int i = 0; i < steps && !HasFatalFailure(); ++i) {
      step();
      if (afterEach) afterEach();
    }
  }

  QString auditedInside(const DocumentFamily& family, const QString& date, const std::vector<Field>& head,
                        const std::vector<Line>& lines) {
    const QString number = waitingDocument(family, date, head, lines);
    EXPECT_EQ(auditAgreeing(number), AuditOutcome::Audited);
    return number;
  }

  /// The customer pays 8, and 1 is let off.
  QString auditedPayment() {
    const QString number = *partner_books::saveDocument(customerSide, partner_books::Kind::Payment,
                                                        {.partner = customer(),
                                                         .date = u"2021-05-03"_qs,
                                                         .amount = 8,
                                                         .rounding = 1,
                                                         .account = u"现金"_qs,
                                                         .employee = u"100001"_qs},
                                                        prompt);
    EXPECT_TRUE(partner_books::auditDocument(customerSide, partner_books::Kind::Payment, number));
    return number;
  }

  /// Audit and cancel by an operator who agrees to short stock.
  AuditOutcome auditAgreeing(const QString& number) {
    YesPrompt yes;
    return checkDj(documentFamily(number), number, yes);
  }
  bool cancel(const QString& number) {
    YesPrompt yes;
    return cancelDocument(number, yes, CancelMode::Batch);
  }

  class YesPrompt : public Prompt {
   public:
    void notice(const QString& text) override { notices << text; }
    bool ask(const QString& text) override {
      questions << text;
      return true;
    }
    Answer askOrCancel(const QString&) override { return Answer::Yes; }
    QStringList notices, questions;
  };

  int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(random_); }
  const QString& anyGoods() { return goods_[static_cast<std::size_t>(upTo(static_cast<int>(goods_.size()) - 1))]; }
  QString day() {
    const QDate any = today_.addDays(upTo(5) == 0 ? -upTo(60) / 2 : -upTo(3));
    return std::max(any, firstDay_).toString(Qt::ISODate);
  }
  QString today() const { return today_.toString(Qt::ISODate); }
  /// From now on it is this day, and nothing is written or taken up again up to the day before the first one.
  void goOn(const QDate& now, const QDate& firstDay) {
    today_ = now;
    firstDay_ = firstDay;
    setClock(today());
  }
  double price() { return (100 + upTo(900)) / 100.0; }
  QString warehouse() { return upTo(2) == 0 ? QStringLiteral("100002") : mainWarehouse; }
  double stockOf(const QString& goods, const QString& place) {
    return lookupNumber("select kc_sl from jxc_kcsp where g_sn=? and ck_sn=?", goods, place);
  }

  /// Goods are put away and issued by documents of their own from now on, or not.
  void followInParts(bool on) {
    setParameter("cs_sprk", on);
    setParameter("cs_spck", on);
    inParts_ = on;
  }

  /// One command, of all that the shop does.
  virtual void step() {
    using namespace families;
    if (inParts_ && upTo(2) == 0) return stepInParts();
    const QString a = anyGoods(), b = a == goods_.front() ? goods_.back() : goods_.front();
    const double quantity = (100 + upTo(500)) / 100.0;
    switch (upTo(15)) {
      case 0:
      case 1:
        receive(day(), {{a, quantity + 4, price()}, {b, quantity, price()}});
        break;
      case 2:
      case 3:
        if (const QString number = waitingSale(day(), {{a, quantity, price()}, {b, 1, price()}}, upTo(20)); upTo(4))
          auditAgreeing(number);
        break;
      case 4:
        auditAgreeing(waitingReturn(upTo(1) ? purchaseReturn : saleReturn, day(), {{a, 1, price()}}, upTo(9)));
        break;
      case 5: {
        const QString from = warehouse(), to = from == mainWarehouse ? QStringLiteral("100002") : mainWarehouse;
        auditedInside(transfer, day(), {{"ck_out", from}, {"ck_in", to}}, {{a, quantity, 5}});
        break;
      }
      case 6:
        count(a, b);
        break;
      case 7:
        auditedInside(upTo(1) ? loss : overflow, day(), {{"ck_sn", warehouse()}}, {{a, 1, 5}});
        break;
      case 8:
        auditedInside(split, day(), {{"ck_sn", mainWarehouse}, {"g_sn", a}, {"cf_sl", 1.0}, {"cf_cbj", 5.0}},
                      {{b, 2, 3, {{"ck_sn", warehouse()}}}});
        break;
      case 9:
        auditedInside(bundle, day(), {{"ck_sn", warehouse()}, {"g_sn", a}, {"kb_sl", 1.0}, {"kb_cbj", 8.0}},
                      {{b, 2, 4, {{"ck_sn", mainWarehouse}}}});
        break;
      case 10:
        cancelAny();
        break;
      case 11:
        payAny();
        break;
      case 12:
        auditedInside(loan, day(), {{"ck_sn", warehouse()}},
                      {{a, quantity, 5, {{"jh_yj", 20.0 * upTo(3)}, {"jh_zj", price() / 10}, {"jh_kmmc", u"现金"}}}});
        break;
      case 13:
        giveBackAny();
        break;
      case 14:
        moveMoney();
        break;
      default:
        auditAny();
    }
  }
  /// Some of what is open of a source moves, a part is audited or cancelled, a rest never comes.
  void stepInParts() {
    const PartialMovement& m = upTo(1) ? partial::putaway : partial::issue;
    const DocumentFamily &f = *m.family, &s = *m.source;
    const RowSet sources = openSelect(partial::waitingSources(m, {}));
    const QString source = sources.isEmpty() ? QString() : sources.text(upTo(sources.rowCount() - 1), 1);
    YesPrompt yes;
    switch (upTo(6)) {
      case 0:
        if (const QString number = anyOf(f, 1); !number.isEmpty()) cancel(number);
        return;
      case 1:
        if (const QString number = anyOf(f, 0); !number.isEmpty()) auditAgreeing(number);
        return;
      case 2:
        if (!source.isEmpty()) partial::closeRest(m, source, yes);
        return;
      case 3:
        if (const QString number = anyOf(*m.back, 1); !number.isEmpty()) cancel(number);
        return;
      default:
        break;
    }
    if (source.isEmpty()) return;
    std::vector<double> pieces;
    double sum = 0;
    for (const Row line : openSelect("select " + partial::openPieces(m, "b") + " as opensl" +
                                         compose(" from {} b where b.{}=? order by b.id", {s.lines, s.number}),
                                     source)) {
      const double open = std::max(0.0, line.number("opensl"));
      pieces.push_back(upTo(2) == 0 ? open : std::round(open * upTo(10)) / 10);
      sum += pieces.back();
    }
    if (sum == 0) return;
    const QString number = waitingPart(m, today(), source, pieces);
    if (upTo(3)) auditAgreeing(number);
  }
  /// Two goods are counted; now and then one of them moves before the audit, and the operator says when it was.
  void count(const QString& a, const QString& b) {
    const QString place = warehouse();
    const auto found = [&](const QString& goods) { return std::max(0.0, stockOf(goods, place) + upTo(4) - 2); };
    const QString number =
        waitingDocument(families::stocktake, today(), {{"ck_sn", place}}, {{a, found(a), 5}, {b, found(b), 4}});
    if (upTo(1)) receive(day(), {{upTo(1) ? a : b, 2, price()}});
    if (upTo(1)) auditAgreeing(waitingSale(day(), {{upTo(1) ? a : b, 1, price()}}, 0));
    class Answering : public YesPrompt {
     public:
      explicit Answering(bool late) : late_(late) {}
      Answer askOrCancel(const QString&) override { return late_ ? Answer::Yes : Answer::No; }

     private:
      bool late_;
    } answering(upTo(1) == 0);
    EXPECT_EQ(checkDj(families::stocktake, number, answering), AuditOutcome::Audited);
  }
  /// What a customer had borrowed comes back, all or some of it, or he keeps the rest.
  void giveBackAny() {
    const RowSet lent = openSelect(partial::openLines(partial::lending, {}));
    if (lent.isEmpty()) return;
    const Row any = lent[upTo(lent.rowCount() - 1)];
    YesPrompt yes;
    if (upTo(2) == 0) {
      auto kept = loan_sale::open(any.integer("id"), yes);
      ASSERT_TRUE(kept);
      kept->takeRent(upTo(1) == 0);
      if (upTo(1)) kept->settlement = Settlement::RestOnAccount;
      EXPECT_TRUE(loan_sale::save(*kept, yes)) << yes.notices.join(u'|').toStdString();
      return;
    }
    const auto back = loan_return::open(any.text("djh"), any.integer("id"), yes);
    ASSERT_TRUE(back);
    auto line = loan_return::line(openSelect(loan_return::lines()).front().integer("id"));
    ASSERT_TRUE(line);
    if (upTo(1)) line->setQuantity(std::max(0.01, std::round(line->open * upTo(10) * 10) / 100));
    if (upTo(1)) line->refund = std::round(line->refund * upTo(10) * 10) / 100;
    EXPECT_TRUE(loan_return::changeLine(*line, yes)) << yes.notices.join(u'|').toStdString();
    EXPECT_TRUE(loan_return::save(*back, yes)) << yes.notices.join(u'|').toStdString();
  }
  QString anyWaiting(const DocumentFamily& family) { return anyOf(family, 0); }
  QString anyOf(const DocumentFamily& family, int status) {
    const RowSet numbers = openSelect(compose("select {} from {} where {}=? and {}>=? order by id",
                                              {family.number, family.head, family.status, family.date}),
                                      status, firstDay_.toString(Qt::ISODate));
    return numbers.isEmpty() ? QString() : numbers.text(upTo(numbers.rowCount() - 1), 0);
  }
  /// A trading document that has waited since it was made, or that was taken back before.
  void auditAny() {
    const DocumentFamily& family = documentFamilies()[static_cast<std::size_t>(upTo(3))];
    if (const QString number = anyWaiting(family); !number.isEmpty()) auditAgreeing(number);
  }
  void cancelAny() {
    const RowSet numbers = openSelect(
        "select distinct gl_djh from jxc_goodslist where gl_djh<>'' and g_sn<>'00000000' and gl_kdrq>=? order by "
        "gl_djh",
        firstDay_.toString(Qt::ISODate));
    if (!numbers.isEmpty()) cancel(numbers.text(upTo(numbers.rowCount() - 1), 0));
  }
  void payAny() {
    using partner_books::Kind;
    const bool customerSideToo = upTo(1) == 0;
    const PartnerSide& side = customerSideToo ? customerSide : supplierSide;
    const Kind kind = upTo(2) == 0 ? Kind::Due : Kind::Payment;
    const auto number = partner_books::saveDocument(side, kind,
                                                    {.partner = customerSideToo ? customer() : QStringLiteral("100001"),
                                                     .date = day(),
                                                     .amount = price(),
                                                     .rounding = kind == Kind::Payment && upTo(1) ? 0.5 : 0,
                                                     .account = QStringLiteral("现金"),
                                                     .employee = QStringLiteral("100001")},
                                                    prompt);
    ASSERT_TRUE(number);
    if (upTo(4) > 0) {
      EXPECT_TRUE(partner_books::auditDocument(side, kind, *number));
    }
  }
  void moveMoney() {
    const auto number = cash::saveLine({.movement = upTo(1) ? cash::Movement::In : cash::Movement::Out,
                                        .date = day(),
                                        .account = QStringLiteral("现金"),
                                        .amount = price(),
                                        .employee = QStringLiteral("默认员工")},
                                       prompt);
    ASSERT_TRUE(number);
    if (upTo(3)) cash::checkDj(*number);
  }

 private:
  const std::vector<QString> goods_{QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C"), QStringLiteral("D")};
  std::mt19937 random_;
  QDate today_{2021, 5, 3}, firstDay_{2000, 1, 1};
  bool inParts_ = false;
};

}  // namespace jxc::test
