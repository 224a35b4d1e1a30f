// 基础资料表: goods, customers, suppliers, dictionaries, warehouses and the spreadsheet import.
#include "core/schema/table_definition.h"

namespace jxc::schema {
namespace tables_masterdata_detail {

constexpr std::string_view goodsclassSeeds[] = {
    "(gc_name,gc_pid,gc_cid,gc_sn,gc_jm,gc_key) values ('所有类别',0,1,'','SYLB',1)",
    "(gc_name,gc_sn,gc_jm,gc_pid,gc_cid,gc_key) values ('镜片','1000','JP',1,2,2)"};

// The article that carries a rebate on a whole document: no stock, disabled so that no pick list shows it.
constexpr std::string_view goodsSeeds[] = {
    "(g_sn,g_name,g_jm,g_qc,g_jj,g_sj,g_sj1,g_sj2,g_sj3,g_sj4,g_sj5,g_lsj,g_zdkc,g_tjsp,g_sccs,g_bz,g_kc,g_zhxs,"
    "g_gdcbj,dw_name,dw_name2,g_scjj,g_cbj,g_cgpl,g_xspl,g_jy,g_sptm,g_pjjj,g_dzll,g_hyj,g_tj,g_tjqx,g_dxdz,g_iszp,"
    "g_zpjf,g_clxs,g_yjlx,g_tym,g_sy,g_tclb,g_tc,g_tcje,g_bzq,g_isjp,g_ygtc,g_jgtc,g_xsytc,g_ygtc2,g_jgtc2,g_xsytc2,"
    "g_tssp,g_tsjf,gc_cid,gc_sn,gg_name,color_name,ghs_sn) values "
    "('00000000','优惠商品','YHSP','优惠商品',0,0,0,0,0,0,0,0,0,0,'','在销售或进货有优惠时,平衡商品总额!',0,1,"
    "0,'','',0,0,0,0,1,'',0,1,0,0,0,0,0,"
    "0,0,'','',0,0,0,0,0,0,0,0,0,0,0,0,"
    "0,0,2,'','','','100001')"};

constexpr std::string_view colorSeeds[] = {
    "(color_sn,color_name,color_jm,color_date,color_click) values ('100001','红色','HS','',0)",
    "(color_sn,color_name,color_jm,color_date,color_click) values ('100002','蓝色','LS','',0)"};

constexpr std::string_view dwSeeds[] = {"(dw_sn,dw_name) values ('100002','付')",
                                        "(dw_sn,dw_name) values ('100003','片')"};

constexpr std::string_view ggxhSeeds[] = {"(gg_sn,gg_name) values ('100001','500ml')",
                                          "(gg_sn,gg_name) values ('100002','100ml')"};

constexpr std::string_view ckxxSeeds[] = {
    "(ck_sn,ck_name,ck_jm,ck_fzr,ck_aname,ck_asn,ck_default,ck_pos,ck_note) values "
    "('100001','主仓库','ZCK','小李','admin,','100001,',1,1,'各种商品')"};

constexpr std::string_view zoneSeeds[] = {"(z_sn,z_name,z_jm,z_default) values ('100001','省会地区','SHDQ',0)",
                                          "(z_sn,z_name,z_jm,z_default) values ('100002','地市区域','DSQY',0)",
                                          "(z_sn,z_name,z_jm,z_default) values ('100003','其他区域','QTQY',0)"};

constexpr std::string_view ghsxxSeeds[] = {
    "(ghs_sn,ghs_name,ghs_jm,ghs_note,ghs_lwje,ghs_default,ghs_pl,ghs_forbid,gt_name,z_name,ck_sn,ck_name) values "
    "('100001','普通供货商','PTGHS','普通供货商为一些零碎的,不固定的商品供货商',0,1,0,0,'','','-1','所有仓库')"};

constexpr std::string_view ghstypeSeeds[] = {"(gt_sn,gt_name,gt_default) values ('100001','A级供货商',0)",
                                             "(gt_sn,gt_name,gt_default) values ('100002','B级供货商',0)",
                                             "(gt_sn,gt_name,gt_default) values ('100003','C级供货商',0)"};

constexpr std::string_view khxxSeeds[] = {
    "(kh_sn,kh_name,kh_jm,kh_lwje,kh_default,kh_pl,kh_forbid,kt_name,kt_sn,z_name,kh_uname,kh_usn,ck_sn,ck_name) "
    "values "
    "('100001','普通客户','PTKH',0,1,0,0,'零售客户','1000','','默认员工,','100001,','-1','所有仓库')"};

// The numbers choose the price column of a level: only the names may ever change.
constexpr std::string_view khtypeSeeds[] = {
    "(kt_sn,kt_name,kt_default) values ('1000','零售客户',1)", "(kt_sn,kt_name,kt_default) values ('1001','一级',0)",
    "(kt_sn,kt_name,kt_default) values ('1002','二级',0)",     "(kt_sn,kt_name,kt_default) values ('1003','三级',0)",
    "(kt_sn,kt_name,kt_default) values ('1004','四级',0)",     "(kt_sn,kt_name,kt_default) values ('1005','五级',0)"};

constexpr std::string_view userSeeds[] = {
    "(u_sn,u_name,u_jm,u_tc,u_cgpl,u_xspl,u_cg,u_xs,u_kc,u_yg,u_jg,u_xsy,ck_sn,ck_name,u_jy,u_tcfs,u_zdlr,u_tctxt) "
    "values "
    "('100001','默认员工','MRYG',0,0,0,1,1,1,0,0,0,'-1','所有仓库',0,0,0,'按销售额提成')"};

constexpr std::string_view fkfsSeeds[] = {"(fk_sn,fk_name) values ('100001','现金')",
                                          "(fk_sn,fk_name) values ('100002','银行转帐')"};

constexpr std::string_view deptSeeds[] = {"(de_sn,de_name) values ('100001','默认部门')"};

// The wording is that of the header row of the template sheets: a column of the same name is mapped by itself.
constexpr std::string_view importSeeds[] = {
    "(i_fieldid,i_fieldname,i_tablename) values ('g_sn','商品编号','jxc_goods')",
    "(i_fieldid,i_fieldname,i_tablename) values ('g_name','商品名称','jxc_goods')",
    "(i_fieldid,i_fieldname,i_tablename) values ('dw_name','单位','jxc_goods')",
    "(i_fieldid,i_fieldname,i_tablename) values ('gg_name','产品规格','jxc_goods')",
    "(i_fieldid,i_fieldname,i_tablename) values ('color_name','颜色','jxc_goods')",
    "(i_fieldid,i_fieldname,i_tablename) values ('g_qgd','屈光度','jxc_goods')",
    "(i_fieldid,i_fieldname,i_tablename) values ('g_sgd','散光度','jxc_goods')",
    "(i_fieldid,i_fieldname,i_tablename) values ('g_qc','商品全称','jxc_goods')",
    "(i_fieldid,i_fieldname,i_tablename) values ('g_jj','预设进价','jxc_goods')",
    "(i_fieldid,i_fieldname,i_tablename) values ('g_sj','预设售价','jxc_goods')",
    "(i_fieldid,i_fieldname,i_tablename) values ('g_sj1','一级价格','jxc_goods')",
    "(i_fieldid,i_fieldname,i_tablename) values ('g_sj2','二级价格','jxc_goods')",
    "(i_fieldid,i_fieldname,i_tablename) values ('g_sj3','三级价格','jxc_goods')",
    "(i_fieldid,i_fieldname,i_tablename) values ('g_sj4','四级价格','jxc_goods')",
    "(i_fieldid,i_fieldname,i_tablename) values ('g_sj5','五级价格','jxc_goods')",
    "(i_fieldid,i_fieldname,i_tablename) values ('g_lsj','零售价','jxc_goods')",
    "(i_fieldid,i_fieldname,i_tablename) values ('g_zdkc','最低库存','jxc_goods')",
    "(i_fieldid,i_fieldname,i_tablename) values ('g_kc','期初库存','jxc_goods')",
    "(i_fieldid,i_fieldname,i_tablename) values ('g_sccs','产品产地','jxc_goods')",
    "(i_fieldid,i_fieldname,i_tablename) values ('g_bz','备注','jxc_goods')",
    "(i_fieldid,i_fieldname,i_tablename) values ('ghs_name','供货商名称','jxc_ghsxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('ghs_lxr','联系人','jxc_ghsxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('ghs_tele','联系电话','jxc_ghsxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('ghs_lwje','期初应付','jxc_ghsxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('gt_name','供货商类型','jxc_ghsxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('z_name','所属地区','jxc_ghsxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('ghs_address','地址','jxc_ghsxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('ghs_note','备注','jxc_ghsxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('kh_name','客户名称','jxc_khxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('kh_lxr','联系人','jxc_khxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('kh_tele','联系电话','jxc_khxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('kh_lwje','期初应收','jxc_khxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('kt_name','客户级别','jxc_khxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('z_name','所属地区','jxc_khxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('kh_address','地址','jxc_khxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('kh_note','备注','jxc_khxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('hy_bh','会员卡号','jxc_hyxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('hy_name','会员姓名','jxc_hyxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('hy_mm','密码','jxc_hyxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('hy_sex','性别','jxc_hyxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('hy_sr','生日','jxc_hyxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('hy_jf','积分','jxc_hyxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('hy_zhje','卡内金额','jxc_hyxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('hy_zje','累计消费','jxc_hyxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('hy_jrrq','入会日期','jxc_hyxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('hy_dwzy','单位职业','jxc_hyxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('hy_mobile','手机','jxc_hyxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('hy_tele','电话','jxc_hyxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('hy_email','邮箱','jxc_hyxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('hy_zjlx','证件类型','jxc_hyxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('hy_zjhm','证件号码','jxc_hyxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('hy_address','地址','jxc_hyxx')",
    "(i_fieldid,i_fieldname,i_tablename) values ('g_sn','商品编号','jxc_dbsp')",
    "(i_fieldid,i_fieldname,i_tablename) values ('g_name','商品名称','jxc_dbsp')",
    "(i_fieldid,i_fieldname,i_tablename) values ('dw_name','单位','jxc_dbsp')",
    "(i_fieldid,i_fieldname,i_tablename) values ('gg_name','产品规格','jxc_dbsp')",
    "(i_fieldid,i_fieldname,i_tablename) values ('color_name','颜色','jxc_dbsp')",
    "(i_fieldid,i_fieldname,i_tablename) values ('db_sl','调拨数量','jxc_dbsp')"};

constexpr TableDefinition tables[] = {
    {"jxc_goodsclass", R"(
      gc_sn        varchar(32)    -- place in the tree as digits; empty for the root
      gc_name      nvarchar(64)
      gc_jm        varchar(32)
      gc_key       int            -- tree key and order of display
      gc_pid       int            -- key of the parent; 0 for the root
      gc_cid       int            -- head of automatic goods numbers; survives a move
)",
     goodsclassSeeds},

