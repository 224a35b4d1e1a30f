#include "core/parameter_table.h"

#include <algorithm>

namespace jxc {
namespace parameter_table_detail {

using K = ParameterKind;
using G = ParameterGroup;

constexpr std::string_view kCgdj[] = {"平均进价", "最近进价", "预设进价"};
constexpr std::string_view kXsdj[] = {"预设售价", "该客户上次售价"};
constexpr std::string_view kXsjgts[] = {"平摊法", "优惠商品"};
constexpr std::string_view kDjsh[] = {"收货方支付", "发货方支付"};
constexpr std::string_view kDbdj[] = {"成本均价", "预设售价", "预设进价"};
constexpr std::string_view kCgje[] = {"应付金额", "零"};
constexpr std::string_view kXsje[] = {"应收金额", "零"};
constexpr std::string_view kActivatets[] = {"实付结算", "余额记帐"};
constexpr std::string_view kDjrq[] = {"系统日期", "上单日期"};
constexpr std::string_view kDysx[] = {"默认顺序", "商品编号顺序", "商品名称顺序"};
constexpr std::string_view kKxsl[] = {"2400", "9600"};
constexpr std::string_view kQxjk[] = {"无", "接小票机USB", "接小票机LPT "};
constexpr std::string_view kQxzl[] = {"无", "2,77", "27,112,0,128,128", "7,28"};
constexpr std::string_view kKxjk[] = {"无", "COM1", "COM2", "COM3", "COM4", "COM5", "COM6", "COM7", "COM8"};
constexpr std::string_view kTmlx[] = {
    "无", "数量(13位)", "金额(13位)", "数量+金额(18位)", "数量+单价(18位)", "金额+数量(18位)", "单价+数量(18位)"};
constexpr std::string_view kLx[] = {"无", "我有邮箱授权密码", "使用公共邮箱发送"};

// clang-format off
constexpr ParameterDefinition kTable[] = {
    {"jxc_company", "c_name", K::Text, "", "tname", "公司名称：", "", G::Company},
    {"jxc_company", "c_jc", K::Text, "", "tjc", "公司简称：", "", G::Company},
    {"jxc_company", "c_lxr", K::Text, "", "tlxr", "联系人：", "", G::Company},
    {"jxc_company", "c_tele", K::Text, "", "ttele", "联系电话：", "", G::Company},
    {"jxc_company", "c_address", K::Text, "", "taddress", "公司地址：", "", G::Company},

    {"jxc_xtcs", "cs_cgdj", K::Choice, "0", "comCgdj", "采购进货、采购退货的单价显示为：", "", G::Purchasing, kCgdj},
    {"jxc_xtcs", "cs_xsdj", K::Choice, "0", "comXsdj", "销售时默认销售价格显示为：", "", G::Sales, kXsdj},
    {"jxc_xtcs", "cs_xgdj", K::Flag, "1", "chkXgdj", "销售时允许修改销售单价", "", G::Sales},
    {"jxc_xtcs", "cs_kc", K::Flag, "1", "chkKc", "库存为零时允许采购退货、销售", "", G::Stock},
    {"jxc_xtcs", "cs_ysdh", K::Flag, "0", "chkYsdh", "采购进货或销售时有原始单号", "", G::Documents},
    {"jxc_xtcs", "cs_spbh", K::Flag, "1", "chkSpbh", "增加商品基本信息时商品自动编号", "", G::Goods},
    {"jxc_xtcs", "cs_ct", K::Flag, "0", "chkCt", "采购退货时只能退该供货商供应的商品", "", G::Purchasing},
    {"jxc_xtcs", "cs_xt", K::Flag, "0", "chkXt", "销售退货时只能退向该客户销售过的商品", "", G::Sales},
    {"jxc_xtcs", "cs_cgyh", K::Flag, "0", "chkCgyh", "操作员与仓库绑定", "", G::Binding},
    {"jxc_xtcs", "cs_xsyh", K::Flag, "0", "chkXsyh", "商品销售时业务员与客户绑定", "", G::Sales},
    {"jxc_xtcs", "cs_shdj", K::Flag, "0", "chkShdj", "单据保存后直接审核(选中后审核权限将被忽略)", "", G::Documents},
    {"jxc_xtcs", "cs_shtc", K::Flag, "0", "chkShtc", "操作员、供货商、客户、经办人与仓库绑定", "", G::Binding},
    {"jxc_xtcs", "cs_xjyh", K::Flag, "0", "chkXjyh", "启用现金银行功能", "", G::Binding},
    {"jxc_xtcs", "cs_cbjs", K::Number, "2", "tCbjs", "系统数量小数位数：", "", G::System, {}, "", 1},
    {"jxc_xtcs", "cs_xsws", K::Number, "2", "tXsws", "系统金额小数位数：", "", G::System, {}, "", 1},
    {"jxc_xtcs", "cs_zjews", K::Flag, "0", "chkZjews", "合计金额保留", "", G::System},
    {"jxc_xtcs", "cs_jews", K::Number, "0", "tzjews", "", "位小数，单价位数不变", G::System, {}, "chkZjews", 1},
    {"jxc_xtcs", "cs_ts", K::Text, ""},
    {"jxc_xtcs", "cs_hbfh", K::Text, "￥", "tXshbfh", "金额前面货币符号：", "", G::System, {}, "", 3},
    {"jxc_xtcs", "cs_posdj", K::Flag, "0", "chkPosdj", "POS前端允许修改单价和折扣", "", G::Till},
    {"jxc_xtcs", "cs_tjcyjf", K::Flag, "0", "chkTjcyjf", "特价商品参与积分", "", G::Till},
    {"jxc_xtcs", "cs_posfkws", K::Number, "2", "tPosfkws", "POS端结账小数位数：", "", G::Till, {}, "", 1},
    {"jxc_xtcs", "cs_posblur", K::Flag, "1"},
    {"jxc_xtcs", "cs_poshooktoday", K::Flag, "1", "chkPoshooktoday", "POS前端仅保存当天挂单信息", "", G::Till},
    {"jxc_xtcs", "cs_barcode", K::Flag, "0"},
    {"jxc_xtcs", "cs_barunique", K::Flag, "0", "chkBarunique", "启用单据付款功能", "", G::Purchasing},
    {"jxc_xtcs", "cs_zerocost", K::Flag, "0", "chkZerocost", "启用单据收款功能", "", G::Sales},
    {"jxc_xtcs", "cs_possk", K::Flag, "0", "chkPossk", "同一条码重复扫描时数量自动累加", "", G::Goods},
    {"jxc_xtcs", "cs_xsjgts", K::Choice, "1", "comXsjgts", "应收应付与实收实付之间的差额用", "平衡", G::Documents, kXsjgts},
    {"jxc_xtcs", "cs_djsh", K::Choice, "0", "comDjsh", "运费、包装费默认由：", "", G::Documents, kDjsh},
    {"jxc_xtcs", "cs_employ", K::Flag, "1", "chkEmploy", "采购时显示当前供货商历史信息", "", G::Purchasing},
    {"jxc_xtcs", "cs_employts", K::Number, "0"},
    {"jxc_xtcs", "cs_employdate", K::Text, ""},
    {"jxc_xtcs", "cs_wxzf", K::Flag, "0", "chkWxzf", "启用微信支付宝支付功能", "", G::Hidden},
    {"jxc_xtcs", "cs_mchid", K::Text, "", "tmchid", "商户ID：", "", G::Hidden},
    {"jxc_xtcs", "cs_key", K::Secret, "", "tkey", "商户KEY：", "", G::Hidden},
    {"jxc_xtcs", "cs_kp", K::Flag, "0", "chkKp", "启用发票记录功能", "", G::Documents},
    {"jxc_xtcs", "cs_hs", K::Flag, "0", "chkHs", "启用商品含税功能(采购、销售类单据)", "", G::Documents},
    {"jxc_xtcs", "cs_tax", K::Decimal, "0", "tTax", "默认税率：", "%", G::Documents, {}, "chkHs"},
    {"jxc_xtcs", "cs_sms", K::Flag, "0", "chkSms", "会员充值、消费时自动发短信", "", G::Till},
    {"jxc_xtcs", "cs_hcj", K::Flag, "0", "chkHcj", "选择商品时，按回车键开始查询", "", G::Goods},
    {"jxc_xtcs", "cs_sprk", K::Flag, "0", "chkSprk", "启用商品入库功能", "", G::Purchasing},
    {"jxc_xtcs", "cs_spck", K::Flag, "0", "chkSpck", "启用商品出库功能", "", G::Sales},
    {"jxc_xtcs", "cs_lsj", K::Flag, "0", "chkLsj", "启用商品销售零售价", "", G::Sales},
    {"jxc_xtcs", "cs_scjh", K::Flag, "0"},
    {"jxc_xtcs", "cs_scrk", K::Flag, "0"},
    {"jxc_xtcs", "cs_spcz", K::Flag, "0"},
    {"jxc_xtcs", "cs_dbdj", K::Choice, "0", "comDbdj", "库存调拨单价使用：", "", G::Stock, kDbdj},
    {"jxc_xtcs", "cs_jhzk", K::Flag, "0", "chkJhzk", "启用商品折扣功能", "", G::Documents},
    {"jxc_xtcs", "cs_zdzk", K::Decimal, "0", "tzdzk", "最低销售折扣：", "1为不打折,0.8为打8折", G::Documents, {}, "chkJhzk"},
    {"jxc_xtcs", "cs_ht", K::Flag, "0", "chkHt", "启用采购销售合同功能", "", G::Documents},
    {"jxc_xtcs", "cs_kddy", K::Flag, "0", "chkKddy", "启用快递单打印功能(只打印销售单)", "", G::Sales},
    {"jxc_xtcs", "cs_fzdw", K::Flag, "0"},
    {"jxc_xtcs", "cs_cgje", K::Choice, "0", "comCgje", "采购进货实付金额默认为：", "", G::Purchasing, kCgje},
    {"jxc_xtcs", "cs_xsje", K::Choice, "0", "comXsje", "商品销售实收金额默认为：", "", G::Sales, kXsje},
    {"jxc_xtcs", "cs_activate", K::Flag, "1", "chkActivate", "销售时显示当前客户历史信息", "", G::Sales},
    {"jxc_xtcs", "cs_activatets", K::Choice, "1", "comActivatets", "支付方式默认为：", "", G::Documents, kActivatets},
    {"jxc_xtcs", "cs_djrq", K::Choice, "0", "comDjrq", "采购、销售单据日期默认为：", "", G::Documents, kDjrq},
    {"jxc_xtcs", "cs_dysx", K::Choice, "0", "comDysx", "采购单、销售单商品打印顺序：", "", G::Documents, kDysx},
    {"jxc_xtcs", "cs_cs001", K::Flag, "0", "chkKhyfk", "客户预付款不足时给出提醒", "", G::Sales},
    {"jxc_xtcs", "cs_cs002", K::Flag, "0", "chkXscbj", "销售时允许修改销售成本价", "", G::Sales},
    {"jxc_xtcs", "cs_cs003", K::Flag, "0"},
    {"jxc_xtcs", "cs_cs004", K::Choice, "0", "comKxsl", "客显速率：", "", G::Till, kKxsl},
    {"jxc_xtcs", "cs_cs005", K::Number, "0", "txsdhs", "", "行打印", G::Sales, {}, "chkXsdhs", 3},
    {"jxc_xtcs", "cs_cs006", K::Number, "0", "tcgdhs", "", "行打印", G::Purchasing, {}, "chkCgdhs", 3},
    {"jxc_xtcs", "cs_cs007", K::Flag, "0"},
    {"jxc_xtcs", "cs_cs008", K::Flag, "0"},
    {"jxc_xtcs", "cs_cs009", K::Flag, "0", "chkGdcbj", "使用固定成本价--成本均价", "", G::Stock},
    {"jxc_xtcs", "cs_cs010", K::Flag, "0", "chkXsdgs", "打印销售单时选择打印格式", "", G::Sales},
    {"jxc_xtcs", "cs_cs011", K::Flag, "0", "chkCgdgs", "打印采购单时选择打印格式", "", G::Purchasing},
    {"jxc_xtcs", "cs_cs012", K::Flag, "0"},
    {"jxc_xtcs", "cs_cs013", K::Flag, "0", "chkDjpfj", "启用商品等级批发价(1--5级)", "", G::Sales},
    {"jxc_xtcs", "cs_cs014", K::Flag, "0", "chkXstime", "销售单日期记录到分秒", "", G::Sales},
    {"jxc_xtcs", "cs_cs015", K::Flag, "0", "chkXsdhs", "销售单使用固定", "", G::Sales},
    {"jxc_xtcs", "cs_cs016", K::Flag, "0", "chkDjzddycg", "采购单保存时自动打印", "", G::Purchasing},
    {"jxc_xtcs", "cs_cs017", K::Flag, "0"},
    {"jxc_xtcs", "cs_cs018", K::Flag, "0"},
    {"jxc_xtcs", "cs_cs019", K::Flag, "0", "chkCgdhs", "采购单使用固定", "", G::Purchasing},
    {"jxc_xtcs", "cs_cs020", K::Flag, "0"},
    {"jxc_xtcs", "cs_cs021", K::Flag, "0"},
    {"jxc_xtcs", "cs_cs022", K::Flag, "0"},
    {"jxc_xtcs", "cs_cs023", K::Flag, "0"},
    {"jxc_xtcs", "cs_cs024", K::Flag, "0"},
    {"jxc_xtcs", "cs_cs025", K::Flag, "0"},
    {"jxc_xtcs", "cs_cs026", K::Flag, "0"},
    {"jxc_xtcs", "cs_cs027", K::Flag, "0"},
    {"jxc_xtcs", "cs_cs028", K::Flag, "0"},
    {"jxc_xtcs", "cs_cs029", K::Flag, "0"},
    {"jxc_xtcs", "cs_cs030", K::Flag, "0"},
    {"jxc_xtcs", "cs_cs031", K::Number, "0"},
    {"jxc_xtcs", "cs_cs032", K::Number, "0"},
    {"jxc_xtcs", "cs_cs033", K::Number, "0"},
    {"jxc_xtcs", "cs_bcqdy", K::Flag, "0", "chkBcqdy", "单据保存之前不能打印", "", G::Documents},
    {"jxc_xtcs", "cs_djzddy", K::Flag, "0", "chkDjzddy", "销售单据保存时自动打印", "", G::Sales},
    {"jxc_xtcs", "cs_djzddysl", K::Number, "0"},
    {"jxc_xtcs", "cs_tmzdsc", K::Flag, "0", "chkTmzdsc", "选择商品时，双击商品可以自动选择", "", G::Goods},
    {"jxc_xtcs", "cs_tmscff", K::Number, "0"},
    {"jxc_xtcs", "cs_posrq", K::Flag, "0"},

    {"jxc_poscs", "pos_qxjk", K::Choice, "0", "comQxjk", "钱箱接口：", "", G::Display, kQxjk},
    {"jxc_poscs", "pos_jkzl", K::Choice, "0", "comQxzl", "钱箱指令：", "", G::Display, kQxzl},
    {"jxc_poscs", "pos_kxjk", K::Choice, "0", "comKxjk", "客显接口：", "", G::Display, kKxjk},
    {"jxc_poscs", "pos_dkqx", K::Flag, "0", "chkDkqx", "结帐时自动打开钱箱", "", G::Display},
    {"jxc_poscs", "pos_tmlx", K::Choice, "0", "comTmlx", "条码类型：", "", G::Scales, kTmlx},
    {"jxc_poscs", "pos_jzqz", K::Text, "24", "tjzqz", "计重商品前缀：", "", G::Scales},
    {"jxc_poscs", "pos_jsqz", K::Text, "25", "tjsqz", "计数商品前缀：", "", G::Scales},
    {"jxc_poscs", "pos_jews", K::Number, "2", "tjews", "POS金额小数位数：", "", G::Scales, {}, "", 1},
    {"jxc_poscs", "pos_djws", K::Number, "2", "tdjws", "POS单价小数位数：", "", G::Scales, {}, "", 1},
    {"jxc_poscs", "pos_zlws", K::Number, "2", "tzlws", "POS重量小数位数：", "", G::Scales, {}, "", 1},

    // The digest's own marks (e_send, e_date) follow from these when they are saved.
    {"jxc_email", "e_lx", K::Choice, "0", "comLx", "发送方式：", "", G::Mail, kLx},
    {"jxc_email", "e_email", K::Text, "", "temail", "邮箱地址：", "", G::Mail},
    {"jxc_email", "e_smtp", K::Text, "", "tsmtp", "SMTP邮件服务器：", "", G::Mail},
    {"jxc_email", "e_sqpwd", K::Secret, "", "tsqpwd", "邮箱授权密码：", "", G::Mail},
    {"jxc_email", "e_fj1", K::Flag, "0", "chkFj1", "商品销售汇总表", "", G::Mail},
    {"jxc_email", "e_fj2", K::Flag, "0", "chkFj2", "商品销售分类统计表", "", G::Mail},
    {"jxc_email", "e_fj3", K::Flag, "0", "chkFj3", "业务员业绩统计", "", G::Mail},
    {"jxc_email", "e_fj4", K::Flag, "0", "chkFj4", "入库日报", "", G::Mail},
};
// clang-format on

}  // namespace parameter_table_detail

std::span<const ParameterDefinition> parameterTable() {
  return parameter_table_detail::kTable;
}

std::span<const ParameterDefinition> parametersOf(std::string_view table) {
  const auto all = parameterTable();
  const auto isOurs = [table](const ParameterDefinition& p) { return p.table == table; };
  const auto first = std::find_if(all.begin(), all.end(), isOurs);
  const auto last = std::find_if_not(first, all.end(), isOurs);
  return {first, last};
}

}  // namespace jxc
