#include "stock/screens/preview_screen.h"

#include "ui/screen.h"

#include <QLabel>

#include <vector>

namespace jxc {
namespace preview_screen_detail {

constexpr ui::ColumnSpec kColumns[] = {{"kind", "影响", ui::ColumnKind::Text, 16},
                                       {"place", "对象", ui::ColumnKind::Text, 46},
                                       {"valuebefore", "现在", ui::ColumnKind::Number, 14},
                                       {"valueafter", "之后", ui::ColumnKind::Number, 14}};
constexpr ui::GridSpec kGrids[] = {{"gridImpacts", "影响", kColumns, "没有变化"}};
constexpr ui::FieldSpec kFields[] = {{"chkYw", "只看需要留意的：库存不足、成本突变、日期在前", ui::FieldKind::Check}};
constexpr ui::CommandSpec kCommands[] = {{"btnCancel", "关闭", "Esc"}};
constexpr ui::ScreenSpec kScreen = {.name = "F_Yltx",
                                    .title = "预览影响",
                                    .fields = kFields,
                                    .grids = kGrids,
                                    .commands = kCommands,
                                    .focus = "gridImpacts"};

class TF_Yltx : public ui::Screen {
 public:
  TF_Yltx() : Screen(kScreen), state_(new QLabel(this)), summary_(new QLabel(this)) {
    state_->setObjectName(QStringLiteral("state"));
    state_->setWordWrap(true);
    summary_->setObjectName(QStringLiteral("summary"));
    summary_->setTextFormat(Qt::PlainText);
    summary_->setWordWrap(true);
    panel().widget(state_).widget(summary_).row("chkYw |").grid("gridImpacts").buttons("| btnCancel");
    field("chkYw").onChanged([this] { grid("gridImpacts").refilter(); });
    grid("gridImpacts").setRowFilter([this](const RowSet& rows, bool) {
      std::vector<int> shown;
      for (int row = 0; row < rows.rowCount(); ++row)
        if (!field("chkYw").isChecked() || rows[row].flag("warns")) shown.push_back(row);
      return shown;
    });
    grid("gridImpacts").setRowLook([](const Row& row) {
      return row.flag("warns") ? ui::RowLook::Warning : ui::RowLook::Normal;
    });
  }
  void show(const QString& doing, const WhatIf& preview) {
    state_->setText(preview.done
                        ? QStringLiteral("如果现在%1，将有下列变化。这里只是预览，没有改动任何数据。").arg(doing)
                        : QStringLiteral("现在不能%1。没有改动任何数据。").arg(doing));
    summary_->setText(preview.summary.join(u'\n'));
    summary_->setVisible(!preview.summary.isEmpty());
    rows_ = preview.rows();
    int surprises = 0;
    for (const Row row : rows_)
      surprises += row.flag("warns") ? 1 : 0;
    field("chkYw").setChecked(false);
    field("chkYw").setEnabled(surprises > 0);
    field("chkYw").setLabel(QStringLiteral("只看需要留意的 %1 项：库存不足、成本突变、日期在前等").arg(surprises));
    showModal();
  }
  QSize sizeHint() const override { return {1264, 672}; }  // warehouse, goods and what would be asked are long

 protected:
  void activate() override { grid("gridImpacts").setRows(rows_); }

 private:
  QLabel* state_;
  QLabel* summary_;
  RowSet rows_{{"id", "kind", "place", "valuebefore", "valueafter", "warns"}};
};

const ui::Registered<TF_Yltx> kRegistered{"F_Yltx"};

}  // namespace preview_screen_detail

void showWhatIf(const QString& doing, const QString& number, const std::function<bool(Prompt&)>& command) {
  const WhatIf preview = whatIf(number, command);
  ui::screenAs<preview_screen_detail::TF_Yltx>("F_Yltx").show(doing, preview);
}

}  // namespace jxc
