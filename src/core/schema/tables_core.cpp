// 核心表: company, operators, roles, parameters and what the main window keeps.
#include "core/schema/table_definition.h"

namespace jxc::schema {
namespace tables_core_detail {

constexpr std::string_view skinSeeds[] = {"(skin_name,a_name) values ('iMaginary','admin')"};

constexpr std::string_view adminSeeds[] = {
    "(a_sn,a_name,r_sn,a_pwd,a_zreoje,a_pos,a_jy,a_jyt) values ('100001','admin','100001','',0,1,0,0)"};

constexpr std::string_view chainSeeds[] = {"(lc_hash) values ('')"};

// The telephone is the installer's to fill in.
constexpr std::string_view companySeeds[] = {
    "(c_sn,c_name,c_jc,c_tele) values ('100001','晴川信息技术有限公司','晴川公司','')"};

// Sixty rights in each group: more than there are commands, so that the administrator never lacks a new one.
constexpr std::string_view roleSeeds[] = {
    "(r_sn,r_name,cggl,xsgl,kcgl,wlzk,tjgl,rcgl,qtcz) values ('100001','系统管理员',"
    "'111111111111111111111111111111111111111111111111111111111111',"
    "'111111111111111111111111111111111111111111111111111111111111',"
    "'111111111111111111111111111111111111111111111111111111111111',"
    "'111111111111111111111111111111111111111111111111111111111111',"
    "'111111111111111111111111111111111111111111111111111111111111',"
    "'111111111111111111111111111111111111111111111111111111111111',"
    "'111111111111111111111111111111111111111111111111111111111111')"};

constexpr std::string_view gnbSeeds[] = {
    "(gn_name,gn_jz) values ('付款结账',187)", "(gn_name,gn_jz) values ('修改折扣',118)",
    "(gn_name,gn_jz) values ('修改数量',115)", "(gn_name,gn_jz) values ('删除当前',46)",
    "(gn_name,gn_jz) values ('删除全部',34)",  "(gn_name,gn_jz) values ('选择会员',113)",
    "(gn_name,gn_jz) values ('打开钱箱',117)", "(gn_name,gn_jz) values ('挂单',119)",
    "(gn_name,gn_jz) values ('解挂',120)",     "(gn_name,gn_jz) values ('锁定屏幕',121)",
    "(gn_name,gn_jz) values ('浏览图片',122)", "(gn_name,gn_jz) values ('设为赠品',123)"};

constexpr std::string_view txdispSeeds[] = {"(t_mryt,t_sjtx) values ('1','0')"};

constexpr std::string_view mrytSeeds[] = {
    "(mr_ts,mr_state,mr_rq) values "
    "('把某个常用的仓库、供货商、客户设置为默认的，可以提高工作效率。如：打开商品销售窗口，"
    "客户名称显示的将是默认客户，仓库显示的也将是默认仓库。','0','2011-1-1')",
    "(mr_ts,mr_state,mr_rq) values ('选择商品时可以只输入名称的拼音首字母，如输入“JP”就能找到“镜片”；"
    "商品编号、条码、规格和颜色也可以用来查找。','0','2011-1-1')",
    "(mr_ts,mr_state,mr_rq) values ('常用快捷键：F2 添加或查询，F5 保存或确定，F9 增加新商品，Esc "
    "退出，回车跳到下一项。"
    "熟悉之后开单可以不用鼠标。','0','2011-1-1')",
    "(mr_ts,mr_state,mr_rq) values ('同一个操作员不要同时在两台电脑上登录，否则两边正在录入的商品会混在一起。"
    "请给每个人设置自己的操作员。','0','2011-1-1')",
    "(mr_ts,mr_state,mr_rq) values ('请定期备份数据库，并把备份文件复制到U盘或另一台电脑上。"
    "系统维护中可以设置定时自动备份和退出时备份。','0','2011-1-1')",
    "(mr_ts,mr_state,mr_rq) values ('单据保存后处于“未审核”状态，不影响库存和账款；审核之后才记账。"
    "发现错误时先取消审核，修改后再重新审核。','0','2011-1-1')",
    "(mr_ts,mr_state,mr_rq) values ('镜片可以用“批量增加镜片”一次生成一个屈光度和散光度范围内的全部商品，"
    "不必逐个录入。','0','2011-1-1')",
    "(mr_ts,mr_state,mr_rq) values ('想知道某种镜片哪些度数缺货，打开当前库存查询的“镜片明细查询”，"
    "行是屈光度，列是散光度，一目了然。','0','2011-1-1')",
    "(mr_ts,mr_state,mr_rq) values ('给商品设置最低库存后，低于下限的商品会出现在“库存报警查询”里，"
    "每天看一眼就不会断货。','0','2011-1-1')",
    "(mr_ts,mr_state,mr_rq) values ('刚开始使用时，商品、客户、供货商和会员都可以从电子表格导入，"
    "比逐条录入快得多，也不容易出错。','0','2011-1-1')",
    "(mr_ts,mr_state,mr_rq) values ('盘点请安排在没有业务的时候进行，并当天审核。盘点日期之后商品又发生了业务，"
    "该盘点单就不能再审核了。','0','2011-1-1')",
    "(mr_ts,mr_state,mr_rq) values ('离开座位时按 F2 锁定主窗口，别人不知道密码就无法操作，"
    "窗口里的数据也不会丢失。','0','2011-1-1')",
    "(mr_ts,mr_state,mr_rq) values ('给老客户的特殊价格可以录入“报价管理”，以后向该客户销售时系统自动使用最近一次报价。"
    "','0','2011-1-1')",
    "(mr_ts,mr_state,mr_rq) values ('停售的商品不要删除，设为“禁用”即可：选择商品时不再出现，历史单据和统计仍然完整。"
    "','0','2011-1-1')",
    "(mr_ts,mr_state,mr_rq) values ('月底请核对现金银行余额与实际金额、客户往来账与对账单，差异越早发现越容易查清。"
    "','0','2011-1-1')",
    "(mr_ts,mr_state,mr_rq) values ('不同岗位请设置不同的角色，只给需要的权限。成本价和销售价也可以按角色隐藏，"
    "审核最好由另一个人完成。','0','2011-1-1')"};

constexpr std::string_view xtcsSeeds[] = {
    "(cs_cgdj,cs_xsdj,cs_xgdj,cs_kc,cs_ysdh,cs_spbh,cs_ct,cs_xt,cs_cgyh,cs_xsyh,cs_shdj,cs_shtc,cs_xjyh,"
    "cs_cbjs,cs_xsws,cs_zjews,cs_jews,cs_ts,cs_hbfh,cs_posdj,cs_tjcyjf,cs_posfkws,cs_posblur,cs_poshooktoday,"
    "cs_barcode,cs_barunique,cs_zerocost,cs_possk,cs_xsjgts,cs_djsh,cs_employ,cs_employts,cs_employdate,"
    "cs_wxzf,cs_mchid,cs_key,cs_kp,cs_hs,cs_tax,cs_sms,cs_hcj,cs_sprk,cs_spck,cs_lsj,cs_scjh,cs_scrk,cs_spcz,"
    "cs_dbdj,cs_jhzk,cs_zdzk,cs_ht,cs_kddy,cs_fzdw,cs_cgje,cs_xsje,cs_activate,cs_activatets,cs_djrq,cs_dysx,"
    "cs_cs001,cs_cs002,cs_cs003,cs_cs004,cs_cs005,cs_cs006,cs_cs007,cs_cs008,cs_cs009,cs_cs010,cs_cs011,cs_cs012,"
    "cs_cs013,cs_cs014,cs_cs015,cs_cs016,cs_cs017,cs_cs018,cs_cs019,cs_cs020,cs_cs021,cs_cs022,cs_cs023,cs_cs024,"
    "cs_cs025,cs_cs026,cs_cs027,cs_cs028,cs_cs029,cs_cs030,cs_cs031,cs_cs032,cs_cs033,"
    "cs_bcqdy,cs_djzddy,cs_djzddysl,cs_tmzdsc,cs_tmscff,cs_posrq) values "
    "(0,0,1,1,0,1,0,0,0,0,0,0,0,"
    "2,2,0,0,'','￥',0,0,2,1,1,"
    "0,0,0,0,1,0,1,0,'',"
    "0,'','',0,0,0,0,0,0,0,0,0,0,0,"
    "0,0,0,0,0,0,0,0,1,1,0,0,"
    "0,0,0,0,0,0,0,0,0,0,0,0,"
    "0,0,0,0,0,0,0,0,0,0,0,0,"
    "0,0,0,0,0,0,0,0,0,"
    "0,0,0,0,0,0)"};

constexpr TableDefinition tables[] = {
    {"jxc_skin", R"(
      skin_name        varchar(64)
      a_name           nvarchar(32)
)",
     skinSeeds},

