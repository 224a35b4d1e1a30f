// 现成角色: what a shop expects of each ready-made role: the table that the program is compared with.
#pragma once

#include <array>
#include <string_view>

namespace jxc::test {

struct ReadyMadeRole {
  const char* name;
  std::array<const char*, 7> does;  // captions of the main window's tiles, by page
  std::string_view upkeep;          // buttons that stand on no page
  bool seesCost = false, seesPrice = false;
  bool seesStockCost = false;  // of what lies in the warehouses
  bool audits = false;
};

inline constexpr std::string_view kUpkeep[] = {"btnBackup", "btnLog", "btnRole", "btnClear", "btnJs"};

inline constexpr ReadyMadeRole kReadyMadeRoles[] = {
    {.name = "店长",
     .does = {"采购进货 采购退货 往来账务 进退货查询 当前库存查询",
              "商品销售 顾客退货 往来账务 销售退货查询 当前库存查询",
              "库存调拨 库存盘点 库存报损报溢 拆分捆绑 库存变动情况 库存报警查询",
              "应收登记 收款登记 应收帐表 应付登记 付款登记 应付帐表",
              "进货月报 商品采购统计 业务员采购统计 库存成本统计 库存变动查询 出库月报 业务员销售统计 商品销售统计 "
              "商品销售排行 营业分析 进销存统计 单据查询",
              "供货商管理 客户综合管理 合同管理 客户借货管理 业务员管理 报价管理 赠品管理 当前库存查询",
              "商品管理 供货商设置 客户设置 员工设置 仓库设置 会员管理"},
     .upkeep = "btnBackup btnLog",
     .seesCost = true,
     .seesPrice = true,
     .seesStockCost = true,
     .audits = true},
    {.name = "采购员",
     .does = {"采购进货 采购退货 往来账务 进退货查询 当前库存查询", "",
              "库存调拨 库存盘点 库存报损报溢 拆分捆绑 库存变动情况 库存报警查询", "", "进货月报", "供货商管理",
              "商品管理 供货商设置"},
     .seesCost = true,
     .seesStockCost = true},
    {.name = "营业员",
     .does = {"", "商品销售 顾客退货 往来账务 销售退货查询 当前库存查询", "", "收款登记", "商品销售统计",
              "客户综合管理", "客户设置 会员管理"},
     .seesPrice = true},
    {.name = "会计",
     .does = {"往来账务 进退货查询 当前库存查询", "往来账务 销售退货查询 当前库存查询", "库存变动情况",
              "应收登记 收款登记 应收帐表 应付登记 付款登记 应付帐表",
              "进货月报 商品采购统计 业务员采购统计 库存成本统计 库存变动查询 出库月报 业务员销售统计 商品销售统计 "
              "商品销售排行 营业分析 进销存统计 单据查询",
              "供货商管理 客户综合管理 合同管理 当前库存查询", ""},
     .seesCost = true,
     .seesPrice = true}};

}  // namespace jxc::test
