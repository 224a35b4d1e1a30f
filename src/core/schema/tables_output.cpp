// 输出表: barcode label lists, courier companies and their waybills.
#include "core/schema/table_definition.h"

#include <array>

namespace jxc::schema {
namespace tables_output_detail {

constexpr std::string_view kLabelList = R"(
    g_sn varchar(32)
    tm_sl numeric(28,6))";

constexpr std::string_view kLabelLayout = R"(
    tm_width int
    tm_height int
    tm_num int
    tm_padding int
    tm_titledisp bit
    tm_title varchar(64)
    tm_titleleft int
    tm_titletop int
    tm_titlepadding int
    tm_titlealign int
    tm_code varchar(64)
    tm_codeleft int
    tm_codetop int
    tm_codeheight int
    tm_codetype int
    tm_codedisp bit
    tm_footdisp bit
    tm_foot varchar(64)
    tm_footleft int
    tm_foottop int
    tm_footpadding int
    tm_footalign int)";
constexpr std::array<std::string_view, 1> kLabelLayoutSeeds = {
    "(tm_width,tm_height,tm_num,tm_padding,tm_titledisp,tm_title,tm_titleleft,tm_titletop,tm_titlepadding,"
    "tm_titlealign,tm_code,tm_codeleft,tm_codetop,tm_codeheight,tm_codetype,tm_codedisp,tm_footdisp,tm_foot,"
    "tm_footleft,tm_foottop,tm_footpadding,tm_footalign) values (100,30,1,150,1,'晴川软件标题',2,2,2,0,'1234567890',2,"
    "50,50,14,1,1,'晴川软件脚注',2,100,2,0)"};

// The sender comes first; the recipient's fields end in 2.
constexpr std::string_view kWaybill = R"(
    kd_dh varchar(32)
    kg_sn varchar(8)
    kd_rq varchar(32)
    kd_zl numeric(28,6)
    kd_je numeric(28,6)
    kd_jjr nvarchar(32)
    kd_src nvarchar(32)
    kd_dwmc nvarchar(64)
    kd_address nvarchar(200)
    kd_tele varchar(32)
    kd_mobile varchar(32)
    kd_zip varchar(8)
    kd_sjr nvarchar(32)
    kd_dest nvarchar(32)
    kd_dwmc2 nvarchar(64)
    kd_address2 nvarchar(200)
    kd_tele2 varchar(32)
    kd_mobile2 varchar(32)
    kd_zip2 varchar(8)
    kd_note nvarchar(200)
    gl_djh varchar(16)
    a_name nvarchar(32))";

constexpr std::string_view kCourier = R"(
    kg_sn varchar(8)
    kg_name nvarchar(64))";
// The code names the waybill form of the company, report/kd<code>.fr3: codes are never given anew.
constexpr std::array<std::string_view, 23> kCourierSeeds = {"(kg_sn,kg_name) values ('1001','EMS')",
                                                            "(kg_sn,kg_name) values ('1002','顺丰快递')",
                                                            "(kg_sn,kg_name) values ('1003','中通快递')",
                                                            "(kg_sn,kg_name) values ('1004','申通快递')",
                                                            "(kg_sn,kg_name) values ('1005','天天快递')",
                                                            "(kg_sn,kg_name) values ('1006','星晨急便')",
                                                            "(kg_sn,kg_name) values ('1007','圆通速递')",
                                                            "(kg_sn,kg_name) values ('1008','韵达快运')",
                                                            "(kg_sn,kg_name) values ('1009','宅急送')",
                                                            "(kg_sn,kg_name) values ('1010','中铁快运')",
                                                            "(kg_sn,kg_name) values ('1011','汇通快运')",
                                                            "(kg_sn,kg_name) values ('1012','信丰物流')",
                                                            "(kg_sn,kg_name) values ('1013','快捷快递')",
                                                            "(kg_sn,kg_name) values ('1014','德邦快递')",
                                                            "(kg_sn,kg_name) values ('1015','百世快运')",
                                                            "(kg_sn,kg_name) values ('1016','优速快递')",
                                                            "(kg_sn,kg_name) values ('1017','速腾快递')",
                                                            "(kg_sn,kg_name) values ('1018','远成快运')",
                                                            "(kg_sn,kg_name) values ('1019','韵达速递')",
                                                            "(kg_sn,kg_name) values ('1020','百世快递')",
                                                            "(kg_sn,kg_name) values ('1021','全速通国际快递')",
                                                            "(kg_sn,kg_name) values ('1022','汇升快递')",
                                                            "(kg_sn,kg_name) values ('1023','联合快递')"};

constexpr TableDefinition kTables[] = {
    {"jxc_tm", kLabelList},
    {"jxc_tmdy", kLabelLayout, kLabelLayoutSeeds},
    {"jxc_kdd", kWaybill},
    {"jxc_kdgs", kCourier, kCourierSeeds},
};

}  // namespace tables_output_detail

std::span<const TableDefinition> outputTables() {
  return tables_output_detail::kTables;
}

}  // namespace jxc::schema
