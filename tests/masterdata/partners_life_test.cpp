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
  const auto id = add(customerSide, u"城南诊所"_qs, {.opening = 800});
  const QString document = lookupValue("select gl_djh from jxc_ysyfk");
  setClock(u"2021-06-20 09:00:00"_qs);
  PartnerDraft draft = readPartner(customerSide, id);
  draft.opening = 950.25;
  ASSERT_TRUE(savePartner(customerSide, draft, prompt));
  const RowSet line = openSelect("select * from jxc_ysyfk");
  ASSERT_EQ(line.rowCount(), 1);
  EXPECT_EQ(line[0].text("gl_djh"), document);  // on its own day, under its own number
  EXPECT_EQ(line[0].text("k_rq"), u"2021-05-03"_qs);
  EXPECT_EQ(line[0].number("k_ljje"), 950.25);
  EXPECT_EQ(lookupNumber("select k_yfje from jxc_ysyfk_dj where gl_djh=?", document), 950.25);

  // Who began with nothing owed gets his document with the correction.
  const auto later = add(customerSide, u"城北诊所"_qs);
  EXPECT_EQ(lookupNumber("select count(*) from jxc_ysyfk"), 1);
  draft = readPartner(customerSide, later);
  draft.opening = 60;
  ASSERT_TRUE(savePartner(customerSide, draft, prompt));
  EXPECT_EQ(lookupNumber("select k_ljje from jxc_ysyfk where k_ghskh='100003'"), 60);

  insertRow("jxc_lsxsd", {{"gl_djh", "XS21062010001"}, {"kh_sn", "100002"}, {"ls_status", 0}});
  EXPECT_FALSE(openingIsOpen(customerSide, u"100002"_qs));
  draft = readPartner(customerSide, id);
  draft.opening = 1;
  draft.phone = u"13800000000"_qs;
  ASSERT_TRUE(savePartner(customerSide, draft, prompt));  // the rest is saved
  EXPECT_EQ(readPartner(customerSide, id).opening, 950.25);
  EXPECT_EQ(readPartner(customerSide, id).phone, u"13800000000"_qs);
}

TEST_F(PartnersLifeTest, MnemonicSetByHandStaysUntilTheNameChanges) {
  const auto id = add(supplierSide, u"光明"_qs);
  setPartnerMnemonic(supplierSide, id, u"GMYJ"_qs);
  PartnerDraft draft = readPartner(supplierSide, id);
  draft.phone = u"1"_qs;
  ASSERT_TRUE(savePartner(supplierSide, draft, prompt));
  EXPECT_EQ(lookupValue("select ghs_jm from jxc_ghsxx where id=?", id), u"GMYJ"_qs);
  draft.name = u"光华"_qs;
  ASSERT_TRUE(savePartner(supplierSide, draft, prompt));
  EXPECT_EQ(lookupValue("select ghs_jm from jxc_ghsxx where id=?", id), u"GH"_qs);
}