    {"jxc_goods", R"(
      g_sn         varchar(32)
      g_name       nvarchar(128)  -- a lens carries its powers in the name
      g_jm         varchar(32)
      g_jj         numeric(28,6)  -- preset purchase price
      g_sj         numeric(28,6)  -- preset sale price
      g_sj1        numeric(28,6)  -- wholesale levels one to five
      g_sj2        numeric(28,6)
      g_sj3        numeric(28,6)
      g_sj4        numeric(28,6)
      g_sj5        numeric(28,6)
      g_lsj        numeric(28,6)  -- retail price: printed, in no calculation
      g_zdkc       int            -- lower limit of stock
      g_tjsp       bit
      g_sccs       nvarchar(200)  -- place of production
      g_bz         nvarchar(200)
      g_kc         numeric(28,6)  -- stock on all shelves
      g_zhxs       numeric(28,6)  -- factor of the second unit, 1 when there is none
      g_gdcbj      bit            -- g_jj is the cost of sales
      dw_name2     nvarchar(64)   -- second unit
      g_scjj       numeric(28,6)  -- last purchase price
      g_cbj        numeric(28,6)
      g_cgpl       int            -- how often bought
      g_xspl       int            -- how often sold
      g_jy         bit            -- disabled
      bl           int
      g_sptm       nvarchar(64)   -- barcode
      g_sptm2      nvarchar(64)
      g_pjjj       numeric(28,6)  -- average cost over all warehouses
      g_zbq        varchar(64)    -- warranty
      g_dzll       numeric(28,6)  -- discount factor
      g_hyj        numeric(28,6)  -- member price
      g_tj         numeric(28,6)  -- special price
      g_tjqx       bit            -- special price between two dates
      g_ks         varchar(32)
      g_js         varchar(32)
      g_dxdz       bit
      g_updatepos  varchar(64)
      g_iszp       bit            -- may be given as a gift
      g_zpjf       numeric(28,6)  -- points for a gift
      g_clxs       numeric(28,6)  -- split factor
      g_yjlx       nvarchar(64)
      g_tym        nvarchar(64)
      g_sy         bit            -- gift in use
      g_tclb       int            -- commission: 0 none, 1 a piece, 2 of sales, 3 of profit
      g_tclr       numeric(28,6)
      g_tc         numeric(28,6)  -- yuan or percent, by g_tclb
      g_tcje       numeric(28,6)
      g_bzq        numeric(28,6)  -- shelf life
      g_qc         nvarchar(64)   -- short name; of a lens the name without powers
      g_qgd        varchar(16)    -- sphere
      g_sgd        varchar(16)    -- cylinder
      g_isjp       bit            -- lens
      g_ygtc       numeric(28,6)  -- commission at the till: optometrist, workshop, salesperson
      g_jgtc       numeric(28,6)
      g_xsytc      numeric(28,6)
      g_ygtc2      int            -- their units: 0 percent, 1 yuan a piece
      g_jgtc2      int
      g_xsytc2     int
      g_tssp       bit            -- special points
      g_tsjf       numeric(28,6)
      gc_cid       int
      gc_sn        varchar(32)
      dw_name      nvarchar(64)
      gg_name      nvarchar(64)
      color_name   nvarchar(64)
      gg_jm        varchar(64)
      color_jm     varchar(64)
      ghs_sn       varchar(8)     -- supplier of the last receipt
)",
     goodsSeeds},

