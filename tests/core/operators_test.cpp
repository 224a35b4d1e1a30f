// Who may log in and what they may do: operators, roles, rights, passwords.
#include "core/operators.h"

#include "core/login.h"
#include "core/passwords.h"
#include "core/rights.h"
#include "core/roles.h"
#include "core/warehouse_binding.h"
#include "harness/account_set_fixture.h"

namespace jxc::test {

class OperatorsStory : public AccountSetFixture {
 protected:
  static OperatorDraft draft(const char16_t* name, const char16_t* password = u"") {
    OperatorDraft made;
    made.name = QString::fromUtf16(name);
    made.roleKey = u"100001"_qs;
    made.password = made.passwordAgain = QString::fromUtf16(password);
    return made;
  }
  static std::int64_t idOf(const char16_t* name) {
    return static_cast<std::int64_t>(lookupNumber("select id from jxc_admin where a_name=?", name));
  }
};

TEST_F(OperatorsStory, AnOperatorIsAddedChangedAndRefusedInOrder) {
  OperatorDraft wrong = draft(u"  ", u"a");
  wrong.passwordAgain = u"b"_qs;
  EXPECT_EQ(prompt.refused(addOperator(wrong, prompt)), u"用户名称必须填写！"_qs);
  wrong.name = u"admin"_qs;
  EXPECT_EQ(prompt.refused(addOperator(wrong, prompt)), u"两次密码输入不一致！"_qs);
  wrong.passwordAgain = u" a "_qs;
  EXPECT_EQ(prompt.refused(addOperator(wrong, prompt)), u"用户名称不能重复！"_qs);

  EXPECT_EQ(addOperator(draft(u"王芳", u"x-1"), prompt), u"100002"_qs);
  EXPECT_TRUE(hasPassword(accountDb(), "100002"));

  // Her name follows into the warehouses, whole entries only, and an emptied password stays.
  execSql("update jxc_ckxx set ck_asn='100001,100002,',ck_aname=?", u"admin,小王芳,王芳,");
  OperatorDraft changed = readOperator(idOf(u"王芳"));
  EXPECT_EQ(changed.password + changed.passwordAgain, QString());
  changed.name = u"王芬"_qs;
  changed.isDisabled = true;
  EXPECT_TRUE(modifyOperator(changed, prompt));
  EXPECT_EQ(lookupValue("select ck_aname from jxc_ckxx"), u"admin,小王芳,王芬,"_qs);
  EXPECT_TRUE(isHisPassword(accountDb(), "100002", "x-1"));
  EXPECT_EQ(lookupNumber("select a_jyt from jxc_admin where a_sn='100002'"), 1);
  EXPECT_EQ(loginOperators().size(), 1u) << "a disabled operator cannot be chosen at the login";
}

TEST_F(OperatorsStory, TheBuiltInAdministratorKeepsRoleAndLogin) {
  OperatorDraft admin = readOperator(idOf(u"admin"));
  admin.name = u"店长"_qs;
  admin.roleKey = u"100009"_qs;
  admin.isDisabled = true;
  EXPECT_TRUE(modifyOperator(admin, prompt));
  EXPECT_EQ(lookupValue("select r_sn from jxc_admin where a_sn='100001'"), u"100001"_qs);
  EXPECT_EQ(lookupNumber("select a_jyt from jxc_admin where a_sn='100001'"), 0);
  EXPECT_TRUE(unlock({}, prompt)) << "his screen lock opens under the new name";
  EXPECT_EQ(lookupValue("select ck_aname from jxc_ckxx"), u"店长,"_qs);
}

TEST_F(OperatorsStory, OnlyPurchasesAndSalesKeepAnOperator) {
  prompt.willSayYes();
  addOperator(draft(u"王芳"), prompt);
  EXPECT_EQ(prompt.questions.last(), u"操作员“王芳”没有密码，任何人都可以用这个名称登录，确认不设密码吗？"_qs);
  execSql("update jxc_ckxx set ck_asn='100001,100002,',ck_aname=?", u"admin,王芳,");
  insertRow("jxc_lsxsd", {{"gl_djh", u"XS21050310001"}, {"a_name", u"admin"}});
  EXPECT_EQ(
      prompt.refused(deleteOperator(idOf(u"admin"), prompt)),
      u"该操作员已发生过业务，不能删除！\r\n\r\n操作员 100001 admin\r\n用于：商品销售单 XS21050310001\r\n\r\n不再使用的话，可以停用。"_qs);
  execSql("delete from jxc_lsxsd");
  EXPECT_EQ(prompt.refused(deleteOperator(idOf(u"admin"), prompt)),
            u"内置系统管理员不能删除！\r\n\r\n操作员 100001 admin"_qs);

  insertRow("jxc_posxsd", {{"gl_djh", u"XS21050310002"}, {"a_name", u"王芳"}});
  EXPECT_FALSE(deleteOperator(idOf(u"王芳"), prompt.willSayNo()));
  EXPECT_TRUE(deleteOperator(idOf(u"王芳"), prompt.willSayYes()));
  EXPECT_EQ(prompt.questions.last(), u"您确定要删除当前操作员吗！"_qs);
  EXPECT_EQ(lookupValue("select ck_asn from jxc_ckxx"), u"100001,"_qs) << "no warehouse names who is gone";
  EXPECT_EQ(addOperator(draft(u"王芬"), prompt.willSayYes()), u"100003"_qs) << "her number is not given again";
}

TEST_F(OperatorsStory, CopiesAndOwnPassword) {
  addOperator(draft(u"王芳", u"abc"), prompt);
  const auto copy = copyOperator(idOf(u"王芳"), prompt);
  ASSERT_TRUE(copy);
  EXPECT_TRUE(pasteOperator(*copy, prompt.willSayYes()));
  EXPECT_TRUE(prompt.questions.last().startsWith(u"操作员“复制 王芳”没有密码"_qs)) << "which is not copied";
  EXPECT_TRUE(pasteOperator(*copy, prompt.willSayYes())) << "the name may stand twice";
  EXPECT_EQ(lookupNumber("select count(*) from jxc_admin where a_name=? and a_pwd='' and a_jyt=0", u"复制 王芳"), 2);

  execSql("update jxc_admin set a_pwd='old' where a_name='admin'");
  EXPECT_EQ(prompt.refused(changeOwnPassword("wrong", "n1", "n2", prompt)), u"两次密码输入不一致，不能修改密码！"_qs);
  EXPECT_EQ(prompt.refused(changeOwnPassword("wrong", "n1", "n1", prompt)), u"当前密码错误，不能修改密码！"_qs);
  EXPECT_FALSE(changeOwnPassword("' or ''='", "n1", "n1", prompt));
  EXPECT_TRUE(changeOwnPassword(" old ", "n1", "n1 ", prompt));
  EXPECT_EQ(prompt.lastNotice(), u"密码修改成功！"_qs);
  EXPECT_TRUE(login("admin", "n1", prompt));
}

TEST_F(OperatorsStory, ANewOperatorHasTheRoleAndTheWarehousesThatWereChosen) {
  setParameter("cs_cgyh", 1);
  execSql("insert into jxc_ckxx (ck_sn,ck_name,ck_asn,ck_aname) values ('100002','分店','100001,','admin,')");
  OperatorDraft made = newOperator();
  made.name = u"王芳"_qs;
  made.password = made.passwordAgain = u"abc"_qs;
  EXPECT_EQ(prompt.refused(addOperator(made, prompt)), u"请选择角色！"_qs);
  made.roleKey = u"营业员"_qs;  // ready-made
  prompt.willSayNo();
  EXPECT_FALSE(addOperator(made, prompt)) << "bound to no warehouse";
  made.warehouses->append("100002");
  ASSERT_TRUE(addOperator(made, prompt));
  EXPECT_EQ(lookupValue("select r_name from jxc_role a,jxc_admin b where a.r_sn=b.r_sn and b.a_name='王芳'"), "营业员");
  EXPECT_EQ(rolesToChoose().size(), 5u) << "the administrator, and each ready-made one once";
  EXPECT_EQ(lookupValue("select ck_aname from jxc_ckxx where ck_sn='100002'"), "admin,王芳,");
  EXPECT_EQ(warehousesOpenTo("100002"), QStringList{"100002"});

  OperatorDraft admin = readOperator(idOf(u"admin"));
  admin.warehouses = QStringList{"100002"};
  EXPECT_EQ(prompt.refused(modifyOperator(admin, prompt)), u"仓库“主仓库”：必须选择操作员！"_qs);
  EXPECT_EQ(warehousesOpenTo("100001").size(), 2);

  becomeOperator("王芳", "100002", lookupValue("select r_sn from jxc_role where r_name='营业员'"));
  EXPECT_TRUE(hasRight("xsgl", 1));
  EXPECT_FALSE(hasRight("qtcz", 7)) << "sees no cost";
  EXPECT_FALSE(hasRight("cggl", 1));
}

TEST_F(OperatorsStory, NobodyWithoutTheRightReachesOperators) {
  const auto admin = idOf(u"admin");
  setRights("100002", "qtcz", u"1111101111111111111"_qs);  // all but operators
  becomeOperator(u"王芳"_qs, "100002", "100002");
  const auto statement = operatorListStatement();
  EXPECT_TRUE(openSelect(statement).isEmpty());
  EXPECT_THROW(readOperator(admin), DbError);
  EXPECT_FALSE(addOperator(draft(u"小李"), prompt));
  OperatorDraft change = draft(u"admin", u"mine");
  change.id = admin;
  EXPECT_FALSE(modifyOperator(change, prompt));
  EXPECT_FALSE(copyOperator(admin, prompt));
  EXPECT_FALSE(pasteOperator({}, prompt));
  EXPECT_FALSE(deleteOperator(admin, prompt));
  EXPECT_EQ(prompt.notices.count(u"您没有权限进行操作员设置！"_qs), 5);
  EXPECT_EQ(lookupNumber("select count(*) from jxc_admin"), 2);
}

TEST_F(OperatorsStory, RolesAreSavedRightByRight) {
  RoleDraft role;
  EXPECT_EQ(prompt.refused(saveRole(role, prompt)), u"角色名称必须填写！"_qs);
  role.name = u"系统管理员"_qs;
  EXPECT_EQ(prompt.refused(saveRole(role, prompt)), u"角色名称已经存在，请重新输入！"_qs);
  role.name = u"店员"_qs;
  prompt.willSayNo();
  EXPECT_FALSE(saveRole(role, prompt)) << "without any right";
  role.rights[1] = u"01"_qs;
  EXPECT_TRUE(saveRole(role, prompt));

  role = readRole(static_cast<std::int64_t>(lookupNumber("select id from jxc_role where r_name=?", u"店员")));
  EXPECT_TRUE(isGranted(role, 1, 1));
  EXPECT_FALSE(isGranted(role, 1, 0));
  EXPECT_FALSE(isGranted(role, 1, 2)) << "beyond its end";
  role.name = u"收银员"_qs;
  role.rights[1] = u"1"_qs;
  EXPECT_TRUE(saveRole(role, prompt)) << "its own old name does not count";
  becomeOperator(u"王芳"_qs, "100002", lookupValue("select r_sn from jxc_role where r_name=?", u"收银员"));
  EXPECT_TRUE(hasRight("xsgl", 1));
  EXPECT_FALSE(hasRight("xsgl", 2)) << "strings are replaced whole";

  becomeOperator("admin", "100001", "100001");
  EXPECT_EQ(
      prompt.refused(deleteRole(role.id, prompt)),
      u"该角色已在使用，不能删除！\r\n\r\n角色 100002 收银员\r\n用于：操作员 100002 王芳\r\n\r\n请先给这些操作员选择其他角色，再删除。"_qs);
  const auto admins = static_cast<std::int64_t>(lookupNumber("select id from jxc_role where r_sn='100001'"));
  EXPECT_EQ(prompt.refused(mayModifyRole(admins, prompt)), u"系统管理员不能修改！"_qs);
  EXPECT_FALSE(deleteRole(admins, prompt)) << "whoever could is of it";
  execSql("update jxc_admin set r_sn='100009' where a_sn='100002'");
  EXPECT_TRUE(deleteRole(role.id, prompt.willSayYes()));
  EXPECT_EQ(prompt.questions.last(), u"您确定要删除选中的角色吗？"_qs);
}

}  // namespace jxc::test