TEST_F(PartnersLifeTest, ListIsNarrowedByStateWordsAndWarehouse) {
  add(customerSide, u"青年路店"_qs, {.contact = u"周敏"_qs, .zone = u"其他区域"_qs});
  const auto closed = add(customerSide, u"老街店"_qs, {.address = u"青石巷8号"_qs, .opening = 5});
  add(customerSide, u"学校"_qs, {.kindName = u"二级"_qs, .kindKey = u"1002"_qs});
  togglePartnerForbidden(customerSide, closed);

  using State = PartnerConditions::State;
  EXPECT_EQ(names(customerSide, {}), u"普通客户 青年路店 老街店 学校"_qs);
  EXPECT_EQ(names(customerSide, {.state = State::InUse}), u"普通客户 青年路店 学校"_qs);
  EXPECT_EQ(names(customerSide, {.state = State::Forbidden}), u"老街店"_qs);
  EXPECT_EQ(names(customerSide, {.state = State::Owing}), u"老街店"_qs);
  EXPECT_EQ(names(customerSide, {.key = u"青"_qs}), u"青年路店 老街店"_qs);  // name, address
  EXPECT_EQ(names(customerSide, {.key = u"qnl"_qs}), u"青年路店"_qs);
  EXPECT_EQ(names(customerSide, {.key = u"二级"_qs}), u"学校"_qs);
  EXPECT_EQ(names(customerSide, {.contact = u"周"_qs, .zone = u"其他区域"_qs}), u"青年路店"_qs);
  EXPECT_EQ(names(customerSide, {.name = u"店"_qs, .address = u"青石"_qs}), u"老街店"_qs);
  // Marks of the statement language in a key find nothing rather than everything.
  EXPECT_EQ(names(customerSide, {.key = u"%"_qs}), QString());
  EXPECT_EQ(names(customerSide, {.key = u"' or '1'='1"_qs}), QString());

  // A list bound to warehouses keeps what is for all of them and what is for the operator's.
  execSql("update jxc_khxx set ck_sn='100009' where kh_name='学校'");
  setParameter("cs_shtc", 1);
  becomeOperator(u"小刘"_qs, u"100007"_qs, u"100002"_qs);
  EXPECT_EQ(names(customerSide, {.state = State::InUse}), u"普通客户 青年路店"_qs);
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
  EXPECT_EQ(offered({}), u"默认员工 陈静"_qs);
  EXPECT_EQ(offered(u"100002,"_qs), u"默认员工 李明 陈静"_qs);

  PartnerDraft crowd{.name = u"大客户"_qs};
  for (int i = 0; i < 29; ++i)
    crowd.employeeKeys += u"1000%1,"_qs.arg(i, 2, 10, QLatin1Char('0'));
  EXPECT_EQ(prompt.refused(savePartner(customerSide, crowd, prompt)), u"选择的业务员太多，请减少后再保存！"_qs);
}

TEST_F(PartnersLifeTest, WhatIsTypedCannotHarm) {
  for (const PartnerSide* side : {&customerSide, &supplierSide}) {
    PartnerDraft draft;
    draft.name = u"O'Neil\t\"(50%)\"\r\n👓'; drop table jxc_khxx;--"_qs;
    draft.note = u"a\x01z`^&"_qs;
    const auto id = add(*side, draft.name, draft);
    const PartnerDraft stored = readPartner(*side, id);
    EXPECT_EQ(stored.name, u"O‘Neil “(50％)“  👓‘; drop table jxc_khxx;--"_qs);
    EXPECT_EQ(stored.note, u"a z＆"_qs);

    draft = {};
    draft.name = QString(10000, u'长');
    EXPECT_THROW(savePartner(*side, draft, prompt), DbError);  // too wide for the column, nothing is cut in silence
    draft.name = u" \t\x02 "_qs;
    EXPECT_EQ(prompt.refused(savePartner(*side, draft, prompt)), QString::fromUtf16(side->noun) + u"名称必须填写！"_qs);
    EXPECT_EQ(selectPartners(*side, {}).rowCount(), 2);
  }
}

TEST_F(PartnersLifeTest, DeletedPartnerTakesMoneyDiaryAndQuotesAlong) {
  const auto id = add(customerSide, u"短期客户"_qs, {.opening = 300});
  const QString number = u"100002"_qs;
  const auto cash = [&](const char* document, const QString& who, double amount, double balance) {
    execSql(
        "insert into jxc_xjyh (gl_djh,ghs_sn,xj_kmmc,xj_rq,xj_je,xj_ljje,xj_chk) values "
        "(?,?,'现金','2021-05-03',?,?,'1')",
        document, who, amount, balance);
  };
  cash("SK21050310001", number, 120, 120);
  cash("SK21050310002", u"100001"_qs, 30, 150);
  EXPECT_TRUE(saveContact(customerSide, {0, number, u"2021-05-03"_qs, u"电话"_qs, {}}, prompt));
  insertRow("jxc_khbj", {{"kh_sn", number}, {"g_sn", "10000001"}, {"kb_bj", 9.9}});

  ASSERT_TRUE(deletePartner(customerSide, id, prompt.willSayYes()));
  EXPECT_EQ(
      prompt.questions.last(),
      u"您确定要删除当前客户吗！\r\n\r\n该客户的 1 笔收款（现金银行账中合计 120 元）将一并删除，账户余额随之改变，不能恢复。"_qs);
  EXPECT_EQ(xjyhBalanceNow(u"现金"_qs), 30);  // running balance without the deleted receipt
  for (const char* table : {"jxc_khlx", "jxc_khbj", "jxc_ysyfk", "jxc_ysyfk_dj"})
    EXPECT_EQ(openSelect(compose("select id from {}", {table})).rowCount(), 0) << table;
  // The next one gets the number, and nothing of the old one.
  add(customerSide, u"新客户"_qs);
  EXPECT_EQ(lookupValue("select kh_sn from jxc_khxx where kh_name='新客户'"), number);
  EXPECT_EQ(openSelect(contactStatement(customerSide, number)).rowCount(), 0);
}

