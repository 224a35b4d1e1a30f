// 单据行金额: every way by which a line gets its figures, in every order of inputs, against the formulas of the trade;
// and the lines of an exchange.
#include "core/rounding.h"
#include "engine/number_text.h"
#include "purchasing/purchase_return.h"
#include "sales/sale.h"
#include "sales/sale_return.h"
#include "stock/shop.h"

#include <algorithm>
#include <cmath>

namespace jxc::line_arithmetic_test {

struct Inputs {
  double quantity, price, tax, discount;
};

/// "net tax total" with the six decimals that are stored.
QString texts(double net, double tax, double total) {
  return numberText(toSixDecimals(net)) + u' ' + numberText(toSixDecimals(tax)) + u' ' +
         numberText(toSixDecimals(total));
}

class LineArithmetic : public test::ShopTest, public ::testing::WithParamInterface<std::pair<int, int>> {
 protected:
  LineArithmetic() : money_(GetParam().first), totals_(GetParam().second) {
    addGoods("A", 4, "6901");
    setParameter("cs_xsws", money_);
    setParameter("cs_zjews", totals_ >= 0 ? 1 : 0);
    setParameter("cs_jews", std::max(totals_, 0));
    setParameter("cs_possk", 1);
  }

  /// To `digits` decimals, half away from zero, on both sides of zero alike.
  static double rounded(double value, int digits) {
    return value < 0 ? -rounded(-value, digits)
                     : std::floor(value * std::pow(10, digits) + 0.5 + 1e-6) / std::pow(10, digits);
  }
  double unit(double value) const { return rounded(value, money_); }
  double total(double value) const { return totals_ < 0 ? value : rounded(value, totals_); }

  // What the trade says of each way.
  QString typed(const Inputs& in) const {
    const double units = in.quantity * in.discount;
    const double taxed = in.price * (1 + in.tax / 100);
    return texts(total(unit(in.price) * units), total((unit(taxed) - unit(in.price)) * units), total(taxed * units));
  }
  QString inCells(const Inputs& in) const {
    const double units = in.quantity * in.discount;
    const double taxed = unit(in.price * (1 + in.tax / 100));
    const auto amount = [this](double value) { return rounded(value, totals_ < 0 ? money_ : totals_); };
    return texts(amount(in.price * units), amount((taxed - in.price) * units), amount(taxed * units));
  }
  QString scanned(const Inputs& in, bool byRate) const {
    const double units = in.quantity * in.discount;
    const double price = unit(in.price);
    const double taxed = byRate ? price * (1 + in.tax / 100) : unit(price * (1 + in.tax / 100));
    return texts(total(price * units), total((taxed - price) * units), total(taxed * units));
  }

  static QString stored(const TradingRules& rules, Lines where, std::int64_t id) {
    const LineColumns& c = *(where == Lines::Staging ? stagingLineTable : rules.family().line).columns;
    const RowSet row =
        openSelect(compose("select {},{},{} from {} where id=?", {c.net, c.taxAmount, c.total, c.table}), id);
    return texts(row.number(0, 0), row.number(0, 1), row.number(0, 2));
  }

