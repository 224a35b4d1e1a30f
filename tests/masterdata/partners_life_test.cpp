// Customers and suppliers from the first entry to the last: opening amounts, lists and their filters, bad input,
// copies, the contact diary, and what a deleted partner leaves behind.
#include "accounts/cash_ledger.h"
#include "accounts/partner_documents.h"
#include "harness/account_set_fixture.h"
#include "harness/row_texts.h"
#include "masterdata/employees.h"
#include "masterdata/partner_contacts.h"
#include "masterdata/partners.h"

namespace jxc::partners_life_test {

class PartnersLifeTest : public test::AccountSetFixture {
 protected:
  std::int64_t add(const PartnerSide& side, const QString& name, const PartnerDraft& more = {}) {
    PartnerDraft draft = more;
    draft.name = name;
    const auto number = savePartner(side, draft, prompt);
    EXPECT_TRUE(number);
    return idOf(side, number.value_or(QString()));
  }
  static std::int64_t idOf(const PartnerSide& side, const QString& number) {
    return static_cast<std::int64_t>(
        lookupNumber(compose("select id from {} where {}=?", {side.table, side.sn}), number));
  }
  static QString names(const PartnerSide& side, const PartnerConditions& conditions) {
    return test::textsOf(selectPartners(side, conditions), {side.name}).join(u' ');
  }
};

TEST_F(PartnersLifeTest, OpeningAmountIsCorrectedInItsOwnDocumentUntilThereIsOtherBusiness) {
  const auto id = add(customerSide, QStringLiteral("城南诊所"), {.opening = 800});
  const QString document = lookupValue("select gl_djh from jxc_ysyfk");
  setClock(QStringLiteral("2021-06-20 09:00:00"));
  PartnerDraft draft = readPartner(customerSide, id);
  draft.opening = 950.25;
  ASSERT_TRUE(savePartner(customerSide, draft, prompt));
  const RowSet line = openSelect("select * from jxc_ysyfk");
  ASSERT_EQ(line.rowCount(), 1);
  EXPECT_EQ(line[0].text("gl_djh"), document);  // on its own day, under its own number
  EXPECT_EQ(line[0].text("k_rq"), QStringLiteral("2021-05-03"));
  EXPECT_EQ(line[0].number("k_ljje"), 950.25);
  EXPECT_EQ(lookupNumber("select k_yfje from jxc_ysyfk_dj where gl_djh=?", document), 950.25);

  // Who began with nothing owed gets his document with the correction.
  const auto later = add(customerSide, QStringLiteral("城北诊所"));
  EXPECT_EQ(lookupNumber("select count(*) from jxc_ysyfk"), 1);
  draft = readPartner(customerSide, later);
  draft.opening = 60;
  ASSERT_TRUE(savePartner(customerSide, draft, prompt));
  EXPECT_EQ(lookupNumber("select k_ljje from jxc_ysyfk where k_ghskh='100003'"), 60);

  insertRow("jxc_lsxsd", {{"gl_djh", "XS21062010001"}, {"kh_sn", "100002"}, {"ls_status", 0}});
  EXPECT_FALSE(openingIsOpen(customerSide, QStringLiteral("100002")));
  draft = readPartner(customerSide, id);
  draft.opening = 1;
  draft.phone = QStringLiteral("13800000000");
  ASSERT_TRUE(savePartner(customerSide, draft, prompt));  // the rest is saved
  EXPECT_EQ(readPartner(customerSide, id).opening, 950.25);
  EXPECT_EQ(readPartner(customerSide, id).phone, QStringLiteral("13800000000"));
}

TEST_F(PartnersLifeTest, MnemonicSetByHandStaysUntilTheNameChanges) {
  const auto id = add(supplierSide, QStringLiteral("光明"));
  setPartnerMnemonic(supplierSide, id, QStringLiteral("GMYJ"));
  PartnerDraft draft = readPartner(supplierSide, id);
  draft.phone = QStringLiteral("1");
  ASSERT_TRUE(savePartner(supplierSide, draft, prompt));
  EXPECT_EQ(lookupValue("select ghs_jm from jxc_ghsxx where id=?", id), QStringLiteral("GMYJ"));
  draft.name = QStringLiteral("光华");
  ASSERT_TRUE(savePartner(supplierSide, draft, prompt));
  EXPECT_EQ(lookupValue("select ghs_jm from jxc_ghsxx where id=?", id), QStringLiteral("GH"));
}

TEST_F(PartnersLifeTest, ListIsNarrowedByStateWordsAndWarehouse) {
  add(customerSide, QStringLiteral("青年路店"),
      {.contact = QStringLiteral("周敏"), .zone = QStringLiteral("其他区域")});
  const auto closed =
      add(customerSide, QStringLiteral("老街店"), {.address = QStringLiteral("青石巷8号"), .opening = 5});
  add(customerSide, QStringLiteral("学校"), {.kindName = QStringLiteral("二级"), .kindKey = QStringLiteral("1002")});
  togglePartnerForbidden(customerSide, closed);

  using State = PartnerConditions::State;
  EXPECT_EQ(names(customerSide, {}), QStringLiteral("普通客户 青年路店 老街店 学校"));
  EXPECT_EQ(names(customerSide, {.state = State::InUse}), QStringLiteral("普通客户 青年路店 学校"));
  EXPECT_EQ(names(customerSide, {.state = State::Forbidden}), QStringLiteral("老街店"));
  EXPECT_EQ(names(customerSide, {.state = State::Owing}), QStringLiteral("老街店"));
  EXPECT_EQ(names(customerSide, {.key = QStringLiteral("青")}), QStringLiteral("青年路店 老街店"));  // name, address
  EXPECT_EQ(names(customerSide, {.key = QStringLiteral("qnl")}), QStringLiteral("青年路店"));
  EXPECT_EQ(names(customerSide, {.key = QStringLiteral("二级")}), QStringLiteral("学校"));
  EXPECT_EQ(names(customerSide, {.contact = QStringLiteral("周"), .zone = QStringLiteral("其他区域")}),
            QStringLiteral("青年路店"));
  EXPECT_EQ(names(customerSide, {.name = QStringLiteral("店"), .address = QStringLiteral("青石")}),
            QStringLiteral("老街店"));
  // Marks of the statement language in a key find nothing rather than everything.
  EXPECT_EQ(names(customerSide, {.key = QStringLiteral("%")}), QString());
  EXPECT_EQ(names(customerSide, {.key = QStringLiteral("' or '1'='1")}), QString());

  // A list bound to warehouses keeps what is for all of them and what is for the operator's.
  execSql("update jxc_khxx set ck_sn='100009' where kh_name='学校'");
  setParameter("cs_shtc", 1);
  becomeOperator(QStringLiteral("小刘"), QStringLiteral("100007"), QStringLiteral("100002"));
  EXPECT_EQ(names(customerSide, {.state = State::InUse}), QStringLiteral("普通客户 青年路店"));
}

TEST_F(PartnersLifeTest, BoundEmployeesAreKeptApartFromActiveOnes) {
  for (const char16_t* name : {u"李明", u"陈静"}) {
    EmployeeDraft draft;
    draft.name = QString::fromUtf16(name);
    ASSERT_TRUE(saveEmployee(draft, prompt));
  }
  toggleEmployeeDisabled(2);
  const auto offered = [](const QString& bound) {
    return test::textsOf(selectBindableEmployees(bound), {"u_name"}).join(u' ');
  };
  EXPECT_EQ(offered({}), QStringLiteral("默认员工 陈静"));
  EXPECT_EQ(offered(QStringLiteral("100002,")), QStringLiteral("默认员工 李明 陈静"));

  PartnerDraft crowd{.name = QStringLiteral("大客户")};
  for (int i = 0; i < 29; ++i)
    crowd.employeeKeys += QStringLiteral("1000%1,").arg(i, 2, 10, QLatin1Char('0'));
  EXPECT_FALSE(savePartner(customerSide, crowd, prompt));
  EXPECT_EQ(prompt.lastNotice(), QStringLiteral("选择的业务员太多，请减少后再保存！"));
}

TEST_F(PartnersLifeTest, WhatIsTypedCannotHarm) {
  for (const PartnerSide* side : {&customerSide, &supplierSide}) {
    PartnerDraft draft;
    draft.name = QStringLiteral("O'Neil\t\"(50%)\"\r\n👓'; drop table jxc_khxx;--");
    draft.note = QStringLiteral("a\x01z`^&");
    const auto id = add(*side, draft.name, draft);
    const PartnerDraft stored = readPartner(*side, id);
    EXPECT_EQ(stored.name, QStringLiteral("O‘Neil “(50％)“  👓‘; drop table jxc_khxx;--"));
    EXPECT_EQ(stored.note, QStringLiteral("a z＆"));

    draft = {};
    draft.name = QString(10000, u'长');
    EXPECT_THROW(savePartner(*side, draft, prompt), DbError);  // too wide for the column, nothing is cut in silence
    draft.name = QStringLiteral(" \t\x02 ");
    EXPECT_FALSE(savePartner(*side, draft, prompt));
    EXPECT_EQ(prompt.lastNotice(), QString::fromUtf16(side->noun) + QStringLiteral("名称必须填写！"));
    EXPECT_EQ(selectPartners(*side, {}).rowCount(), 2);
  }
}

TEST_F(PartnersLifeTest, DeletedPartnerTakesMoneyDiaryAndQuotesAlong) {
  const auto id = add(customerSide, QStringLiteral("短期客户"), {.opening = 300});
  const QString number = QStringLiteral("100002");
  const auto cash = [&](const char* document, const QString& who, double amount, double balance) {
    execSql(
        "insert into jxc_xjyh (gl_djh,ghs_sn,xj_kmmc,xj_rq,xj_je,xj_ljje,xj_chk) values "
        "(?,?,'现金','2021-05-03',?,?,'1')",
        document, who, amount, balance);
  };
  cash("SK21050310001", number, 120, 120);
  cash("SK21050310002", QStringLiteral("100001"), 30, 150);
  EXPECT_TRUE(saveContact(customerSide, {0, number, QStringLiteral("2021-05-03"), QStringLiteral("电话"), {}}, prompt));
  insertRow("jxc_khbj", {{"kh_sn", number}, {"g_sn", "10000001"}, {"kb_bj", 9.9}});

  ASSERT_TRUE(deletePartner(customerSide, id, prompt.willSayYes()));
  EXPECT_EQ(
      prompt.questions.last(),
      u"您确定要删除当前客户吗！\r\n\r\n该客户的 1 笔收款（现金银行账中合计 120 元）将一并删除，账户余额随之改变，不能恢复。"_qs);
  EXPECT_EQ(xjyhBalanceNow(QStringLiteral("现金")), 30);  // running balance without the deleted receipt
  for (const char* table : {"jxc_khlx", "jxc_khbj", "jxc_ysyfk", "jxc_ysyfk_dj"})
    EXPECT_EQ(openSelect(compose("select id from {}", {table})).rowCount(), 0) << table;
  // The next one gets the number, and nothing of the old one.
  add(customerSide, QStringLiteral("新客户"));
  EXPECT_EQ(lookupValue("select kh_sn from jxc_khxx where kh_name='新客户'"), number);
  EXPECT_EQ(openSelect(contactStatement(customerSide, number)).rowCount(), 0);
}

TEST_F(PartnersLifeTest, CustomersAreCopiedToSuppliersAllOrNone) {
  PartnerDraft one{.contact = QStringLiteral("周敏"),
                   .phone = QStringLiteral("0511"),
                   .note = QStringLiteral("月结"),
                   .zone = QStringLiteral("省会地区"),
                   .opening = 77};
  const std::int64_t ids[] = {add(customerSide, QStringLiteral("青年路店"), one), 1, 999};

  EXPECT_EQ(copyCustomersToSuppliers({}, {}, prompt), 0);
  EXPECT_EQ(prompt.lastNotice(), QStringLiteral("请选择要复制的客户！"));
  int asked = 0;
  EXPECT_EQ(copyCustomersToSuppliers(
                ids, [&](int) { return ++asked < 2; }, prompt),
            0);  // stopped after the first
  EXPECT_EQ(lookupNumber("select count(*) from jxc_ghsxx"), 1);

  EXPECT_EQ(copyCustomersToSuppliers(ids, {}, prompt), 2);  // one was deleted meanwhile
  const RowSet copy = openSelect("select * from jxc_ghsxx where ghs_name='青年路店'");
  ASSERT_EQ(copy.rowCount(), 1);
  EXPECT_EQ(copy[0].text("ghs_sn"), QStringLiteral("100002"));
  EXPECT_EQ(copy[0].text("ghs_jm"), QStringLiteral("QNLD"));
  EXPECT_EQ(copy[0].text("ghs_lxr") + copy[0].text("ghs_tele") + copy[0].text("ghs_note") + copy[0].text("z_name"),
            QStringLiteral("周敏0511月结省会地区"));
  EXPECT_EQ(copy[0].number("ghs_lwje"), 0);
  EXPECT_EQ(names(supplierSide, {.state = PartnerConditions::State::InUse}),
            QStringLiteral("普通供货商 青年路店 普通客户"));
  EXPECT_EQ(lookupNumber("select count(*) from jxc_ysyfk where k_type='ghs'"), 0);
}

TEST_F(PartnersLifeTest, DiaryIsKeptLatestFirst) {
  for (const PartnerSide* side : {&customerSide, &supplierSide}) {
    ContactRecord draft{.partner = QStringLiteral("100001"),
                        .date = QStringLiteral("2021-04-01"),
                        .note = QStringLiteral("  约定'月结'\n下周回电  "),
                        .employee = QStringLiteral("100001")};
    ASSERT_TRUE(saveContact(*side, draft, prompt));
    draft.date = QStringLiteral("2021-05-02");
    draft.note = QString(10000, u'长');
    ASSERT_TRUE(saveContact(*side, draft, prompt));
    draft.note = QStringLiteral(" \n ");
    EXPECT_EQ(prompt.refused(saveContact(*side, draft, prompt)), QStringLiteral("联系内容必须填写！"));

    const auto statement = contactStatement(*side, QStringLiteral("100001"));
    const RowSet rows = openSelect(statement);
    ASSERT_EQ(rows.rowCount(), 2);
    EXPECT_EQ(rows[0].text("lx_note").size(), 10000);
    EXPECT_EQ(rows[1].text("lx_note"), QStringLiteral("约定‘月结‘\n下周回电"));
    EXPECT_EQ(rows[1].text("u_name"), QStringLiteral("默认员工"));

    ContactRecord change = readContact(*side, rows[1].integer("id"));
    change.note = QStringLiteral("已回电");
    ASSERT_TRUE(saveContact(*side, change, prompt));
    EXPECT_EQ(readContact(*side, change.id).note, QStringLiteral("已回电"));
    EXPECT_FALSE(deleteContact(*side, change.id, prompt.willSayNo().willSayYes()));
    EXPECT_TRUE(deleteContact(*side, change.id, prompt));
    EXPECT_EQ(prompt.questions.last(), QStringLiteral("您确定要删除该联系信息吗！"));
    EXPECT_THROW(readContact(*side, change.id), DbError);
  }
}

}  // namespace jxc::partners_life_test
