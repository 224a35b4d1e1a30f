// 消息表: short messages, mail digests and reminders.
#include "core/schema/table_definition.h"

#include <array>

namespace jxc::schema {
namespace tables_messaging_detail {

constexpr std::string_view kReminder = R"(
    tx_dx varchar(32)
    tx_fs int
    tx_fstxt varchar(16)
    tx_sj varchar(64)
    tx_note nvarchar(200)
    tx_tjsj varchar(32)
    a_name nvarchar(32)
    tx_lb int
    tx_flag varchar(1)
    tx_ts varchar(4)
    tx_zt varchar(1)
    g_sn varchar(32))";

constexpr std::string_view kMail = R"(
    e_smtp nvarchar(64)
    e_sqpwd nvarchar(64)
    e_email nvarchar(64)
    e_lx int
    e_fj1 bit
    e_fj2 bit
    e_fj3 bit
    e_fj4 bit
    e_fj5 bit
    e_fj6 bit
    e_fj7 bit
    e_fj8 bit
    e_fj9 bit
    e_send bit
    e_date varchar(16))";
constexpr std::array<std::string_view, 1> kMailSeeds = {
    "(e_smtp,e_sqpwd,e_email,e_lx,e_fj1,e_fj2,e_fj3,e_fj4,e_fj5,e_fj6,e_fj7,e_fj8,e_fj9,e_send,e_date) "
    "values ('','','',0,0,0,0,0,0,0,0,0,0,0,'')"};

constexpr std::string_view kSent = R"(
    gl_djh varchar(16)
    sms_rq varchar(16)
    sms_note nvarchar(250)
    a_name nvarchar(32))";

constexpr std::string_view kRecipient = R"(
    gl_djh varchar(16)
    hy_sn varchar(8)
    hy_mobile varchar(16)
    sms_rq varchar(32)
    sms_note nvarchar(250)
    a_name nvarchar(32))";

// No row to begin with: without an account nothing is sent, and the screen asks for the settings.
constexpr std::string_view kSettings = R"(
    sms_sign varchar(32)
    sms_user varchar(32)
    sms_pwd varchar(32)
    sms_cznote nvarchar(250)
    sms_xfnote nvarchar(250))";

constexpr TableDefinition kTables[] = {
    {"jxc_tx", kReminder},     {"jxc_email", kMail, kMailSeeds}, {"jxc_sms", kSent},
    {"jxc_smshy", kRecipient}, {"jxc_smscs", kSettings},
};

}  // namespace tables_messaging_detail

std::span<const TableDefinition> messagingTables() {
  return tables_messaging_detail::kTables;
}

}  // namespace jxc::schema
