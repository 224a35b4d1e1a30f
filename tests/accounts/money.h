// 账务夹具: an account set with two customers, two suppliers and money in the till, and entries in one line each.
#pragma once

#include "accounts/cash_accounts.h"
#include "accounts/cash_ledger.h"
#include "accounts/cash_lines.h"
#include "accounts/partner_documents.h"
#include "accounts/partner_overview.h"
#include "accounts/settling.h"
#include "harness/account_set_fixture.h"
#include "harness/invariants.h"
#include "masterdata/partners.h"

namespace jxc::test {

using partner_books::Kind;

class MoneyTest : public AccountSetFixture {
 protected:
  MoneyTest() {
    insertRow("jxc_khxx", {{"kh_sn", u"100002"}, {"kh_name", u"张三"}, {"kh_lwje", 0.0}, {"kh_forbid", 0}});
    insertRow("jxc_ghsxx", {{"ghs_sn", u"100002"}, {"ghs_name", u"明镜光学"}, {"ghs_lwje", 0.0}, {"ghs_forbid", 0}});
  }

  Prompt* asked = &prompt;  // who is asked when a document is entered

  QString enter(const PartnerSide& side, Kind kind, double amount, const QString& date, double rounding = 0,
                const QString& account = QStringLiteral("现金"), const QString& partner = QStringLiteral("100002")) {
    return partner_books::saveDocument(side, kind,
                                       {.partner = partner,
                                        .date = date,
                                        .amount = amount,
                                        .rounding = rounding,
                                        .account = account,
                                        .employee = QStringLiteral("100001"),
                                        .note = QStringLiteral("说明")},
                                       *asked)
        .value_or(QString());
  }
  QString audited(const PartnerSide& side, Kind kind, double amount, const QString& date, double rounding = 0) {
    const QString number = enter(side, kind, amount, date, rounding);
    EXPECT_TRUE(partner_books::auditDocument(side, kind, number));
    return number;
  }
  QString move(cash::Movement movement, double amount, const QString& date,
               const QString& account = QStringLiteral("现金"), const QString& target = {}) {
    return cash::saveLine({.movement = movement,
                           .date = date,
                           .account = account,
                           .target = target,
                           .amount = amount,
                           .employee = QStringLiteral("默认员工"),
                           .note = {}},
                          *asked)
        .value_or(QString());
  }
  /// The line of a document that stands under this number.
  std::int64_t lineOf(const QString& number) { return firstIdOf("jxc_xjyh", "gl_djh", number); }
  std::int64_t documentOf(const QString& number) { return firstIdOf("jxc_ysyfk_dj", "gl_djh", number); }

  double customerOwes(const QString& sn = QStringLiteral("100002")) {
    return lookupNumber("select kh_lwje from jxc_khxx where kh_sn=?", sn);
  }
  double weOwe() { return lookupNumber("select ghs_lwje from jxc_ghsxx where ghs_sn='100002'"); }
  QString lastLog() { return lookupValue("select top 1 log_note from jxc_log order by id desc"); }
  static RowSet rowsOf(const Sql& statement) { return openSelect(statement); }

 private:
  static std::int64_t firstIdOf(std::string_view table, std::string_view field, const QString& value) {
    return lookupValue(compose("select top 1 id from {} where {}=? order by id", {table, field}), value).toLongLong();
  }
};

}  // namespace jxc::test
