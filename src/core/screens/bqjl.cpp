// 便签记录: one formatted note of the shop.
#include "core/clock.h"
#include "core/start_reminders.h"
#include "ui/screen.h"
#include "ui/text_input.h"

#include <QColorDialog>
#include <QFontComboBox>
#include <QHBoxLayout>
#include <QSpinBox>
#include <QToolButton>

namespace jxc {
namespace bqjl_detail {

constexpr ui::FieldSpec kFields[] = {{"tword", "查找：", ui::FieldKind::Text, "", 50}};
constexpr ui::CommandSpec kCommands[] = {
    {"btnBold", "加粗", "Ctrl+B"},  {"btnItalic", "倾斜", "Ctrl+I"}, {"btnUnderline", "下划线", "Ctrl+U"},
    {"btnColor", "颜色", "Ctrl+L"}, {"btnClock", "插入时间", "F9"},  {"btnSearch", "查找", "F5"},
    {"btnCancel", "退出", "Esc"},
};
constexpr ui::ScreenSpec kScreen = {.name = "F_Bqjl", .title = "便签记录", .fields = kFields, .commands = kCommands};

}  // namespace bqjl_detail

class TF_Bqjl : public ui::Screen {
 public:
  TF_Bqjl() : Screen(bqjl_detail::kScreen) {
    bqNote = new ui::RichTextInput(this);
    bqNote->setObjectName(QStringLiteral("bqNote"));
    bqNote->setAccessibleName(QStringLiteral("便签内容"));
    bqNote->setMinimumSize(640, 320);
    bqNote->setTabChangesFocus(true);
    auto* fonts = new QFontComboBox(this);
    fonts->setObjectName(QStringLiteral("comFont"));
    fonts->setAccessibleName(QStringLiteral("字体"));
    auto* size = new QSpinBox(this);
    size->setObjectName(QStringLiteral("tSize"));
    size->setAccessibleName(QStringLiteral("字号"));
    size->setRange(6, 72);
    size->setValue(12);
    auto* look = new QWidget(this);
    auto* line = new QHBoxLayout(look);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(fonts);
    line->addWidget(size);
    line->addStretch(1);
    panel()
        .row("btnBold btnItalic btnUnderline btnColor btnClock |")
        .widget(look)
        .widget(bqNote, 1)
        .row("tword btnSearch | btnCancel");
    connect(fonts, &QFontComboBox::currentFontChanged, this, [this](const QFont& font) {
      if (!filling_) bqNote->setFontFamily(font.family());
    });
    connect(size, &QSpinBox::valueChanged, this, [this](int points) { bqNote->setFontPointSize(points); });
    on(command("btnBold"),
       [this] { bqNote->setFontWeight(bqNote->fontWeight() > QFont::Normal ? QFont::Normal : QFont::Bold); });
    on(command("btnItalic"), [this] { bqNote->setFontItalic(!bqNote->fontItalic()); });
    on(command("btnUnderline"), [this] { bqNote->setFontUnderline(!bqNote->fontUnderline()); });
    on(command("btnColor"), [this] {
      const QColor colour = QColorDialog::getColor(bqNote->textColor(), this, QStringLiteral("颜色"));
      if (colour.isValid()) bqNote->setTextColor(colour);
    });
    on(command("btnClock"), [this] {
      bqNote->insertPlainText(clock::now().toString(QStringLiteral("yyyy-MM-dd hh:mm")));
      bqNote->setFocus();
    });
    on(command("btnSearch"), [this] { search(); });
    tword.onEnter([this] {
      search();
      return true;
    });
  }
  ui::Field& tword = field("tword");
  QTextEdit* bqNote;

 protected:
  void activate() override {
    filling_ = true;
    bqNote->document()->setDefaultFont(QFont(QStringLiteral("宋体"), 12));
    bqNote->setHtml(readNotePad());
    bqNote->moveCursor(QTextCursor::End);
    filling_ = false;
    tword.clear();
  }

  bool mayLeave() override {
    const bool empty = bqNote->toPlainText().trimmed().isEmpty();
    saveNotePad(bqNote->toHtml(), empty);
    return true;
  }

 private:
  // From the cursor on, and once around.
  void search() {
    const QString word = tword.trimmed();
    if (word.isEmpty()) return;
    if (bqNote->find(word)) return;
    bqNote->moveCursor(QTextCursor::Start);
    if (!bqNote->find(word)) prompt().notice(QStringLiteral("没有找到“%1”！").arg(word));
  }
  bool filling_ = false;
};

namespace bqjl_detail {
const ui::Registered<TF_Bqjl> kRegistered{"F_Bqjl"};
}

}  // namespace jxc