    {"jxc_admin", R"(
      a_sn             varchar(8)     -- 100001 is the built-in administrator
      a_name           nvarchar(32)   -- login name, written on every document row
      r_sn             varchar(8)     -- role
      a_zreoje         numeric(28,6)  -- the most that this cashier may round off at the till
      a_pos            bit            -- head cashier
      a_pwd            varchar(32)
      a_jy             bit            -- disabled
      a_jyt            int            -- 1 when disabled: the column that lists test
      a_dbsn           varchar(8)     -- not used, like the next three
      a_ip             varchar(32)
      a_time           varchar(64)
      a_fdmc           varchar(64)
)",
     adminSeeds},

    {"jxc_adminmm", R"(
      a_sn             varchar(8)     -- of the operator
      mm_hash          varchar(128)   -- Argon2id with its salt and cost; empty: no password
      mm_old           bit            -- made of what an older build had stored, in its changed form
      mm_fails         int            -- wrong ones in a row
      mm_failed        varchar(32)    -- when the last one was
)"},

    {"jxc_company", R"(
      c_sn             varchar(8)     -- always 100001
      c_name           nvarchar(64)   -- printed on documents
      c_jc             nvarchar(32)   -- shown in the window title
      c_lxr            nvarchar(32)
      c_tele           nvarchar(32)
      c_address        nvarchar(128)
)",
     companySeeds},

    {"jxc_djbz", R"(
      dj_sn            varchar(8)
      dj_name          nvarchar(32)   -- the remark that document screens offer
      dj_pl            integer        -- use count
)"},

    {"jxc_log", R"(
      log_time         varchar(32)
      a_name           nvarchar(32)
      log_note         nvarchar(200)
      log_hash         varchar(64)    -- over these and the hash of the row before
)"},

    {"jxc_logchain", R"(
      lc_hash          varchar(64)    -- of the last row of the log: the next one is chained to it
)",
     chainSeeds},

    {"jxc_zmsd", R"(
      sd_rq            varchar(16)    -- locked up to this day; empty: opened. The newest row holds
      sd_time          varchar(32)
      a_name           nvarchar(32)
      sd_lsid          int            -- the last row of the stock ledger then: what came later did not ask
)"},

    {"jxc_gnb", R"(
      gn_name          nvarchar(32)
      gn_jz            int            -- key code
)",
     gnbSeeds},

    {"jxc_role", R"(
      r_sn             varchar(8)
      r_name           nvarchar(32)
      cggl             varchar(64)    -- one character a right, 0 or 1
      xsgl             varchar(64)
      kcgl             varchar(64)
      wlzk             varchar(64)
      tjgl             varchar(64)
      rcgl             varchar(64)
      qtcz             varchar(64)
)",
     roleSeeds},

    {"jxc_mryt", R"(
      mr_ts            nvarchar(200)  -- the tip
      mr_state         varchar(1)     -- 1 for the tip shown last
      mr_rq            varchar(32)    -- date of last showing
)",
     mrytSeeds},

    {"jxc_jbgl", R"(
      jb_time          varchar(32)
      jb_curruser      nvarchar(32)
      jb_nextuser      nvarchar(32)
      jb_jjzje         numeric(28,6)
      jb_bbskzje       numeric(28,6)
      jb_sjyyk         numeric(28,6)
      jb_xfyyk         numeric(28,6)
      jb_note          nvarchar(200)
)"},

    {"jxc_xtcs", R"(
      cs_cgdj          int            -- price proposed on a purchase: 0 average, 1 last, 2 preset
      cs_xsdj          int            -- price proposed on a sale: 0 preset, 1 the customer's last
      cs_xgdj          bit            -- unit price of a sale may be changed
      cs_kc            bit            -- stock may fall below zero after a question
      cs_ysdh          bit            -- documents carry an original number
      cs_spbh          bit            -- goods are numbered automatically
      cs_ct            bit            -- return to a supplier only what he supplies
      cs_xt            bit            -- take back from a customer only what he bought
      cs_cgyh          int            -- operators are bound to warehouses
      cs_xsyh          int            -- salespersons are bound to customers
      cs_shdj          bit            -- saving a document audits it
      cs_shtc          bit            -- operators, partners and employees are bound to warehouses
      cs_xjyh          bit            -- cash and bank in use
      cs_cbjs          int            -- decimals of quantities
      cs_xsws          int            -- decimals of money and prices
      cs_zjews         bit            -- totals have decimals of their own
      cs_jews          int            -- those decimals
      cs_ts            varchar(64)
      cs_hbfh          nvarchar(4)    -- currency symbol
      cs_posdj         bit
      cs_tjcyjf        bit            -- special offers give points
      cs_posfkws       int
      cs_posblur       bit
      cs_poshooktoday  bit
      cs_barcode       bit
      cs_barunique     bit            -- payment by document
      cs_zerocost      bit            -- receipt by document
      cs_possk         bit            -- a second scan adds to the line
      cs_xsjgts        int            -- 0 spreads a difference over the lines, 1 books it on 00000000
      cs_djsh          int            -- who pays freight: 0 the receiver, 1 the sender
      cs_employ        bit            -- show the supplier's history
      cs_employts      int
      cs_employdate    varchar(20)    -- upgrade steps seen so far; no business date
      cs_wxzf          bit            -- scan to pay
      cs_mchid         varchar(64)
      cs_key           varchar(64)
      cs_kp            bit            -- invoices in use
      cs_hs            bit            -- prices with tax
      cs_tax           numeric(28,6)  -- default tax rate, percent
      cs_sms           bit
      cs_hcj           bit            -- goods are searched on Enter
      cs_sprk          bit            -- putaway in use
      cs_spck          bit            -- issue in use
      cs_lsj           bit            -- retail price in use
      cs_scjh          bit
      cs_scrk          bit
      cs_spcz          bit
      cs_dbdj          int            -- price of a transfer: 0 cost, 1 sale price, 2 purchase price
      cs_jhzk          bit            -- discounts in use
      cs_zdzk          numeric(28,6)  -- lowest discount factor
      cs_ht            bit            -- contracts in use
      cs_kddy          bit            -- waybills in use
      cs_fzdw          bit
      cs_cgje          int            -- proposed payment of a purchase: 0 all, 1 nothing
      cs_xsje          int            -- proposed receipt of a sale: 0 all, 1 nothing
      cs_activate      bit            -- show the customer's history
      cs_activatets    int            -- proposed settlement
      cs_djrq          int            -- proposed date: 0 today, 1 that of the last document
      cs_dysx          int            -- order of printed lines
      cs_cs001         bit            -- warn when the customer's prepayment does not suffice
      cs_cs002         bit            -- cost of a sale may be changed
      cs_cs003         bit
      cs_cs004         int            -- speed of the customer display
      cs_cs005         int            -- fixed lines of a printed sale
      cs_cs006         int            -- fixed lines of a printed purchase
      cs_cs007         bit            -- reserved: purchases act on purchase orders
      cs_cs008         bit            -- reserved: sales act on sales orders
      cs_cs009         bit            -- fixed cost price
      cs_cs010         bit            -- choose the form of a printed sale
      cs_cs011         bit            -- choose the form of a printed purchase
      cs_cs012         bit
      cs_cs013         bit            -- price levels one to five
      cs_cs014         bit            -- sales keep their time of day
      cs_cs015         bit            -- switches cs_cs005
      cs_cs016         bit            -- print a purchase when saved
      cs_cs017         bit
      cs_cs018         bit
      cs_cs019         bit            -- switches cs_cs006
      cs_cs020         bit
      cs_cs021         bit
      cs_cs022         bit
      cs_cs023         bit
      cs_cs024         bit
      cs_cs025         bit
      cs_cs026         bit
      cs_cs027         bit
      cs_cs028         bit
      cs_cs029         bit
      cs_cs030         bit
      cs_cs031         int
      cs_cs032         int
      cs_cs033         int
      cs_bcqdy         bit            -- no print before saving
      cs_djzddy        bit            -- print a sale when saved
      cs_djzddysl      int
      cs_tmzdsc        bit            -- a double click chooses the goods
      cs_tmscff        int
      cs_posrq         bit
)",
     xtcsSeeds},

    {"jxc_txdisp", R"(
      t_mryt           varchar(1)     -- 1 shows the daily tip at start
      t_sjtx           varchar(1)     -- 0 shows the reminders at start
)",
     txdispSeeds},

    {"jxc_bqjl", R"(
      bq_txt           text           -- formatted text of the note pad
      bq_flag          varchar(8)
)"},
};

}  // namespace tables_core_detail

std::span<const TableDefinition> coreTables() {
  return tables_core_detail::tables;
}

}  // namespace jxc::schema
