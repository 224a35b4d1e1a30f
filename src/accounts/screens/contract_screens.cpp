#include "accounts/screens/contract_screens.h"

#include "accounts/attachment_server.h"
#include "core/clock.h"
#include "core/defaults.h"
#include "core/fillers.h"
#include "core/text.h"
#include "masterdata/partners.h"
#include "masterdata/screens/partner_picker.h"
#include "ui/file_dialogs.h"
#include "ui/progress.h"

#include <QFileInfo>

namespace jxc {
namespace contract_screens_detail {

using ui::FieldKind;

constexpr int kMostOfContent = 20000;
constexpr ui::FieldSpec kEntryFields[] = {
    {"tname", "合同名称：", FieldKind::Text, "jxc_htgl.ht_name"},
    {"tghs", "合同单位：", FieldKind::Picker},
    {"dateCg", "日期：", FieldKind::Date},
    {"comUser", "经办人：", FieldKind::Combo},
    {"tfj", "附件：", FieldKind::Text, "", 260, ui::ReadOnly},
    {"comKeep", "附件保存在：", FieldKind::Combo},
    {"tnote", "合同内容：", FieldKind::Memo, "", kMostOfContent},
};
constexpr ui::CommandSpec kEntryCommands[] = {
    {"btnFj", "选择附件", "F6"}, {"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kEntry = {
    .name = "F_Htgl_Sele", .title = "合同设置", .fields = kEntryFields, .commands = kEntryCommands, .focus = "tname"};

constexpr ui::FieldSpec kViewFields[] = {
    {"tsn", "合同编号：", FieldKind::Text, "", 8, ui::ReadOnly},
    {"dateHt", "日期：", FieldKind::Text, "", 10, ui::ReadOnly},
    {"tname", "合同名称：", FieldKind::Text, "", 64, ui::ReadOnly},
    {"tghs", "合同单位：", FieldKind::Text, "", 128, ui::ReadOnly},
    {"tuser", "经办人：", FieldKind::Text, "", 32, ui::ReadOnly},
    {"tdjh", "关联单据：", FieldKind::Text, "", 16, ui::ReadOnly},
    {"tfj", "附件：", FieldKind::Text, "", 64, ui::ReadOnly},
    {"tnote", "合同内容：", FieldKind::Memo, "", 0, ui::ReadOnly},
};
constexpr ui::CommandSpec kViewCommands[] = {{"btnFj", "打开附件", "F6"}, {"btnCancel", "退出", "Esc"}};
constexpr ui::ScreenSpec kView = {
    .name = "F_Htgl_Chakan", .title = "查看合同", .fields = kViewFields, .commands = kViewCommands, .focus = "tnote"};

const QString kServer = QStringLiteral("ftp"), kFolder = QStringLiteral("folder");  // keys of where a file is kept

std::function<bool(int)> transferring(QWidget* parent) {
  return ui::progressOnDemand(u"正在传输附件……"_qs, parent);
}

const ui::Registered<TF_Htgl_Sele> kRegisteredEntry{"F_Htgl_Sele"};
const ui::Registered<TF_Htgl_Chakan> kRegisteredView{"F_Htgl_Chakan"};

}  // namespace contract_screens_detail

// ---- entry -------------------------------------------------------------------------------------------------------

TF_Htgl_Sele::TF_Htgl_Sele() : Screen(contract_screens_detail::kEntry) {
  panel().form({"tname tghs", "dateCg comUser", "tfj", "comKeep", "tnote"}).buttons("btnFj | btnOK btnCancel");
  field("tghs").onPick([this] { return side_->isCustomer() ? pickCustomer() : pickSupplier(); });
  on(command("btnFj"), [this] { chooseAttachment(); });
  on(command("btnOK"), [this] { save(); });
  resize(640, 440);
}

std::optional<QString> TF_Htgl_Sele::edit(const PartnerSide& side, const contracts::Draft& draft,
                                          const QString& attachment) {
  side_ = &side;
  draft_ = draft;
  attachment_ = attachment;
  saved_.clear();
  const bool done = showModal();
  draft_ = {};
  if (!done) return {};
  return saved_;
}

void TF_Htgl_Sele::activate() {
  namespace detail = contract_screens_detail;
  if (draft_.date.isEmpty()) draft_.date = clock::today();
  field("tghs").setLabel(words(side_->noun) + u"："_qs);
  field("tname").load(draft_.name);
  field("tghs").setPicked({partnerName(*side_, draft_.partner), draft_.partner});
  field("tghs").setReadOnly(draft_.ofDocument);
  field("dateCg").load(draft_.date);
  field("comUser").setItems(fillEmployees());
  field("comUser").setKey(draft_.employee.isEmpty() ? keyToPropose(field("comUser").items(), defaultEmployeeSn())
                                                    : draft_.employee);
  field("tfj").setText(attachment_);
  // Where a server is set it is what the shop wants; a file for this machine only is the exception.
  const bool hasServer = attachments::serverSettings().has_value();
  field("comKeep").setItems({{u"FTP服务器"_qs, detail::kServer}, {u"本机"_qs, detail::kFolder}});
  field("comKeep").setVisible(hasServer);
  field("tnote").load(draft_.content);
}

void TF_Htgl_Sele::chooseAttachment() {
  const QString file = ui::chooseOpenFile(this, QStringLiteral("选择附件"), QStringLiteral("(*)"));
  if (file.isEmpty()) return;
  draft_.file = file;
  field("tfj").setText(file);
}

void TF_Htgl_Sele::save() {
  namespace detail = contract_screens_detail;
  if (!checkFields()) return;
  contracts::Draft draft = draft_;
  draft.name = field("tname").trimmed();
  draft.partner = field("tghs").isEmpty() ? QString() : field("tghs").key();
  draft.date = field("dateCg").text();
  draft.employee = field("comUser").key();
  draft.content = field("tnote").text();
  const bool toServer = attachments::serverSettings() && field("comKeep").key() == detail::kServer;
  draft.keeper = toServer ? attachments::Keeper::Server : attachments::Keeper::Folder;
  const auto number = contracts::saveContract(*side_, draft, prompt(), detail::transferring(this));
  if (!number) return;
  saved_ = *number;
  accept();
}

// ---- view --------------------------------------------------------------------------------------------------------

TF_Htgl_Chakan::TF_Htgl_Chakan() : Screen(contract_screens_detail::kView) {
  panel().form({"tsn dateHt", "tname tghs", "tuser tdjh", "tfj", "tnote"}).buttons("| btnFj btnCancel");
  on(command("btnFj"), [this] {
    const auto file =
        contracts::attachmentToOpen(contract_.number, prompt(), contract_screens_detail::transferring(this));
    if (file && !ui::openWithViewer(*file)) prompt().notice(u"本机没有能够打开这种文件的程序：\r\n\r\n"_qs + *file);
  });
  resize(640, 440);
}

void TF_Htgl_Chakan::look(const PartnerSide& side, const contracts::Contract& contract) {
  side_ = &side;
  contract_ = contract;
  showModal();
}

void TF_Htgl_Chakan::activate() {
  field("tghs").setLabel(words(side_->noun) + u"："_qs);
  field("tsn").setText(contract_.number);
  field("dateHt").setText(contract_.date);
  field("tname").setText(contract_.name);
  field("tghs").setText(contract_.partnerName);
  field("tuser").setText(contract_.employeeName);
  field("tdjh").setText(contract_.document);
  field("tfj").setText(contract_.attachment);
  field("tnote").setText(contract_.content);
  const bool has = !contract_.attachment.isEmpty();
  field("tfj").setVisible(has);
  command("btnFj").setVisible(has);
}

}  // namespace jxc