  const int money_, totals_;
};

TEST_P(LineArithmetic, EveryWayInEveryOrderOfInputs) {
  const TradingRules* const documents[] = {&receipt::rules(), &purchase_return::rules(), &sale::rules(),
                                           &sale_return::rules()};
  const std::vector<Inputs> cases = {
      {3, 9.99, 13, 0.85}, {0.5, 1.05, 0, 1}, {7, 0.35, 17, 0.333333}, {-3, 9.99, 13, 0.85}};
  for (const Inputs& in : cases) {
    SCOPED_TRACE(::testing::Message() << in.quantity << " of " << in.price << ", " << in.tax << " %, " << in.discount);
    const std::pair<const char*, double> inputs[] = {
        {"sl", in.quantity}, {"dj", in.price}, {"tax", in.tax}, {"dzl", in.discount}};
    int order[] = {0, 1, 2, 3};
    do {
      LineAmounts dialog;
      for (const int i : order) {
        if (i == 0) dialog.setQuantity(in.quantity);
        if (i == 1) dialog.setPrice(in.price);
        if (i == 2) dialog.setTax(in.tax);
        if (i == 3) dialog.setDiscount(in.discount);
      }
      const auto line = dialog.settled();
      ASSERT_TRUE(line);
      EXPECT_EQ(texts(line->net, line->taxAmount, line->total), typed(in));
      for (const TradingRules* rules : documents) {
        if (in.quantity < 0 && !rules->lines().quantities().minus) continue;
        for (const Lines where : {Lines::Draft, Lines::Staging}) {
          Transaction trial(accountDb());
          LineDraft draft = rules->lines().newLine("A", {.warehouse = test::mainWarehouse}, false);
          draft.amounts.setQuantity(1);
          const LinePlace place{.number = newDocumentNumber(rules->family(), "2021-05-03"), .date = "2021-05-03"};
          const std::int64_t id = rules->lines().addLine(where, place, draft, prompt).id;
          for (const int i : order)
            rules->lines().setChange(numberText(inputs[i].second), QString::fromLatin1(inputs[i].first), where, id,
                                     prompt);
          EXPECT_EQ(stored(*rules, where, id), inCells(in)) << rules->family().lines;
        }
      }
    } while (std::next_permutation(std::begin(order), std::end(order)));
  }
  EXPECT_EQ(prompt.notices, QStringList());
}

TEST_P(LineArithmetic, ScansAddUpWhateverWasTypedBetweenThem) {
  const std::pair<const TradingRules*, bool> documents[] = {{&receipt::rules(), false}, {&sale::rules(), true}};
  execSql("update jxc_goods set g_pjjj=9.99,g_sj=9.99 where g_sn='A'");
  setParameter("cs_tax", 13);
  insertRow("jxc_kcsp", {{"g_sn", u"A"}, {"ck_sn", test::mainWarehouse}, {"kc_sl", 9.0}, {"kc_zsl", 9.0}});
  for (const auto& [rules, byRate] : documents)
    for (const int cellAfter : {0, 1, 2}) {
      Transaction trial(accountDb());
      LinePlace place{.number = newDocumentNumber(rules->family(), "2021-05-03"),
                      .date = "2021-05-03",
                      .partner = customer(),
                      .warehouse = test::mainWarehouse};
      std::int64_t id = 0;
      for (int scan = 1; scan <= 3; ++scan) {
        id = rules->lines().enterBarcode(place, "6901", false, prompt).id;
        if (scan == cellAfter) rules->lines().setChange("0.85", u"dzl", Lines::Draft, id, prompt);
      }
      EXPECT_EQ(stored(*rules, Lines::Draft, id), scanned({3, 9.99, 13, cellAfter == 0 ? 1 : 0.85}, byRate));
    }
}

// Digits of prices, digits of totals where they are kept apart.
INSTANTIATE_TEST_SUITE_P(Digits, LineArithmetic,
                         ::testing::Values(std::pair{2, -1}, std::pair{0, -1}, std::pair{4, -1}, std::pair{2, 0},
                                           std::pair{2, 1}, std::pair{3, 2}));

// ---- an exchange -------------------------------------------------------------------------------------------------

class ExchangeTest : public test::ShopTest {
 protected:
  ExchangeTest() {
    addGoods("A", 40, "6901");
    addGoods("B", 60);
    receive("2021-05-01", {{"A", 10, 40}, {"B", 10, 60}});
  }
  std::int64_t add(const QString& goods, double quantity, double price) {
    LineDraft line = lines.newLine(goods, place(), false);
    line.amounts.setQuantity(quantity);
    line.amounts.setPrice(price);
    EXPECT_TRUE(lines.mayWrite(line, place(), prompt));
    const LineResult added = lines.addLine(Lines::Draft, place(), line, prompt);
    draft.number = added.number;
    return added.id;
  }
  LinePlace place() const { return placeOf(draft); }
  QString saved(double paid) {
    draft.paid = paid;
    draft.account = "现金";
    prompt.willSayYes();
    const SaveResult result = sale::rules().save(draft, prompt);
    EXPECT_TRUE(result);
    return result.number;
  }
  const LineRules& lines = sale::rules().lines();
  TradingDraft draft = sale::rules().fresh({});
};

TEST_F(ExchangeTest, IsOneDocumentAndComesBackWhole) {
  setParameter("cs_kc", 0);
  setParameter("cs_spck", 1);  // goods are issued later; what comes back lies on the shelf at once
  const auto back = add("A", -1, 80);
  add("B", 1, 100);
  EXPECT_EQ(lines.setChange("0", u"sl", Lines::Draft, back, prompt), 1);  // only nothing is refused
  EXPECT_EQ(lines.setChange("-2", u"sl", Lines::Draft, back, prompt), -2);
  EXPECT_EQ(sale::rules().payable(draft.number), -60);
  const QString number = audited(saved(-60));
  EXPECT_EQ(balanceOf("A"), "12 12 40");
  EXPECT_EQ(balanceOf("B"), "10 9 60");
  EXPECT_EQ(cash(), -60);
  EXPECT_EQ(customerOwes(), 0);
  EXPECT_EQ(lookupNumber("select sum(gl_lr) from jxc_goodslist where gl_djh=?", number), -80 + 40);
  EXPECT_EQ(test::brokenInvariants(), QStringList());

  // What was never issued does not come back; A has nothing to issue.
  EXPECT_FALSE(sale_return::rules().returnWhole(number, sale_return::rules().fresh({}), prompt));
  const QString issued = audited(test::waitingPart(partial::issue, u"2021-05-03"_qs, number, {0, 1}));
  const auto whole = sale_return::rules().returnWhole(number, sale_return::rules().fresh({}), prompt);
  ASSERT_TRUE(whole);
  EXPECT_TRUE(cancelDocument(issued, prompt, CancelMode::Batch));
  EXPECT_TRUE(deleteWaitingDocument(families::issue, issued, prompt.willSayYes()));
  EXPECT_EQ(whole->payable, -60);
  // Both A are gone meanwhile: neither the cancel nor the return may take them out of nothing.
  sell("2021-05-03", {{"A", 11, 90}});
  setParameter("cs_spck", 0);
  EXPECT_FALSE(sale_return::rules().save(*whole, prompt));
  EXPECT_EQ(prompt.lastNotice(), "该单据中至少一种商品库存不足，\r\n\r\n“A”：不能出库！");
  prompt.forget();
  prompt.willSayYes();
  EXPECT_EQ(prompt.refused(cancelSale(number, prompt)), "该单据中至少一种商品库存不足，\r\n\r\n“A”：不能出库！");
  receive("2021-05-03", {{"A", 1, 40}});
  prompt.willSayYes();
  const SaveResult returned = sale_return::rules().save(*whole, prompt);
  ASSERT_TRUE(returned);
  EXPECT_EQ(audit(returned.number), AuditOutcome::Audited);
  EXPECT_EQ(balanceOf("A").section(u' ', 0, 1), "11 0");
  EXPECT_EQ(cash(), 0);
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

TEST_F(ExchangeTest, AsksAboutNothingThatComesBack) {
  setParameter("cs_xsdj", 1);
  prompt.willSayYes();
  sell("2021-05-02", {{"A", 15, 95}});  // five short
  add("A", -1, 10);                     // below cost, and of a goods that is short: nothing to ask
  const auto gift = sale::addGift(Lines::Draft, place(), "A", -1, prompt).id;
  EXPECT_EQ(lookupNumber("select ls_zcb from jxc_lsxssp where id=?", gift), -40);
  EXPECT_EQ(audit(saved(-10)), AuditOutcome::Audited);
  EXPECT_EQ(balanceOf("A"), "-3 -3 40");
  EXPECT_EQ(lines.newLine("A", place(), false).amounts.price(),
            95);  // the price of the last sale, not of what came back

  draft = sale::rules().fresh({});
  LineDraft line = lines.newLine("B", place(), false);
  line.amounts.setQuantity(-1);
  line.amounts.setTotal(50);
  EXPECT_EQ(prompt.refused(lines.mayWrite(line, place(), prompt)), "退回商品的总金额不能大于0！");
  line.amounts.setTotal(-50);
  EXPECT_TRUE(lines.mayWrite(line, place(), prompt));
  EXPECT_EQ(line.amounts.price(), 50);

  // A scan adds to what is sold, never to what comes back.
  setParameter("cs_possk", 1);
  add("A", -1, 80);
  EXPECT_EQ(lines.enterBarcode(place(), "6901", false, prompt.willSayYes()).outcome, Scan::Added);
}

}  // namespace jxc::line_arithmetic_test