    {"jxc_goodsprice", R"(
      gp_name      varchar(32)
      gp_price     numeric(28,6)
      g_sn         varchar(32)
)"},

    {"jxc_goodstmp", R"(
      g_sn         varchar(32)
      g_tmbz       nvarchar(32)
      g_sptm       varchar(64)
      a_name       nvarchar(32)
)"},

    {"jxc_goodsremind", R"(
      gr_mode      varchar(1)
      gr_date      varchar(64)
      gr_note      text
      gr_time      varchar(32)
      gr_obj       varchar(8)
      a_name       nvarchar(32)
      g_sn         varchar(32)
)"},

    {"jxc_txm", R"(
      tm_code      varchar(64)
)"},

    {"jxc_jplx", R"(
      jp_lxmc      varchar(64)    -- brand
      jp_zsl       varchar(8)     -- refractive index
      jp_mcqc      varchar(32)    -- coating, or base curve of a contact lens
      jp_hsl       varchar(8)     -- water content of a contact lens
      jp_spmc      varchar(128)   -- name put together
      jp_lx        varchar(1)     -- 0 lens, 1 contact lens
      jp_bz        varchar(128)
      jp_jm        varchar(128)
)"},

    {"jxc_yjlx", R"(
      g_yjlx       nvarchar(64)
      lx_sn        varchar(8)
)"},