TEST_F(PartnersLifeTest, CustomersAreCopiedToSuppliersAllOrNone) {
  PartnerDraft one{
      .contact = u"周敏"_qs, .phone = u"0511"_qs, .note = u"月结"_qs, .zone = u"省会地区"_qs, .opening = 77};
  const std::int64_t ids[] = {add(customerSide, u"青年路店"_qs, one), 1, 999};

  EXPECT_EQ(copyCustomersToSuppliers({}, {}, prompt), 0);
  EXPECT_EQ(prompt.lastNotice(), u"请选择要复制的客户！"_qs);
  int asked = 0;
  EXPECT_EQ(copyCustomersToSuppliers(
                ids, [&](int) { return ++asked < 2; }, prompt),
            0);  // stopped after the first
  EXPECT_EQ(lookupNumber("select count(*) from jxc_ghsxx"), 1);

  EXPECT_EQ(copyCustomersToSuppliers(ids, {}, prompt), 2);  // one was deleted meanwhile
  EXPECT_EQ(test::textsOf(openSelect("select ghs_sn,ghs_jm,ghs_lxr,ghs_tele,ghs_note,z_name,ghs_lwje from jxc_ghsxx "
                                     "where ghs_name='青年路店'")),
            QStringList("100002 QNLD 周敏 0511 月结 省会地区 0"));
  EXPECT_EQ(names(supplierSide, {.state = PartnerConditions::State::InUse}), u"普通供货商 青年路店 普通客户"_qs);
  EXPECT_EQ(lookupNumber("select count(*) from jxc_ysyfk where k_type='ghs'"), 0);
}

TEST_F(PartnersLifeTest, DiaryIsKeptLatestFirst) {
  for (const PartnerSide* side : {&customerSide, &supplierSide}) {
    ContactRecord draft{.partner = u"100001"_qs,
                        .date = u"2021-04-01"_qs,
                        .note = u"  约定'月结'\n下周回电  "_qs,
                        .employee = u"100001"_qs};
    ASSERT_TRUE(saveContact(*side, draft, prompt));
    draft.date = u"2021-05-02"_qs;
    draft.note = QString(10000, u'长');
    ASSERT_TRUE(saveContact(*side, draft, prompt));
    draft.note = u" \n "_qs;
    EXPECT_EQ(prompt.refused(saveContact(*side, draft, prompt)), u"联系内容必须填写！"_qs);

    const auto statement = contactStatement(*side, u"100001"_qs);
    const RowSet rows = openSelect(statement);
    ASSERT_EQ(rows.rowCount(), 2);
    EXPECT_EQ(rows[0].text("lx_note").size(), 10000);
    EXPECT_EQ(rows[1].text("lx_note"), u"约定‘月结‘\n下周回电"_qs);
    EXPECT_EQ(rows[1].text("u_name"), u"默认员工"_qs);

    ContactRecord change = readContact(*side, rows[1].integer("id"));
    change.note = u"已回电"_qs;
    ASSERT_TRUE(saveContact(*side, change, prompt));
    EXPECT_EQ(readContact(*side, change.id).note, u"已回电"_qs);
    EXPECT_FALSE(deleteContact(*side, change.id, prompt.willSayNo().willSayYes()));
    EXPECT_TRUE(deleteContact(*side, change.id, prompt));
    EXPECT_EQ(prompt.questions.last(), u"您确定要删除该联系信息吗！"_qs);
    EXPECT_THROW(readContact(*side, change.id), DbError);
  }
}

}  // namespace jxc::partners_life_test
