// 查看日志: who did what, when, by period and words.
#include "maintenance/log_viewer.h"
#include "ui/enquiry_screen.h"
#include "ui/grid.h"

namespace jxc::viewlog_detail {

using ui::Asks;
using ui::ColumnKind;

constexpr ui::Criterion kCriteria[] = {
    {Asks::From, "date1", "日志记录的时间段："},
    {Asks::To, "date2", "至"},
    {Asks::Key, "tname", "输入日志记录的相关内容进行查询："},
};
constexpr ui::ColumnSpec kColumns[] = {{"log_time", "日志日期", ColumnKind::Date, 20},
                                       {"a_name", "操作员", ColumnKind::Text, 14},
                                       {"log_note", "日志内容", ColumnKind::Text, 70}};

constexpr ui::EnquiryView kViews[] = {
    {.grid = {"gridLog", "操作日志", kColumns, "这段时间没有日志"},
     .source = {logLines, NoWarehouse{"the log is of the whole shop: what somebody did stands in no warehouse"}},
     .foot = {"lCount", [](const ui::Grid& list) { return QStringLiteral("记录数：%1").arg(list.rowCount()); }}}};
constexpr ui::EnquiryCommand kCommands[] = {
    {.name = "btn_Dele", .caption = "清空", .right = {"qtcz", 14}, .rule = [](const Row&, Prompt& prompt) {
       return clearLog(prompt);
     }}};
constexpr ui::EnquiryTab kTabs[] = {
    {.criteria = kCriteria, .views = kViews, .commands = kCommands, .period = "btnMenu1"}};
constexpr ui::EnquirySpec kEnquiry = {.name = "F_ViewLog",
                                      .title = "查看日志",
                                      .tabs = kTabs,
                                      .first = ui::FirstPeriod::AllTime,
                                      .focus = "tname",
                                      .leave = "btn_Exit"};

const ui::RegisteredEnquiry<> kRegistered{kEnquiry};

}  // namespace jxc::viewlog_detail