    {"jxc_tym", R"(
      g_tym        nvarchar(64)
      tym_sn       varchar(8)
)"},

    {"jxc_khbj", R"(
      g_sn         varchar(32)
      kb_bj        numeric(28,6)  -- price promised; the last row counts
      kh_sn        varchar(8)
      kb_bjrq      varchar(32)
      u_sn         varchar(8)
      a_name       nvarchar(32)
      kb_note      nvarchar(200)
)"},

    {"jxc_ghsbj", R"(
      g_sn         varchar(32)
      gb_bj        numeric(28,6)
      ghs_sn       varchar(8)
      gb_bjrq      varchar(32)
      u_sn         varchar(8)
      a_name       nvarchar(32)
      gb_note      nvarchar(200)
)"},

    {"jxc_dxdz", R"(
      g_sn         varchar(32)
      hl_sn        varchar(8)
      hl_dxzk      numeric(28,6)
)"},

    {"jxc_khxx", R"(
      kh_sn        varchar(8)
      kh_name      nvarchar(128)
      kh_jm        varchar(128)
      kh_lxr       nvarchar(32)
      kh_tele      varchar(64)
      kh_address   nvarchar(128)
      kh_note      nvarchar(200)
      kh_lwje      numeric(28,6)  -- balance owed
      kh_default   bit
      kh_pl        int
      ck_sn        varchar(8)     -- warehouse bound to; -1 all
      ck_name      nvarchar(64)
      kh_forbid    bit
      kh_uname     nvarchar(200)  -- employees bound, each with a comma behind
      kh_usn       varchar(200)
      kt_sn        varchar(8)     -- price level
      kt_name      nvarchar(32)
      z_name       nvarchar(32)
)",
     khxxSeeds},

    {"jxc_khtype", R"(
      kt_sn        varchar(8)
      kt_name      nvarchar(32)
      kt_default   bit
)",
     khtypeSeeds},

    {"jxc_khlx", R"(
      lx_rq        varchar(32)
      lx_note      text
      u_sn         varchar(8)
      kh_sn        varchar(8)
)"},

    {"jxc_khfk", R"(
      kf_sn        varchar(16)
      kf_fkrq      varchar(32)
      kf_fkfs      varchar(32)
      kf_fkje      numeric(28,6)
      kf_note      nvarchar(200)
      gl_djh       varchar(16)
      kf_je        numeric(28,6)
      kf_fdmc      varchar(32)
      u_sn         varchar(8)
      a_name       nvarchar(32)
      kh_sn        varchar(8)
)"},

    {"jxc_ghsxx", R"(
      ghs_sn       varchar(8)
      ghs_name     nvarchar(128)
      ghs_jm       varchar(128)
      ghs_lxr      nvarchar(32)
      ghs_tele     varchar(64)
      ghs_address  nvarchar(128)
      ghs_note     nvarchar(200)
      ghs_lwje     numeric(28,6)  -- balance owed to him
      ghs_default  bit
      ghs_pl       int
      ck_sn        varchar(8)
      ck_name      nvarchar(64)
      ghs_forbid   bit
      gt_name      nvarchar(32)
      z_name       nvarchar(32)
)",
     ghsxxSeeds},

    {"jxc_ghstype", R"(
      gt_sn        varchar(8)
      gt_name      nvarchar(32)
      gt_default   bit
)",
     ghstypeSeeds},

    {"jxc_ghslx", R"(
      lx_rq        varchar(32)
      lx_note      text
      u_sn         varchar(8)
      ghs_sn       varchar(8)
)"},

    {"jxc_ghsfk", R"(
      gf_sn        varchar(16)
      gf_fkrq      varchar(32)
      gf_fkfs      varchar(32)
      gf_fkje      numeric(28,6)
      gf_note      nvarchar(200)
      gl_djh       varchar(16)
      gf_je        numeric(28,6)
      u_sn         varchar(8)
      a_name       nvarchar(32)
      ghs_sn       varchar(8)
)"},

    {"jxc_ckxx", R"(
      ck_sn        varchar(8)
      ck_name      nvarchar(64)
      ck_jm        varchar(32)
      ck_fzr       varchar(32)    -- person in charge
      ck_aname     nvarchar(200)  -- operators bound, each with a comma behind
      ck_asn       varchar(200)
      ck_tele      varchar(32)
      ck_address   nvarchar(64)
      ck_note      nvarchar(200)
      ck_default   bit
      ck_pos       bit            -- the till's warehouse
)",
     ckxxSeeds},

    {"jxc_user", R"(
      u_sn         varchar(8)
      u_name       nvarchar(32)
      u_jm         varchar(32)
      u_duty       nvarchar(32)
      u_tele       varchar(32)
      u_address    nvarchar(128)
      u_note       nvarchar(200)
      u_tc         numeric(28,6)  -- commission, percent
      u_cgpl       int            -- use counters
      u_xspl       int
      u_cg         bit            -- may be chosen on purchases, sales, stock documents
      u_xs         bit
      u_kc         bit
      u_yg         bit            -- optometrist, workshop, salesperson at the till
      u_jg         bit
      u_xsy        bit
      u_jy         bit            -- disabled
      u_tcfs       int            -- commission 0 of sales, 1 of profit
      u_zdlr       numeric(28,6)  -- profit a piece above which it starts
      u_tctxt      nvarchar(8)
      ck_sn        varchar(8)
      ck_name      nvarchar(64)
      u_fdmc       varchar(64)
)",
     userSeeds},

    {"jxc_ywyrz", R"(
      rz_rq        varchar(32)
      rz_note      text
      u_sn         varchar(8)
)"},

    {"jxc_dw", R"(
      dw_sn        varchar(8)
      dw_name      nvarchar(64)
)",
     dwSeeds},

    {"jxc_color", R"(
      color_sn     varchar(8)
      color_name   nvarchar(64)
      color_jm     varchar(64)
      color_date   varchar(32)
      color_click  int
)",
     colorSeeds},

    {"jxc_ggxh", R"(
      gg_sn        varchar(8)
      gg_name      nvarchar(64)
)",
     ggxhSeeds},

    {"jxc_zone", R"(
      z_sn         varchar(8)
      z_name       nvarchar(32)
      z_jm         varchar(32)
      z_default    bit
)",
     zoneSeeds},

    {"jxc_dept", R"(
      de_sn        varchar(8)
      de_name      nvarchar(64)
)",
     deptSeeds},

    {"jxc_fkfs", R"(
      fk_sn        varchar(8)
      fk_name      nvarchar(32)
)",
     fkfsSeeds},

    {"jxc_import", R"(
      i_fieldid    varchar(32)
      i_fieldname  varchar(32)
      i_tablename  varchar(32)
)",
     importSeeds},

    {"jxc_importchk", R"(
      i_fieldid    varchar(32)
      i_excelfield varchar(64)    -- column of the sheet
      i_sele       bit
      i_image      int
      a_name       nvarchar(32)
)"},

    {"jxc_importdata", R"(
      id_exceldata varchar(128)   -- key text of the row
      id_status    varchar(64)    -- what became of it
      id_sele      bit
      id_image     int            -- 1 waiting, 2 done, 3 failed
      a_name       nvarchar(32)
)"},
};

}  // namespace tables_masterdata_detail

std::span<const TableDefinition> masterdataTables() {
  return tables_masterdata_detail::tables;
}

}  // namespace jxc::schema
