#include "ui/commands.h"

#include <algorithm>

namespace jxc::ui {
namespace commands_detail {

constexpr PageDefinition kPages[] = {
    {Page::Purchasing, "menu1_btn", "RzPanel_Menu1", "采购管理", "Ctrl+1"},
    {Page::Sales, "menu2_btn", "RzPanel_Menu2", "销售管理", "Ctrl+2"},
    {Page::Stock, "menu3_btn", "RzPanel_Menu3", "库存管理", "Ctrl+3"},
    {Page::Accounts, "menu8_btn", "RzPanel_Menu8", "往来帐款", "Ctrl+4"},
    {Page::Statistics, "menu4_btn", "RzPanel_Menu4", "统计报表", "Ctrl+5"},
    {Page::Daily, "menu5_btn", "RzPanel_Menu5", "日常管理", "Ctrl+6"},
    {Page::Basic, "menu6_btn", "RzPanel_Menu6", "系统管理", "Ctrl+7"},
};

constexpr auto L = Place::Large;
constexpr auto S = Place::Side;
constexpr auto P = Place::PosMenu;
constexpr auto B = Place::Bar;
constexpr auto R = Guard::Rights;

// clang-format off
constexpr CommandDefinition kCommands[] = {
    {"btn_Menu1_Btn1", "采购进货", Page::Purchasing, L, R, "cggl", {1, 6, 10}, "采购进货！", "F_Cgjh", "truck-in"},
    {"btn_Menu1_Btn2", "采购退货", Page::Purchasing, L, R, "cggl", {2, 7, 11}, "采购退货！", "F_Cgth", "truck-out"},
    {"btn_Menu1_Btn6", "商品入库", Page::Purchasing, L, R, "cggl", {8, 9, 12}, "商品入库！", "F_Cgrk", "box-in", "cs_sprk"},
    {"btn_Menu1_Btn3", "往来账务", Page::Purchasing, L, R, "cggl", {3, 0, 0}, "往来账务！", "F_WlzwGhs", "ledger"},
    {"btn_Menu1_Btn4", "进退货查询", Page::Purchasing, L, R, "cggl", {4, 0, 0}, "进退货查询！", "F_Jthcx", "search"},
    {"btn_Menu1_Btn5", "当前库存查询", Page::Purchasing, L, R, "cggl", {5, 0, 0}, "当前库存查询！", "F_Kccx", "shelf"},

    {"btn_Menu2_Btn1", "商品销售", Page::Sales, L, R, "xsgl", {1, 7, 11}, "商品销售！", "F_Spxs", "glasses"},
    {"btn_Menu2_Btn4", "顾客退货", Page::Sales, L, R, "xsgl", {2, 8, 12}, "顾客退货！", "F_Xsth", "return"},
    // The issue command asks for the right of the waybill, not for position 6: shops have given it out that way for
    // years, and roles in use would lose the command.
    {"btn_Menu2_Btn3", "商品出库", Page::Sales, L, R, "xsgl", {10, 0, 0}, "商品出库！", "F_Spck", "box-out", "cs_spck"},
    {"btn_Menu2_Btn5", "往来账务", Page::Sales, L, R, "xsgl", {3, 0, 0}, "往来账务！", "F_WlzwKh", "ledger"},
    {"btn_Menu2_Btn6", "销售退货查询", Page::Sales, L, R, "xsgl", {4, 0, 0}, "销售退货查询！", "F_Xsdjcx", "search"},
    {"btn_Menu2_Btn2", "快递打印", Page::Sales, L, R, "xsgl", {10, 0, 0}, "快递打印！", "F_Kdddy", "parcel", "cs_kddy"},
    {"btn_Menu2_Btn7", "当前库存查询", Page::Sales, L, R, "xsgl", {5, 0, 0}, "当前库存查询！", "F_Kccx", "shelf", "", "cs_kddy"},

    {"btn_Menu3_Btn1", "库存调拨", Page::Stock, L, R, "kcgl", {1, 8, 12}, "库存调拨！", "F_Kcdb", "transfer"},
    {"btn_Menu3_Btn4", "库存盘点", Page::Stock, L, R, "kcgl", {2, 9, 13}, "库存盘点！", "F_Kcpd", "clipboard"},
    {"btn_Menu3_Btn3", "库存报损报溢", Page::Stock, L, R, "kcgl", {3, 10, 14}, "库存报损报溢！", "F_Bsby", "scale"},
    {"btn_Menu3_Btn2", "拆分捆绑", Page::Stock, L, R, "kcgl", {5, 11, 15}, "拆分捆绑！", "F_Cfkb", "split"},
    {"btn_Menu3_Btn5", "库存变动情况", Page::Stock, L, R, "kcgl", {6, 0, 0}, "库存变动情况！", "F_Kccx", "shelf"},
    {"btn_Menu3_Btn6", "库存报警查询", Page::Stock, L, R, "kcgl", {4, 0, 0}, "库存报警查询！", "F_Kcbj", "bell"},
    {"btn_Menu3_Right3", "库存成本统计", Page::Stock, S, R, "kcgl", {7, 0, 0}, "库存成本统计！", "F_Kccb", "chart"},

    {"btn_Menu8_Btn1", "应收登记", Page::Accounts, L, R, "wlzk", {1, 0, 0}, "应收登记！", "F_Yskdj", "note-in"},
    {"btn_Menu8_Btn2", "收款登记", Page::Accounts, L, R, "wlzk", {2, 0, 0}, "收款登记！", "F_Ysksk", "coin-in"},
    {"btn_Menu8_Btn3", "应收帐表", Page::Accounts, L, R, "wlzk", {3, 0, 0}, "应收帐表！", "F_Yskgl", "ledger"},
    {"btn_Menu8_Btn4", "应付登记", Page::Accounts, L, R, "wlzk", {4, 0, 0}, "应付登记！", "F_Yfkdj", "note-out"},
    {"btn_Menu8_Btn5", "付款登记", Page::Accounts, L, R, "wlzk", {5, 0, 0}, "付款登记！", "F_Yfkfk", "coin-out"},
    {"btn_Menu8_Btn6", "应付帐表", Page::Accounts, L, R, "wlzk", {6, 0, 0}, "应付帐表！", "F_Yfkgl", "ledger"},
    {"btn_Menu8_Btn7", "进货发票", Page::Accounts, L, R, "wlzk", {12, 0, 0}, "进货发票！", "F_Fpcg", "invoice", "cs_kp"},
    {"btn_Menu8_Btn8", "销售发票", Page::Accounts, L, R, "wlzk", {13, 0, 0}, "销售发票！", "F_Fpxs", "invoice", "cs_kp"},

    {"btn_Menu4_Btn1", "进货月报", Page::Statistics, L, R, "tjgl", {1, 0, 0}, "进货月报！", "F_Rkrbyb", "calendar"},
    {"btn_Menu4_Btn2", "商品采购统计", Page::Statistics, L, R, "tjgl", {2, 0, 0}, "商品采购统计！", "F_Spcgtj", "chart"},
    {"btn_Menu4_Btn3", "业务员采购统计", Page::Statistics, L, R, "tjgl", {3, 0, 0}, "业务员采购统计！", "F_Ywycgtj", "person"},
    {"btn_Menu4_Btn4", "库存成本统计", Page::Statistics, L, R, "tjgl", {8, 0, 0}, "库存成本统计！", "F_Kccb", "shelf"},
    {"btn_Menu4_Btn5", "库存变动查询", Page::Statistics, L, R, "tjgl", {7, 0, 0}, "库存变动查询！", "F_Kccx", "transfer"},
    {"btn_Menu4_Btn6", "出库月报", Page::Statistics, L, R, "tjgl", {4, 0, 0}, "出库月报！", "F_Ckrbyb", "calendar"},
    {"btn_Menu4_Btn7", "业务员销售统计", Page::Statistics, L, R, "tjgl", {6, 0, 0}, "业务员销售统计！", "F_Ywyxstj", "person"},
    {"btn_Menu4_Btn8", "商品销售统计", Page::Statistics, L, R, "tjgl", {5, 0, 0}, "商品销售统计！", "F_Spxstj", "chart"},
    {"btn_Menu4_Btn9", "商品销售排行", Page::Statistics, L, R, "tjgl", {10, 0, 0}, "商品销售排行！", "F_Spxsph", "podium"},
    {"btn_Menu4_BtnA", "营业分析", Page::Statistics, L, R, "tjgl", {9, 0, 0}, "营业分析！", "F_Yyfx", "trend"},
    {"btn_Menu4_BtnJ", "进销存统计", Page::Statistics, L, R, "tjgl", {12, 0, 0}, "进销存统计！", "F_Jxctj", "ledger"},
    {"btn_Djcx", "单据查询", Page::Statistics, L, R, "tjgl", {11, 0, 0}, "单据查询！", "F_Djcx", "search"},
    {"btn_Menu4_BtnC", "微信支付宝查询", Page::Statistics, L, R, "tjgl", {20, 0, 0}, "微信支付宝查询！", "F_Wxcx", "phone"},
    {"btn_Poslsz", "POS销售流水账", Page::Statistics, P, R, "tjgl", {13, 0, 0}, "POS销售流水账！", "F_Posxs_Lsz", "till"},
    {"btn_Posxstj", "POS商品销售统计", Page::Statistics, P, R, "tjgl", {14, 0, 0}, "POS商品销售统计！", "F_Posxs_Tj", "till"},
    {"btn_Posxsph", "POS销售排行", Page::Statistics, P, R, "tjgl", {15, 0, 0}, "POS销售排行！", "F_Posxs_Ph", "till"},
    {"btn_Hyxftj", "会员消费统计", Page::Statistics, P, R, "tjgl", {16, 0, 0}, "会员消费统计！", "F_Posxs_Hy", "till"},
    {"btn_Syytj", "收银员收银统计", Page::Statistics, P, R, "tjgl", {17, 0, 0}, "收银员收银统计！", "F_Posxs_Sytj", "till"},
    {"btn_Syycrk", "收银员出入款管理", Page::Statistics, P, R, "tjgl", {18, 0, 0}, "收银员出入款管理！", "F_Posxs_Crk", "till"},
    {"btn_Posrj", "POS销售提成", Page::Statistics, P, R, "tjgl", {19, 0, 0}, "POS销售提成！", "F_Posxs_Tc", "till"},

    {"btn_Menu5_Btn1", "供货商管理", Page::Daily, L, R, "rcgl", {1, 0, 0}, "供货商管理！", "F_GhsZhgl", "factory"},
    {"btn_Menu5_Btn5", "客户综合管理", Page::Daily, L, R, "rcgl", {2, 0, 0}, "客户综合管理！", "F_Khzhgl", "people"},
    {"btn_Menu5_Btn2", "合同管理", Page::Daily, L, R, "rcgl", {3, 0, 0}, "合同管理！", "F_Htgl", "contract"},
    {"btn_Menu5_Btn6", "客户借货管理", Page::Daily, L, R, "rcgl", {4, 0, 0}, "客户借货管理！", "F_Khjhgl", "lend"},
    {"btn_Menu5_Btn3", "业务员管理", Page::Daily, L, R, "rcgl", {5, 0, 0}, "业务员管理！", "F_Ywygl", "person"},
    {"btn_Menu5_Btn8", "报价管理", Page::Daily, L, R, "rcgl", {6, 0, 0}, "报价管理！", "F_Bjgl", "tag"},
    {"btn_Menu5_BtnA", "赠品管理", Page::Daily, L, R, "rcgl", {12, 0, 0}, "赠品管理！", "F_Zpgl", "gift"},
    {"img_Menu5_Cangku", "当前库存查询", Page::Daily, L, R, "rcgl", {11, 0, 0}, "当前库存查询！", "F_Kccx", "shelf"},
    {"btn_Menu5_Right1", "费用及收入", Page::Daily, S, R, "rcgl", {7, 0, 0}, "费用及收入！", "F_Fyjsr", "coin-out"},
    {"btn_Menu5_Right2", "现金银行", Page::Daily, S, R, "rcgl", {8, 0, 0}, "现金银行！", "F_Xjyh", "bank"},
    {"btn_Menu5_Right3", "固定资产", Page::Daily, S, R, "rcgl", {9, 0, 0}, "固定资产！", "F_Gdzc", "building"},
    {"btn_Menu5_Right4", "财务报表", Page::Daily, S, R, "rcgl", {10, 0, 0}, "财务报表！", "F_Cwbb", "invoice"},

    {"btn_Menu6_Btn1", "商品管理", Page::Basic, L, R, "qtcz", {1, 0, 0}, "商品管理！", "F_Spxxgl", "glasses"},
    {"btn_Menu6_Btn2", "供货商设置", Page::Basic, L, R, "qtcz", {2, 0, 0}, "供货商设置！", "F_Ghsgl", "factory"},
    {"btn_Menu6_Btn6", "客户设置", Page::Basic, L, R, "qtcz", {3, 0, 0}, "客户设置！", "F_Khgl", "people"},
    {"btn_Menu6_Btn7", "员工设置", Page::Basic, L, R, "qtcz", {4, 0, 0}, "员工设置！", "F_User", "person"},
    {"btn_Menu6_Btn5", "仓库设置", Page::Basic, L, R, "qtcz", {5, 0, 0}, "仓库设置！", "F_Ckgl", "shelf"},
    {"btn_Menu6_Btn3", "操作员设置", Page::Basic, L, R, "qtcz", {6, 0, 0}, "操作员设置！", "F_Admin", "key"},
    {"btn_Menu6_Btn8", "会员管理", Page::Basic, L, R, "qtcz", {10, 0, 0}, "会员管理！", "F_Hygl", "card"},
    {"btn_Menu6_Btn4", "系统设置", Page::Basic, L, R, "qtcz", {11, 0, 0}, "系统设置！", "F_Xtcs", "gear"},
    {"btn_Menu6_Btn9", "系统维护", Page::Basic, L, Guard::None, "", {}, "", "F_Xtwh", "wrench"},
    {"btn_Menu6_Right1", "帐套管理", Page::Basic, S, R, "qtcz", {18, 0, 0}, "帐套管理！", "F_Ztgl", "database"},

    {"btnBackup", "备份/恢复数据", Page::Maintenance, L, R, "qtcz", {12, 0, 0}, "备份/恢复数据库！", "F_Backup", "database"},
    {"btnClear", "软件数据清理", Page::Maintenance, L, Guard::SystemRole, "", {}, "只有系统管理员才能使用此功能！", "F_Sjql", "broom"},
    {"btnModi", "修改密码", Page::Maintenance, L, Guard::None, "", {}, "", "F_PwdModi", "key"},
    {"btnReport", "报表设计", Page::Maintenance, L, R, "qtcz", {17, 0, 0}, "报表设计！", "F_Bbsj", "invoice"},
    {"btnLog", "查看日志", Page::Maintenance, L, R, "qtcz", {13, 0, 0}, "查看日志！", "F_ViewLog", "clipboard"},
    {"btnJz", "期初建账", Page::Maintenance, L, R, "qtcz", {15, 0, 0}, "期初建账！", "F_Qcjz", "shelf"},
    {"btnZt", "帐套管理", Page::Maintenance, L, R, "qtcz", {18, 0, 0}, "帐套管理！", "F_Ztgl", "database"},
    {"btnTm", "条码打印", Page::Maintenance, L, R, "qtcz", {16, 0, 0}, "条码打印！", "F_Tmdy", "barcode"},
    {"btnFd", "分店名设置(&Y)", Page::Maintenance, L, Guard::SystemRole, "", {}, "只有系统管理员才能使用此功能！", "F_Fdsz", "building"},
    {"btnFdData", "本店数据导出(&Z)", Page::Maintenance, L, Guard::SystemRole, "", {}, "只有系统管理员才能使用此功能！", "F_FdExport", "box-out"},
    {"btnGhpf", "更换皮肤", Page::Maintenance, L, Guard::None, "", {}, "", "F_Skin", "palette"},
    {"btnZpgl", "赠品管理", Page::Maintenance, L, Guard::None, "", {}, "", "F_Zpgl2", "gift"},
    {"btnJs", "数据结算", Page::Maintenance, L, Guard::SystemRole, "", {}, "只有系统管理员才能使用此功能！", "F_Nzjs", "calendar"},
    {"btnSd", "账目锁定", Page::Maintenance, L, Guard::SystemRole, "", {}, "只有系统管理员才能使用此功能！", "F_Zmsd", "lock"},
    {"btnRole", "角色管理", Page::Maintenance, L, Guard::SystemRole, "", {}, "只有系统管理员才能使用此功能！", "F_Role", "people"},
    {"btnSjhd", "数据核对", Page::Maintenance, L, Guard::SystemRole, "", {}, "只有系统管理员才能使用此功能！", "F_Sjhd", "scale"},

    {"btn_Bqjl", "便签记录", Page::Window, B, Guard::None, "", {}, "", "F_Bqjl", "note"},
    {"btn_Rjbz", "软件帮助", Page::Window, B, Guard::None, "", {}, "", "F_Rjbz", "help"},
    {"btn_Hbgl", "更换操作员", Page::Window, B, Guard::None, "", {}, "", "", "swap"},
    {"btn_Tcxt", "退出系统", Page::Window, B, Guard::None, "", {}, "", "", "exit"},
};

constexpr Repeat kRepeats[] = {
    {"btn_Menu1_Right1", "btn_Menu6_Btn1", Page::Purchasing}, {"btn_Menu1_Right2", "btn_Menu6_Btn2", Page::Purchasing},
    {"btn_Menu1_Right3", "btn_Menu6_Btn5", Page::Purchasing}, {"btn_Menu1_Right4", "btn_Menu6_Btn7", Page::Purchasing},
    {"btn_Menu1_Right5", "btnGhpf", Page::Purchasing},        {"btn_Menu2_Right1", "btn_Menu6_Btn1", Page::Sales},
    {"btn_Menu2_Right2", "btn_Menu6_Btn6", Page::Sales},      {"btn_Menu2_Right3", "btn_Menu6_Btn5", Page::Sales},
    {"btn_Menu2_Right4", "btn_Menu6_Btn7", Page::Sales},      {"btn_Menu2_Right5", "btnGhpf", Page::Sales},
    {"btn_Menu3_Right1", "btn_Menu6_Btn1", Page::Stock},      {"btn_Menu3_Right2", "btn_Menu6_Btn5", Page::Stock},
    {"btn_Menu3_Right5", "btnGhpf", Page::Stock},             {"btn_Menu8_Right5", "btnGhpf", Page::Accounts},
    {"btn_Menu4_Right1", "btn_Menu6_Btn1", Page::Statistics}, {"btn_Menu4_Right2", "btn_Menu6_Btn2", Page::Statistics},
    {"btn_Menu4_Right3", "btn_Menu6_Btn6", Page::Statistics}, {"btn_Menu4_Right5", "btnGhpf", Page::Statistics},
    {"btn_Xsfx", "btn_Menu4_BtnA", Page::Statistics},         {"btn_Menu5_Right5", "btnGhpf", Page::Daily},
    {"btn_Menu6_Right5", "btnGhpf", Page::Basic},             {"img_Menu1_Cangku", "btn_Menu1_Btn5", Page::Purchasing},
    {"img_Menu2_Cangku", "btn_Menu2_Btn7", Page::Sales},      {"img_Menu3_Cangku", "btn_Menu3_Btn5", Page::Stock},
    {"img_Menu4_Cangku", "btn_Menu4_Btn5", Page::Statistics}, {"img_Menu8_Cangku", "btn_Menu3_Btn5", Page::Accounts},
};
// clang-format on

}  // namespace commands_detail

std::span<const PageDefinition> pages() {
  return commands_detail::kPages;
}
std::span<const CommandDefinition> commands() {
  return commands_detail::kCommands;
}
std::span<const Repeat> repeats() {
  return commands_detail::kRepeats;
}

const CommandDefinition* findCommand(std::string_view name) {
  const auto all = commands();
  const auto found = std::find_if(all.begin(), all.end(), [&](const auto& c) { return c.name == name; });
  return found == all.end() ? nullptr : &*found;
}

}  // namespace jxc::ui
