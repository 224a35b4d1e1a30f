#include "core/roles.h"

#include "core/deletion.h"
#include "core/log.h"
#include "core/mentions.h"
#include "core/numbers.h"
#include "core/refusal.h"
#include "core/rights.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"

#include <algorithm>
#include <utility>

namespace jxc {
namespace roles_detail {

constexpr std::string_view kPurchasing[] = {"采购进货",
                                            "采购退货",
                                            "往来账务",
                                            "进退货查询",
                                            "当前库存查询",
                                            "采购进货审核",
                                            "采购退货审核",
                                            "商品入库",
                                            "商品入库审核",
                                            "采购进货取消审核",
                                            "采购退货取消审核",
                                            "商品入库取消审核",
                                            "允许在采购进货待审核界面添加商品",
                                            "允许删除采购进货待审核单据",
                                            "采购进货允许增加新商品"};
constexpr std::string_view kSales[] = {"商品销售",
                                       "顾客退货",
                                       "往来账务",
                                       "销售退货查询",
                                       "当前库存查询",
                                       "商品出库",
                                       "商品销售审核",
                                       "顾客退货审核",
                                       "商品出库审核",
                                       "快递打印",
                                       "商品销售取消审核",
                                       "顾客退货取消审核",
                                       "商品出库取消审核",
                                       "允许修改销售成本价",
                                       "允许在商品销售待审核界面添加商品",
                                       "允许删除商品销售待审核单据",
                                       "允许POS销售"};
constexpr std::string_view kStock[] = {
    "库存调拨",         "库存盘点",         "库存报损报溢",     "库存报警查询", "拆分捆绑",     "库存变动情况",
    "库存成本统计",     "库存调拨审核",     "库存盘点审核",     "报损报溢审核", "拆分捆绑审核", "库存调拨取消审核",
    "库存盘点取消审核", "报损报溢取消审核", "拆分捆绑取消审核", "库存核对",     "修改商品均价"};
constexpr std::string_view kAccounts[] = {"应收登记",     "收款登记",     "应收帐表",       "应付登记",
                                          "付款登记",     "应付帐表",     "应收登记审核",   "收款登记审核",
                                          "应付登记审核", "付款登记审核", "修改收付款日期", "进货发票管理",
                                          "销售发票管理", "进货发票审核", "销售发票审核"};
constexpr std::string_view kStatistics[] = {"进货月报",       "商品采购统计",     "业务员采购统计", "出库月报",
                                            "商品销售统计",   "业务员销售统计",   "库存变动查询",   "库存成本统计",
                                            "营业分析",       "商品销售排行",     "单据查询",       "进销存统计",
                                            "POS销售流水账",  "POS商品销售统计",  "POS销售排行",    "会员消费统计",
                                            "收银员收银统计", "收银员出入款管理", "POS销售提成"};
constexpr std::string_view kDaily[] = {"供货商管理",   "客户综合管理", "合同管理",       "客户借货管理", "业务员管理",
                                       "报价管理",     "费用及收入",   "现金银行",       "固定资产",     "财务报表",
                                       "库存变动查询", "赠品管理",     "费用及收入审核", "现金银行审核"};
// The screens also ask for position 21, which no role of this table reaches: it is the administrator's alone.
constexpr std::string_view kOther[] = {
    "商品管理",         "供货商设置",     "客户设置", "员工设置", "仓库设置",        "操作员设置", "显示商品成本价",
    "允许更改单据日期", "显示商品销售价", "会员管理", "系统设置", "备份/恢复数据库", "查看日志",   "清除日志",
    "商品期初建账",     "条码打印",       "报表设计", "帐套管理", "允许设置商品提成"};

constexpr std::array<RightsGroup, kRightsGroups> kGroups = {{{"cggl", "采购管理", kPurchasing},
                                                             {"xsgl", "销售管理", kSales},
                                                             {"kcgl", "库存管理", kStock},
                                                             {"wlzk", "往来帐款", kAccounts},
                                                             {"tjgl", "统计报表", kStatistics},
                                                             {"rcgl", "日常管理", kDaily},
                                                             {"qtcz", "其它操作", kOther}}};

// ---- ready-made roles --------------------------------------------------------------------------------------------

using Grants = bool (*)(std::string_view group, std::string_view right);

bool isOneOf(std::string_view right, std::initializer_list<std::string_view> list) {
  return std::find(list.begin(), list.end(), right) != list.end();
}

/// Runs the shop; the installation is the administrator's.
bool managerMay(std::string_view group, std::string_view right) {
  return group != "qtcz" || !isOneOf(right, {"操作员设置", "系统设置", "清除日志", "帐套管理"});
}
/// Buys and moves goods; somebody else audits.
bool buyerMay(std::string_view group, std::string_view right) {
  if (right.find("审核") != std::string_view::npos) return false;
  if (group == "cggl" || group == "kcgl") return true;
  return isOneOf(right, {"商品管理", "供货商设置", "供货商管理", "显示商品成本价", "条码打印", "进货月报"});
}
/// Serves customers; sees no cost.
bool sellerMay(std::string_view group, std::string_view right) {
  if (right.find("审核") != std::string_view::npos || right == "允许修改销售成本价") return false;
  if (group == "xsgl") return true;
  return isOneOf(right, {"客户设置", "客户综合管理", "显示商品销售价", "收款登记", "商品销售统计", "会员管理"});
}
/// Keeps the money and reads every figure; moves no goods.
bool accountantMay(std::string_view group, std::string_view right) {
  if (group == "wlzk" || group == "tjgl") return true;
  if (group == "cggl" || group == "xsgl")
    return isOneOf(right, {"往来账务", "进退货查询", "销售退货查询", "当前库存查询"});
  if (group == "kcgl") return isOneOf(right, {"库存变动情况", "库存成本统计"});
  if (group == "rcgl")
    return isOneOf(right, {"供货商管理", "客户综合管理", "合同管理", "费用及收入", "现金银行", "固定资产", "财务报表",
                           "库存变动查询", "费用及收入审核", "现金银行审核"});
  return isOneOf(right, {"显示商品成本价", "显示商品销售价"});
}

constexpr struct {
  const char16_t* name;
  Grants may;
} kReadyMade[] = {{u"店长", managerMay}, {u"采购员", buyerMay}, {u"营业员", sellerMay}, {u"会计", accountantMay}};

RoleDraft asDraft(const Row& row) {
  RoleDraft role{.id = row.integer("id"), .name = row.text("r_name"), .rights = {}};
  for (std::size_t i = 0; i < kRightsGroups; ++i)
    role.rights[i] = row.text(kGroups[i].column);
  return role;
}

bool hasNoRight(const RoleDraft& role) {
  return std::none_of(role.rights.begin(), role.rights.end(),
                      [](const QString& group) { return group.contains(u'1'); });
}

/// Inside a transaction.
void writeRole(const RoleDraft& role, const QString& name) {
  std::int64_t id = role.id;
  if (id == 0) id = insertRow("jxc_role", {{"r_sn", nextSerial("jxc_role", "r_sn")}});
  updateRow("jxc_role", id, {{"r_name", name}});
  for (std::size_t i = 0; i < kRightsGroups; ++i)
    updateRow("jxc_role", id, {{kGroups[i].column, role.rights[i]}});
}

/// What was given and taken, as many rows as that needs.
void logRights(const RoleDraft& before, const RoleDraft& now, const QString& name) {
  constexpr qsizetype most = 120;  // characters a row, beside the name of the role and one right more
  for (const bool given : {true, false}) {
    const QString begin = given ? QStringLiteral("角色“%1”增加权限：") : QStringLiteral("角色“%1”取消权限：");
    QString line;
    for (std::size_t i = 0; i < kRightsGroups; ++i)
      for (std::size_t at = 0; at < kGroups[i].rights.size(); ++at) {
        if (isGranted(given ? before : now, i, at) || !isGranted(given ? now : before, i, at)) continue;
        if (line.size() > most) writeLog(begin.arg(name) + std::exchange(line, {}));
        line += (line.isEmpty() ? QString() : QStringLiteral("、")) + words(kGroups[i].rights[at]);
      }
    if (!line.isEmpty()) writeLog(begin.arg(name) + line);
  }
}

bool isAdministratorsRole(const QString& number) {
  return number == QStringView(builtInSn);
}

QString numberOf(std::int64_t id) {
  return lookupValue("select r_sn from jxc_role where id=?", id);
}

}  // namespace roles_detail

std::span<const RightsGroup, kRightsGroups> rightsGroups() {
  return roles_detail::kGroups;
}

bool isGranted(const RoleDraft& role, std::size_t group, std::size_t right) {
  const QString& rights = role.rights[group];
  return static_cast<qsizetype>(right) < rights.size() && rights[static_cast<qsizetype>(right)] == u'1';
}

RoleDraft readRole(std::int64_t id) {
  const RowSet rows = openSelect("select * from jxc_role where id=?", id);
  if (rows.isEmpty()) throw DbError(DbError::Kind::Other, QStringLiteral("该角色已被其他操作员删除，请刷新列表！"));
  return roles_detail::asDraft(rows.front());
}

std::vector<RoleDraft> allRoles() {
  std::vector<RoleDraft> roles;
  for (const Row row : openSelect("select * from jxc_role order by id"))
    roles.push_back(roles_detail::asDraft(row));
  return roles;
}

std::vector<RoleDraft> readyMadeRoles() {
  std::vector<RoleDraft> roles;
  for (const auto& [name, may] : roles_detail::kReadyMade) {
    RoleDraft role{.id = 0, .name = QString::fromUtf16(name), .rights = {}};
    for (std::size_t i = 0; i < kRightsGroups; ++i)
      for (const std::string_view right : rightsGroups()[i].rights)
        role.rights[i] += may(rightsGroups()[i].column, right) ? u'1' : u'0';
    roles.push_back(std::move(role));
  }
  return roles;
}

std::vector<ListItem> rolesToChoose() {
  std::vector<ListItem> items = fillKeyedCombo("jxc_role", "r_name", {}, "id", "r_sn");
  if (!isAdministratorNow()) {  // who is none makes none
    std::erase_if(items, [](const ListItem& item) { return item.key == QStringView(builtInSn); });
    return items;
  }
  for (const RoleDraft& role : readyMadeRoles())
    if (!exists("select id from jxc_role where r_name=?", role.name)) items.push_back({role.name, role.name});
  return items;
}

QString roleOf(const QString& key) {
  for (const RoleDraft& role : readyMadeRoles()) {
    if (role.name != key) continue;
    if (!exists("select id from jxc_role where r_name=?", key)) {
      roles_detail::writeRole(role, key);
      logChange("jxc_role", {}, key);
    }
    return lookupValue("select r_sn from jxc_role where r_name=?", key);
  }
  return key;
}

bool mayModifyRole(std::int64_t id, Prompt& prompt) {
  if (!roles_detail::isAdministratorsRole(roles_detail::numberOf(id))) return true;
  prompt.notice(QStringLiteral("系统管理员不能修改！"));
  return false;
}

bool saveRole(const RoleDraft& role, Prompt& prompt) {
  if (!isAllowedToAdministrators(prompt)) return false;
  const QString name = sanitizeKeyword(role.name.trimmed());
  if (refused({{name.isEmpty(), u"角色名称必须填写！"_qs, Subject::Name},
               {exists("select r_name from jxc_role where r_name=? and id<>?", name, role.id),
                u"角色名称已经存在，请重新输入！"_qs, Subject::Name}},
              prompt))
    return false;
  if (role.id != 0 && !mayModifyRole(role.id, prompt)) return false;
  if (roles_detail::hasNoRight(role) &&
      !prompt.ask(QStringLiteral("角色“%1”没有任何权限，使用它的操作员什么都不能做，确认保存吗？").arg(name)))
    return false;

  Transaction transaction(accountDb());
  const RoleDraft before = role.id == 0 ? RoleDraft() : readRole(role.id);
  roles_detail::writeRole(role, name);
  logChange("jxc_role", before.name, name);
  roles_detail::logRights(before, role, name);
  transaction.commit();
  return true;
}

bool deleteRole(std::int64_t id, Prompt& prompt) {
  if (!isAllowedToAdministrators(prompt)) return false;
  return deleteAsking(
      {.table = "jxc_role",
       .question = QStringLiteral("您确定要删除选中的角色吗？"),
       .hindrance = [](const Row& row) -> std::optional<Hindrance> {
         static constexpr KeyColumn operators[] = {{"jxc_admin", "r_sn"}};
         const QString number = row.text("r_sn");
         if (const QString holder = firstMention(operators, number); !holder.isEmpty())
           return Hindrance{u"该角色已在使用，不能删除！"_qs, holder, u"请先给这些操作员选择其他角色，再删除。"_qs};
         if (!roles_detail::isAdministratorsRole(number)) return {};
         return Hindrance{u"系统管理员不能删除！"_qs, {}, {}};
       },
       .alsoDelete = [](const Row& row) { logChange("jxc_role", row.text("r_name"), {}); }},
      id, prompt);
}

Sql roleListStatement() {
  return {R"(select a.id,a.r_sn,a.r_name,
    (select count(*) from jxc_admin b where b.r_sn=a.r_sn) as operators
    from jxc_role a order by a.id)"};
}

}  // namespace jxc
